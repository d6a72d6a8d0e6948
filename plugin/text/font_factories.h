#pragma once

#include "plugin/bridge/script_types.h"

/// The three members of `PDFDocument` that make fonts. Each returns Nil on any failure.
namespace quillbar::text {

/// "GetFont(fontName as String, encoding as Font.FontEncodingEnum) as Font": a font that the library knows by
/// name, in one of the encodings.
Font *GetFont(PDFDocument *document, String fontName, FontEncoding encoding);

/// "LoadTrueTypeFont(f as FolderItem) as Font"
Font *LoadTrueTypeFont(PDFDocument *document, FolderItem *f);

/// "LoadType1Font(afmFile as FolderItem, pfmFile as FolderItem, encoding as Font.FontEncodingEnum) as Font"
Font *LoadType1Font(PDFDocument *document, FolderItem *afmFile, FolderItem *pfmFile, FontEncoding encoding);

}  // namespace quillbar::text
