// SPDX-License-Identifier: MIT
#pragma once

namespace quillbar::test {

/// The bytes of zlib's stream record, as another plugin's compressor expects them: its longs have 32 bits on Windows
/// and a pointer's width elsewhere.
#ifdef _WIN32
inline constexpr int kStreamRecordSize = sizeof(void *) == 4 ? 56 : 88;
#else
inline constexpr int kStreamRecordSize = sizeof(void *) == 4 ? 56 : 112;
#endif

}  // namespace quillbar::test
