// SPDX-License-Identifier: MIT
// Small image files that the formats' own libraries write.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace quillbar::fuzz {

/// Calls `take` with the name and the bytes of PNG, TIFF and WebP files of several kinds.
void ForEachImageSeed(const std::function<void(const std::string &name, std::string_view file)> &take);

}  // namespace quillbar::fuzz
