// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include <string_view>

namespace quillbar::engine {

/// Writes `text` as a literal string in parentheses, directly followed by `after`. The library's status.
HPDF_STATUS WriteLiteralString(HPDF_Stream stream, std::string_view text, std::string_view after = {});

}  // namespace quillbar::engine
