// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include <optional>
#include <string_view>

namespace quillbar::engine {

/// The width of a character that Adobe's metrics of the standard fonts lack, in the face that viewers usually show in
/// a standard font's place, in 1/1000 of the font size. Nothing for characters that this face lacks too, and for fonts
/// other than Helvetica and Times.
std::optional<HPDF_INT16> StandInWidth(std::string_view baseFont, HPDF_UNICODE character);

}  // namespace quillbar::engine
