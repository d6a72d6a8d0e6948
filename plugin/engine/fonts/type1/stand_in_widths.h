// SPDX-License-Identifier: MIT
// Widths of letters that Adobe's metrics of the standard fonts do not have (stand_in_widths.cpp).
#pragma once

#include <hpdf.h>

#include <optional>
#include <string_view>

namespace quillbar::engine {

// The width of a character in the face that viewers usually show in a standard font's place, in 1/1000 of the
// font size. Nothing for characters that it lacks, for fonts other than Helvetica and Times, and for the
// characters of Windows Latin 1, which Adobe's metrics have.
std::optional<HPDF_INT16> StandInWidth(std::string_view baseFont, HPDF_UNICODE character);

}  // namespace quillbar::engine
