// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "plugin/engine/fonts/truetype/truetype_file.h"

namespace quillbar::engine {

/// The name under which a document has a font, as libharu forms it: its PostScript name, and after a comma the first
/// word of its style unless that is the regular one. A font without a PostScript name gets one made from the file's
/// bytes. At most `longest` characters. Throws std::bad_alloc, like all functions here.
std::string LibraryNameOf(const TrueTypeFile &font, std::size_t longest);

/// The same for the `attempt`th time that the name was found to be another font's, from 0 on: with a suffix made from
/// the file's bytes.
std::string LibraryNameWithSuffix(const TrueTypeFile &font, std::size_t longest, unsigned attempt);

/// By which names a font may also be asked for: its PostScript name, alone and with its whole style. Empty for a font
/// without one.
std::vector<std::string> OwnNamesOf(const TrueTypeFile &font);

/// Six capital letters that tell subsets apart (ISO 32000-1, 9.6.4), made from the embedded font's bytes.
std::string SubsetTag(Bytes program);

}  // namespace quillbar::engine
