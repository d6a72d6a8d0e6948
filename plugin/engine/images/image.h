// SPDX-License-Identifier: MIT
/// Images in a document: XObjects of the subtype Image (ISO 32000-1, 8.9.5).
#pragma once

#include <hpdf.h>

#include <cstddef>
#include <initializer_list>

namespace quillbar::engine {

/// The name of the device colour space with this many components, 1, 3 or 4; null for another number.
const char *DeviceColorSpace(std::size_t componentCount);

/// An entry of an image's dictionary: a name or an integer.
struct ImageEntry {
  ImageEntry(const char *entryKey, const char *entryName) : key(entryKey), name(entryName) {}
  ImageEntry(const char *entryKey, std::size_t entryNumber) : key(entryKey), number(entryNumber) {}

  const char *key;
  const char *name = nullptr;
  std::size_t number = 0;
};

/// A new image with these entries and without samples, which are written to its stream. The document owns it. Null,
/// with the error record set, when memory is short; what was made of it by then stays in the document.
HPDF_Image NewImage(HPDF_Doc document, std::initializer_list<ImageEntry> entries);

/// In pixels; 0 for null.
HPDF_UINT ImageWidth(HPDF_Image image);
HPDF_UINT ImageHeight(HPDF_Image image);

}  // namespace quillbar::engine
