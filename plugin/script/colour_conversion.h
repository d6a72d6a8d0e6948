// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include "interface/values.h"

namespace quillbar {

/// A script colour, &hRRGGBB with an unused top byte, as the library's three numbers from 0 to 1.
inline HPDF_RGBColor ToLibraryColor(Color color) {
  const auto bits = static_cast<std::uint32_t>(color);
  const auto component = [bits](int shift) { return static_cast<float>((bits >> shift) & 0xFF) / 255.0F; };
  return {component(16), component(8), component(0)};
}

/// The library's three numbers as a script colour. Each is cut, not rounded; every colour that came from
/// `ToLibraryColor` comes back with the same three bytes.
inline Color ToScriptColor(HPDF_RGBColor color) {
  const auto component = [](float share) { return static_cast<std::uint32_t>(share * 255.0F); };
  return static_cast<Color>((((component(color.r) << 8) | component(color.g)) << 8) | component(color.b));
}

}  // namespace quillbar
