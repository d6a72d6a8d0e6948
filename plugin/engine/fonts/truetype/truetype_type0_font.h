// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include <span>
#include <string>
#include <string_view>

#include "plugin/engine/fonts/shaping/directed_text.h"

namespace quillbar::engine {

/// A font of an embedded TrueType file for text in a multi-byte encoding; null for a failure. `xref` owns it. Throws
/// std::bad_alloc.
HPDF_Font NewTrueTypeType0Font(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder, HPDF_Xref xref);

/// Distances that are added to a text: numbers as they are in the file, in 1/1000 of the font size, which are taken off
/// the position; empty for none.
struct TextGaps {
  std::string_view afterSpace;  // after each white space, as text is measured
};

/// How a text was written.
struct ShownText {
  bool isArray;          // the operand is one of TJ; otherwise of Tj
  HPDF_TextWidth width;  // what the text counts, without the gaps; no words are counted
};

/// Appends the operand that shows `text` to `operand`: codes in hexadecimal digits. Characters and glyphs shown for the
/// first time get codes. `whole`, if not null, is the text of which `text` is a part. `font` must be of type
/// HPDF_FONT_TYPE0_TT. Throws std::bad_alloc.
ShownText AppendShownText(HPDF_Font font, std::span<const HPDF_BYTE> text, const DirectedText *whole,
                          const TextGaps &gaps, std::string &operand);

/// Whether `text` is shown by a code for each byte: ASCII in UTF-8 and from left to right. `font` as above.
bool IsPlain(HPDF_Font font, std::string_view text);

/// Writes the codes of plain text to `end`, where there must be four bytes for each of its own, in hexadecimal digits,
/// and adds what it counts to `width`, except words. Returns where they end. Throws std::bad_alloc.
char *WritePlainCodes(HPDF_Font font, std::string_view text, char *end, HPDF_TextWidth &width);

}  // namespace quillbar::engine
