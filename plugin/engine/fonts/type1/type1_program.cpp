// SPDX-License-Identifier: MIT
// libharu embeds a PFB file with its segment headers and guesses where the encrypted portion ends.
#include "plugin/engine/fonts/type1/type1_program.h"

#include <algorithm>
#include <string_view>

namespace quillbar::engine {

namespace {

constexpr std::uint8_t kSegmentMark = 0x80;
constexpr int kTrailerZeros = 512;

bool IsBlank(std::uint8_t byte) { return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n'; }

int HexDigit(std::uint8_t byte) {
  if (byte >= '0' && byte <= '9') return byte - '0';
  if (byte >= 'A' && byte <= 'F') return byte - 'A' + 10;
  if (byte >= 'a' && byte <= 'f') return byte - 'a' + 10;
  return -1;
}

std::string_view TextOf(Bytes bytes) { return {reinterpret_cast<const char *>(bytes.data()), bytes.size()}; }

void Append(std::vector<std::uint8_t> &to, Bytes from) { to.insert(to.end(), from.begin(), from.end()); }

std::optional<Type1Program> ReadSegments(Bytes file) {
  Type1Program program;
  while (file.size() >= 2 && file[0] == kSegmentMark) {
    const unsigned kind = file[1];
    if (kind == 3) return program;
    if (file.size() < 6 || kind < 1 || kind > 2) return std::nullopt;
    const std::size_t length =
        file[2] | std::size_t{file[3]} << 8 | std::size_t{file[4]} << 16 | std::size_t{file[5]} << 24;
    if (length > file.size() - 6) return std::nullopt;
    const Bytes segment = file.subspan(6, length);
    if (kind == 2) {
      if (!program.trailer.empty()) return std::nullopt;
      Append(program.encrypted, segment);
    } else {
      Append(program.encrypted.empty() ? program.clear : program.trailer, segment);
    }
    file = file.subspan(6 + length);
  }
  // Some files end without the closing mark, none with something else.
  return file.empty() ? std::optional(program) : std::nullopt;
}

std::optional<Type1Program> ReadPlain(Bytes file) {
  constexpr std::string_view kEncryptedFollows = "eexec";
  const std::size_t mark = TextOf(file).find(kEncryptedFollows);
  if (mark == std::string_view::npos) return std::nullopt;
  std::size_t start = mark + kEncryptedFollows.size();
  while (start < file.size() && IsBlank(file[start])) ++start;

  std::size_t end = TextOf(file).rfind("cleartomark");
  if (end == std::string_view::npos || end < start) {
    end = file.size();
  } else {
    // A font whose last encrypted digits are zeros keeps them.
    for (int zeros = 0; end > start && (IsBlank(file[end - 1]) || (file[end - 1] == '0' && zeros < kTrailerZeros));
         --end)
      zeros += file[end - 1] == '0' ? 1 : 0;
  }

  Type1Program program;
  Append(program.clear, file.first(start));
  Append(program.trailer, file.subspan(end));
  const Bytes encrypted = file.subspan(start, end - start);
  const bool isHex = encrypted.size() >= 4 && std::all_of(encrypted.begin(), encrypted.begin() + 4,
                                                          [](std::uint8_t byte) { return HexDigit(byte) >= 0; });
  if (!isHex) {
    Append(program.encrypted, encrypted);
    return program;
  }
  int high = -1;
  for (const std::uint8_t byte : encrypted) {
    if (IsBlank(byte)) continue;
    const int digit = HexDigit(byte);
    if (digit < 0) return std::nullopt;
    if (high < 0) {
      high = digit;
    } else {
      program.encrypted.push_back(static_cast<std::uint8_t>(high << 4 | digit));
      high = -1;
    }
  }
  return program;
}

}  // namespace

std::optional<Type1Program> Type1Program::Read(Bytes file) {
  auto program = !file.empty() && file[0] == kSegmentMark ? ReadSegments(file) : ReadPlain(file);
  if (!program || program->encrypted.size() < 4 || !TextOf(program->clear).starts_with("%!") ||
      TextOf(program->clear).find("eexec") == std::string_view::npos)
    return std::nullopt;
  return program;
}

}  // namespace quillbar::engine
