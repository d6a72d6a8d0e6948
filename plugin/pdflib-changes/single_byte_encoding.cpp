// HPDF_BasicEncoder_New: single-byte encodings that stand in the file with a name for every character.
//
// libharu writes ".notdef" for each character that its list of glyph names lacks, such as the dotted letters
// of ISO 8859-14: nothing is shown or copied there. And PDF's MacRomanEncoding is older than the Mac's table:
// it has the currency sign for the euro sign and nothing for the mathematical signs, so these are listed as
// differences once a page uses them.
#include "plugin/pdflib-changes/single_byte_encoding.h"

#include <hpdf_encoder.h>
#include <hpdf_utils.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <string>

extern "C" HPDF_Encoder Libharu_HPDF_BasicEncoder_New(HPDF_MMgr memory, const char *encodingName);

namespace quillbar::pdflib {

namespace {

constexpr char kMacRoman[] = "MacRomanEncoding";

// Codes at which the Mac's own table differs from PDF's (ISO 32000-1, 9.6.6.4 and Annex D.2).
constexpr std::array<bool, 256> kIsMacAddition = [] {
  std::array<bool, 256> table{};
  for (const int code : {173, 176, 178, 179, 182, 183, 184, 185, 186, 189, 195, 197, 198, 215, 219, 240})
    table[static_cast<std::size_t>(code)] = true;
  return table;
}();

HPDF_BasicEncoderAttr AttributesOf(HPDF_Encoder encoder) {
  return static_cast<HPDF_BasicEncoderAttr>(encoder->attr);
}

// The glyph name of a character: the customary one, or one by its number (Adobe Glyph List Specification,
// section 2). Control characters have none.
std::string GlyphName(HPDF_UNICODE character) {
  // The library's list calls these by the names of the middle dot, the ohm sign and the micro sign, which
  // some fonts have beside them, or instead.
  constexpr std::array<HPDF_UNICODE, 3> kNamesakes = {0x2219, 0x03A9, 0x03BC};
  const char *none = HPDF_UnicodeToGryphName(0);
  if (character < 0x20 || (character >= 0x7F && character < 0xA0)) return none;
  const char *customary = HPDF_UnicodeToGryphName(character);
  if (std::ranges::find(kNamesakes, character) == kNamesakes.end() && std::strcmp(customary, none) != 0)
    return customary;
  char name[8];
  std::snprintf(name, sizeof name, "uni%04X", static_cast<unsigned>(character));
  return name;
}

HPDF_STATUS Write(HPDF_Encoder encoder, HPDF_Stream stream) {
  const HPDF_BasicEncoderAttr own = AttributesOf(encoder);
  // A font's built-in encoding is what a file without an entry means.
  if (std::strcmp(own->base_encoding, HPDF_ENCODING_FONT_SPECIFIC) == 0) return HPDF_OK;
  std::string text = "/Encoding ";
  if (own->has_differences) text += "<<\n/Type /Encoding\n/BaseEncoding ";
  text += "/";
  text += own->base_encoding;
  text += "\n";
  if (own->has_differences) {
    text += "/Differences [";
    for (int code = own->first_char; code <= own->last_char; ++code) {
      if (own->differences[code] == 1)
        text += std::to_string(code) + " /" + GlyphName(own->unicode_map[code]) + " ";
    }
    text += "]\n>>\n";
  }
  return HPDF_Stream_Write(stream, reinterpret_cast<const HPDF_BYTE *>(text.data()),
                           static_cast<HPDF_UINT>(text.size()));
}

}  // namespace

void NoteShownBytes(HPDF_Encoder encoder, std::string_view bytes) {
  if (std::strcmp(encoder->name, kMacRoman) != 0) return;
  HPDF_BasicEncoderAttr own = AttributesOf(encoder);
  for (const char byte : bytes) {
    const auto code = static_cast<HPDF_BYTE>(byte);
    if (!kIsMacAddition[code]) continue;
    own->differences[code] = 1;
    own->has_differences = HPDF_TRUE;
  }
}

// The characters of Windows Latin 1 but the no-break space and the soft hyphen, which bear the names of the
// space and the hyphen.
bool HasPlainName(char32_t character) {
  constexpr std::u32string_view kBeyondLatin1 = U"€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ";
  if (character < 0x7F) return true;
  if (character > 0xA0 && character <= 0xFF) return character != 0xAD;
  return kBeyondLatin1.find(character) != std::u32string_view::npos;
}

}  // namespace quillbar::pdflib

extern "C" HPDF_Encoder HPDF_BasicEncoder_New(HPDF_MMgr memory, const char *encodingName) {
  HPDF_Encoder encoder = Libharu_HPDF_BasicEncoder_New(memory, encodingName);
  if (encoder != nullptr) encoder->write_fn = quillbar::pdflib::Write;
  return encoder;
}
