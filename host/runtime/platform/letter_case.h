// SPDX-License-Identifier: MIT
#pragma once

/// Unicode's simple case mappings as the platform has them, whatever locale the user runs.
namespace quillbar::host::platform {

/// The upper-case or lower-case form of a character; the character itself when it has none.
char32_t UpperCase(char32_t character);
char32_t LowerCase(char32_t character);

}  // namespace quillbar::host::platform
