// SPDX-License-Identifier: MIT
#include <algorithm>
#include <vector>

#include "host/runtime/platform/charset.h"
#include "host/runtime/platform/tables/character_tables.h"

namespace quillbar::host::platform {
namespace {

std::int32_t OrNone(char16_t character) { return character == kNoCharacter ? -1 : character; }

class TableCharset : public Charset {
 public:
  explicit TableCharset(const CharsetTable &table) : table_(table), codes_(0x10000, -1) {
    for (std::int32_t byte = 0; byte < 256; ++byte) Note(table.single[byte], byte);
    for (const CharsetRow &row : table.rows) {
      for (std::int32_t second = 0; second < 256; ++second) {
        Note(row.characters[second], row.firstByte << 8 | second);
      }
    }
    for (const PreferredCode &preferred : table.preferred) codes_[preferred.character] = preferred.code;
  }

  std::int32_t Decode(std::string_view bytes) override {
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(bytes[index]); };
    if (bytes.size() == 1) return OrNone(table_.single[byte(0)]);
    if (bytes.size() != 2) return -1;
    const auto row = std::ranges::lower_bound(table_.rows, byte(0), {}, &CharsetRow::firstByte);
    return row == table_.rows.end() || row->firstByte != byte(0) ? -1 : OrNone(row->characters[byte(1)]);
  }

  std::int32_t Encode(char16_t character) override { return codes_[character]; }

 private:
  void Note(char16_t character, std::int32_t code) {
    if (character != kNoCharacter && codes_[character] < 0) codes_[character] = code;
  }

  const CharsetTable &table_;
  std::vector<std::int32_t> codes_;  // by character
};

}  // namespace

std::unique_ptr<Charset> Charset::Open(TextEncoding encoding) {
  const auto code = static_cast<std::uint32_t>(encoding);
  const auto table = std::ranges::lower_bound(kCharsetTables, code, {}, &CharsetTable::encoding);
  if (table == kCharsetTables.end() || table->encoding != code) return nullptr;
  return std::make_unique<TableCharset>(*table);
}

}  // namespace quillbar::host::platform
