// SPDX-License-Identifier: MIT
#include "host/runtime/platform/wide_text_windows.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <iterator>

namespace quillbar::host::platform {

std::wstring WideFromUtf8(std::string_view utf8) {
  if (utf8.empty()) return {};
  const int length = static_cast<int>(utf8.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string Utf8FromWide(std::wstring_view wide) {
  if (wide.empty()) return {};
  const int length = static_cast<int>(wide.size());
  std::string utf8(
      static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr)),
      '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, utf8.data(), static_cast<int>(utf8.size()), nullptr, nullptr);
  return utf8;
}

std::string SystemMessage(unsigned long errorNumber) {
  wchar_t text[1024];
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
                     nullptr, errorNumber, 0, text, static_cast<DWORD>(std::size(text)), nullptr);
  std::wstring_view message(text, length);
  while (!message.empty() && (message.back() == L' ' || message.back() == L'.')) message.remove_suffix(1);
  return message.empty() ? "error " + std::to_string(errorNumber) + " of the system" : Utf8FromWide(message);
}

}  // namespace quillbar::host::platform
