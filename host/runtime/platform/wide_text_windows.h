// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

/// Converts between UTF-8 and the system's UTF-16. Malformed input becomes U+FFFD.
namespace quillbar::host::platform {

std::wstring WideFromUtf8(std::string_view utf8);
std::string Utf8FromWide(std::wstring_view wide);

/// The system's message for an error number of GetLastError, without the line break at its end.
std::string SystemMessage(unsigned long errorNumber);

}  // namespace quillbar::host::platform
