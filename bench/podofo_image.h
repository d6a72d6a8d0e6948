// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillbar::bench {

/// Writes a file with one page and on it an RGBA image of 8 bits, its colours compressed and its alpha not, as the
/// plugin's files have them. Throws PoDoFo's exception when that fails.
void WritePodofoImage(const std::vector<std::uint8_t> &pixels, std::int32_t width, std::int32_t height,
                      const std::string &file);

}  // namespace quillbar::bench
