// SPDX-License-Identifier: MIT
#include "host/language/library/classes/file_stream.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <system_error>
#include <utility>

#include "host/language/run/exceptions.h"
#include "host/runtime/builtin/builtin_classes.h"
#include "host/runtime/host.h"
#include "host/runtime/platform/file_system.h"
#include "platform/openable_path.h"

namespace quillbar::language {
namespace {

std::ios::openmode OpenMode(FileStream::Mode mode) {
  using Mode = FileStream::Mode;
  constexpr std::ios::openmode kBinary = std::ios::binary;
  switch (mode) {
    case Mode::kRead:
      return kBinary | std::ios::in;
    case Mode::kReadWrite:
      return kBinary | std::ios::in | std::ios::out;
    case Mode::kCreate:
      return kBinary | std::ios::in | std::ios::out | std::ios::trunc;
    case Mode::kAppend:
      return kBinary | std::ios::out | std::ios::app;
  }
  return kBinary | std::ios::in;
}

}  // namespace

void FileStream::Fail(std::string_view action, int errorNumber) const {
  // Streams don't always leave an error number behind.
  const std::string cause =
      errorNumber == 0 ? "the system gives no cause" : std::generic_category().message(errorNumber);
  throw LibraryError{ExceptionKind::kIo,
                     fmt::format("{} \"{}\" failed: {}", action, host::platform::Utf8Path(path_), cause), errorNumber};
}

void FileStream::Fail(std::string_view action, const std::error_code &error) const {
  throw LibraryError{
      ExceptionKind::kIo,
      fmt::format("{} \"{}\" failed: {}", action, host::platform::Utf8Path(path_), host::platform::ErrorText(error)),
      error.value()};
}

void FileStream::FailWriting(int errorNumber) {
  GiveUp();
  Fail("writing", errorNumber);
}

void FileStream::GiveUp() {
  if (!replacement_) return;
  stream_.close();
  host::platform::GiveUpReplacement(*std::exchange(replacement_, std::nullopt));
}

FileStream::~FileStream() {
  try {
    Close();
  } catch (...) {
    // Nobody is there to be told.
  }
}

void FileStream::RequireOpen(std::string_view action) const {
  if (stream_.is_open()) return;
  throw LibraryError{ExceptionKind::kIo, fmt::format("{} failed: the file is closed", action)};
}

void FileStream::Open(Object folderItem, Mode mode) {
  if (folderItem == nullptr) {
    throw LibraryError{ExceptionKind::kNilObject, "a file can't be opened without a FolderItem: it is Nil"};
  }
  path_ = host::PathOf(*host::Host::Current(), host::ObjectHandle(folderItem));
  if (host::platform::KindOf(path_) == host::platform::FileKind::kFolder) Fail("opening", EISDIR);
  isForWriting_ = mode != Mode::kRead;
  if (mode == Mode::kCreate) replacement_ = host::platform::BeginReplacement(path_);
  errno = 0;
  stream_.open(quillbar::platform::OpenablePath(replacement_ ? replacement_->written : path_), OpenMode(mode));
  if (stream_.is_open()) return;
  const int problem = errno;
  GiveUp();
  Fail(mode == Mode::kCreate ? "creating" : "opening", problem);
}

void FileStream::Close() {
  if (!stream_.is_open()) return;
  if (replacement_) return Replace();
  errno = 0;
  stream_.clear();
  stream_.close();
  if (!stream_) Fail("writing", errno);
  if (!isForWriting_) return;
  std::error_code error;
  host::platform::WaitForDisk(path_, error);
  if (error) Fail("writing", error);
}

void FileStream::Replace() {
  errno = 0;
  stream_.clear();
  stream_.close();
  if (!stream_) FailWriting(errno);
  std::error_code error;
  host::platform::FinishReplacement(*std::exchange(replacement_, std::nullopt), error);
  if (error) Fail("writing", error);
}

void FileStream::Prepare(bool writes) {
  stream_.clear();
  if (writes == lastWrote_) return;
  stream_.seekp(stream_.tellg());
  lastWrote_ = writes;
}

bool FileStream::IsAtEnd() {
  RequireOpen("reading");
  Prepare(false);
  return stream_.peek() == std::fstream::traits_type::eof();
}

std::string FileStream::Read(std::size_t count) {
  RequireOpen("reading");
  Prepare(false);
  // A huge count asks for what there is, not for memory.
  constexpr std::size_t kChunk = std::size_t{1} << 20;
  std::string bytes;
  while (bytes.size() < count && stream_) {
    const std::size_t before = bytes.size();
    bytes.resize(before + std::min(kChunk, count - before));
    errno = 0;
    stream_.read(bytes.data() + before, static_cast<std::streamsize>(bytes.size() - before));
    bytes.resize(before + static_cast<std::size_t>(stream_.gcount()));
    if (stream_.bad()) Fail("reading", errno);
  }
  return bytes;
}

std::string FileStream::ReadWholeCharacters(std::size_t count) {
  constexpr std::size_t kMostContinuationBytes = 3;
  std::string bytes = Read(count);
  if (bytes.empty()) return bytes;
  for (std::size_t i = 0; i < kMostContinuationBytes; ++i) {
    const auto next = stream_.peek();
    if (next == std::fstream::traits_type::eof() || (next & 0xC0) != 0x80) break;
    bytes += std::fstream::traits_type::to_char_type(stream_.get());
  }
  return bytes;
}

std::string FileStream::ReadAll() { return Read(std::numeric_limits<std::size_t>::max()); }

std::string FileStream::ReadLine() {
  RequireOpen("reading");
  Prepare(false);
  std::string line;
  using Traits = std::fstream::traits_type;
  for (Traits::int_type next = stream_.get(); next != Traits::eof(); next = stream_.get()) {
    const char byte = Traits::to_char_type(next);
    if (byte == '\n') break;
    if (byte == '\r') {
      if (stream_.peek() == '\n') stream_.get();
      break;
    }
    line += byte;
  }
  return line;
}

void FileStream::Write(std::string_view bytes) {
  RequireOpen("writing");
  Prepare(true);
  errno = 0;
  stream_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!stream_) FailWriting(errno);
}

void FileStream::Flush() {
  RequireOpen("writing");
  errno = 0;
  stream_.flush();
  if (!stream_) FailWriting(errno);
  if (!replacement_) return;
  const std::uint64_t position = Position();
  Replace();
  stream_.open(quillbar::platform::OpenablePath(path_), OpenMode(Mode::kReadWrite));
  if (!stream_.is_open()) Fail("opening", errno);
  stream_.seekp(static_cast<std::streamoff>(position));
}

std::uint64_t FileStream::Position() {
  RequireOpen("reading");
  stream_.clear();
  return static_cast<std::uint64_t>(lastWrote_ ? stream_.tellp() : stream_.tellg());
}

void FileStream::SetPosition(std::uint64_t position) {
  RequireOpen("moving in");
  stream_.clear();
  errno = 0;
  stream_.seekg(static_cast<std::streamoff>(position));
  if (!stream_) Fail("moving in", errno);
}

std::uint64_t FileStream::Size() {
  RequireOpen("reading");
  const std::uint64_t position = Position();
  stream_.seekg(0, std::ios::end);
  const auto size = static_cast<std::uint64_t>(stream_.tellg());
  stream_.seekg(static_cast<std::streamoff>(position));
  return size;
}

}  // namespace quillbar::language
