// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>
#include <hpdf_font.h>

#include <memory>
#include <optional>
#include <span>
#include <string>

#include "plugin/engine/fonts/line_fit.h"
#include "plugin/engine/fonts/shaping/directed_text.h"

namespace quillbar::engine {

/// A font in one encoding: how its text is measured, and what of it is known only when the document is saved.
///
/// libharu has the Font dictionary, which owns its FontObject and reaches it through `attr`. The base holds what
/// libharu reads from there: the kind of font, the definition, the encoder and the writing mode.
class FontObject : public HPDF_FontAttr_Rec {
 public:
  FontObject(const FontObject &) = delete;
  FontObject &operator=(const FontObject &) = delete;
  virtual ~FontObject() = default;

  /// The sum of the characters' widths in 1/1000 of the font size, and the numbers of characters, spaces and words.
  /// `whole`, if not null, is the text of which `text` is a part. Throws std::bad_alloc.
  virtual HPDF_TextWidth TextWidth(std::span<const HPDF_BYTE> text, const DirectedText *whole) = 0;

  /// How many bytes of `text` fit into a line: never more than up to a line feed. `reached`, if not null, receives
  /// their width in text space units, without the white space at their end. `whole` as above. Throws std::bad_alloc.
  virtual HPDF_UINT FittingLength(std::span<const HPDF_BYTE> text, const LineSettings &line, HPDF_REAL *reached,
                                  const DirectedText *whole) = 0;

  /// Whether letters of the text belong together in ways that space between them would break up. Throws
  /// std::bad_alloc.
  virtual bool HoldsTogether(std::span<const HPDF_BYTE>, const DirectedText *) const { return false; }

  /// Whether text can have directional marks.
  virtual bool CanBeDirected() const { return false; }

  /// The text's characters, if it can have directional marks. Throws std::bad_alloc.
  virtual std::optional<DecodedText> DecodeDirected(std::span<const HPDF_BYTE>) const { return std::nullopt; }

  /// Brings the objects of the font up to date with the codes shown so far, before each save. `font` is its
  /// dictionary. Throws std::bad_alloc.
  virtual HPDF_STATUS Refresh(HPDF_Dict) { return HPDF_OK; }

  /// Entries that a save writes after those in the dictionary, as they are in the file. Throws std::bad_alloc.
  virtual std::string FurtherEntries() const { return {}; }

 protected:
  FontObject(HPDF_FontType kind, HPDF_FontDef definition, HPDF_Encoder encoder, HPDF_Xref xref);
};

/// The object of a Font dictionary.
inline FontObject &FontObjectOf(HPDF_Font font) {
  return *static_cast<FontObject *>(static_cast<HPDF_FontAttr>(font->attr));
}

/// The text with its order, if it holds a directional mark: only then is the order of a text changed. `text` must live
/// longer. Throws std::bad_alloc.
std::optional<DirectedText> DirectedTextOf(HPDF_Font font, std::span<const HPDF_BYTE> text);

/// What FontObject::TextWidth and FontObject::FittingLength tell, of a text of at most 65,535 bytes: a longer one is
/// reported with HPDF_STRING_OUT_OF_RANGE, and the answer is 0. `whole`, if not null, is the text of which `text` is a
/// part; else its own directional marks order it.
HPDF_TextWidth WidthOfText(HPDF_Font font, std::span<const HPDF_BYTE> text, const DirectedText *whole);
HPDF_UINT FittingLengthOfText(HPDF_Font font, std::span<const HPDF_BYTE> text, const LineSettings &line,
                              HPDF_REAL *reached, const DirectedText *whole);

/// An empty Font dictionary that has taken `object` over; null when memory ran out. The caller owns the dictionary
/// until HPDF_Xref_Add has taken it.
HPDF_Dict NewFontDictionary(HPDF_MMgr memory, std::unique_ptr<FontObject> object);

}  // namespace quillbar::engine
