// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace quillbar::engine {

/// Bytes that HPDF_FToA needs for any real with the nul after it, and to put it together in place. The longest texts
/// have 13 characters, such as "-0.0000012345"; without this much room the text is put together elsewhere and copied.
inline constexpr std::size_t kRoomToPrintReal = 24;

}  // namespace quillbar::engine
