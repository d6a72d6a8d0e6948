// Encodings of one byte a character (single_byte_encoding.cpp).
#pragma once

#include <hpdf.h>

#include <string_view>

namespace quillbar::pdflib {

// Takes note of bytes shown in an encoding: some are listed in the file only once a page uses them.
void NoteShownBytes(HPDF_Encoder encoder, std::string_view bytes);

// Whether every reader takes the glyph name that stands in the file for this character, and for no other one.
bool HasPlainName(char32_t character);

}  // namespace quillbar::pdflib
