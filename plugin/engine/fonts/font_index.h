// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

#include "plugin/engine/fonts/big_endian.h"
#include "plugin/engine/memory/memory_manager.h"

namespace quillbar::engine {

/// Finds a document's fonts by name, and TrueType fonts by their file, in a time that doesn't grow with their number.
///
/// The library's lists stay what counts; new entries are taken over from their ends before each search. Definitions keep
/// the names that they are registered with, and neither list loses any before the document goes.
class FontIndex : public DocumentPart {
 public:
  /// The index of a document, made at first. Throws std::bad_alloc.
  static FontIndex &Of(HPDF_Doc document);

  /// The first definition of the name, or null. Throws std::bad_alloc.
  HPDF_FontDef FindDefinition(std::string_view name);

  /// The first definition of a TrueType font that may also be asked for by this name (`OwnNamesOf`), or null. Throws
  /// std::bad_alloc.
  HPDF_FontDef FindOwnName(const std::string &name);

  /// The definition of the TrueType font whose file has these bytes, or null. Throws std::bad_alloc.
  HPDF_FontDef FindTrueTypeFile(Bytes file);

  /// The font of a definition in an encoding, or null. Throws std::bad_alloc.
  HPDF_Font FindFont(const HPDF_FontDef_Rec *definition, std::string_view encoding);

 private:
  explicit FontIndex(HPDF_Doc document) : document_(document) {}

  void TakeOverDefinitions();

  HPDF_Doc document_;
  HPDF_UINT definitionCount_ = 0, fontCount_ = 0;  // taken over so far
  std::unordered_map<std::string_view, HPDF_FontDef> definitions_;
  std::unordered_map<std::string, HPDF_FontDef> ownNames_;
  std::unordered_multimap<std::size_t, HPDF_FontDef> files_;  // of TrueType fonts
  std::unordered_multimap<const HPDF_FontDef_Rec *, HPDF_Font> fonts_;
};

}  // namespace quillbar::engine
