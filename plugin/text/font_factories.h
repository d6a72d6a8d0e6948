// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// The three members of `PDFDocument` that make fonts. Each returns Nil on any failure.
namespace quillbar::text {

/// "GetFont(fontName as String, encoding as Font.FontEncodingEnum) as Font": a font that the library knows by
/// name: one of the 14 standard fonts or a font loaded before, in one of the encodings; or a built-in
/// Chinese, Japanese or Korean font, which has an encoding of its own and ignores the argument.
Font *GetFont(PDFDocument *document, String fontName, FontEncoding encoding);

/// "LoadTrueTypeFont(f as FolderItem) as Font": a font for text in any script that it has glyphs for. What is
/// shown of it is embedded in the document. The file is read and checked whole; it may go afterwards.
Font *LoadTrueTypeFont(PDFDocument *document, FolderItem *f);

/// "LoadType1Font(afmFile as FolderItem, pfmFile as FolderItem, encoding as Font.FontEncodingEnum) as Font":
/// a font from its metrics (AFM) and its program (PFB or PFA), which is embedded whole, in one of the
/// encodings.
Font *LoadType1Font(PDFDocument *document, FolderItem *afmFile, FolderItem *pfmFile, FontEncoding encoding);

}  // namespace quillbar::text
