// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <string>

#include "host/testing/host_fixture.h"
#include "tests/plugin/driver/document.h"
#include "tests/plugin/driver/script_object.h"

namespace quillbar::test {

/// A test with a host that has loaded the plugin and its companion. At its end everything that the plugin
/// took must have been given back.
class PluginTest : public host::HostFixture {
 protected:
  void SetUp() override { StartHost({QUILLBAR_COMPANION_FILE, QUILLBAR_PLUGIN_FILE}); }

  /// Starts the host anew, without one of its services.
  void StartWithout(const char *service) {
    host::HostOptions options;
    options.missing.insert(service);
    StartHost({QUILLBAR_COMPANION_FILE, QUILLBAR_PLUGIN_FILE}, options);
  }

  Document NewDocument() { return {host(), host().Create("PDFDocument")}; }
  /// With the companion's CompressorHandle.
  Document NewCompressedDocument();
  ScriptObject NewObject(std::string_view className, std::initializer_list<host::Value> arguments = {}) {
    return {host(), host().Create(className, arguments)};
  }
  ScriptObject NewFolderItem(const std::filesystem::path &path);
};

/// The library's error numbers that scripts see.
namespace library_error {
inline constexpr std::uint32_t kDuplicateRegistration = 0x100E;
inline constexpr std::uint32_t kExceedGStateLimit = 0x1014;
inline constexpr std::uint32_t kFileIoError = 0x1016;
inline constexpr std::uint32_t kFileOpenError = 0x1017;
inline constexpr std::uint32_t kInvalidParameter = 0x1039;
inline constexpr std::uint32_t kCannotRestoreGState = 0x104C;
inline constexpr std::uint32_t kInvalidFontSize = 0x1050;
inline constexpr std::uint32_t kInvalidGMode = 0x1051;
inline constexpr std::uint32_t kInvalidSize = 0x1054;
inline constexpr std::uint32_t kOutOfRange = 0x1056;
inline constexpr std::uint32_t kStringOutOfRange = 0x105B;
inline constexpr std::uint32_t kZlibError = 0x1066;
}  // namespace library_error

/// An Integer of which a function that looks at fewer bits sees only zeroes.
inline constexpr std::int64_t kHighBitOnly = std::int64_t{1} << (sizeof(void *) == 8 ? 32 : 16);

/// Values of Page.GraphicsModeEnum.
namespace graphics_mode {
inline constexpr std::int64_t kPageDescription = 1;
inline constexpr std::int64_t kPathObject = 2;
inline constexpr std::int64_t kTextObject = 4;
inline constexpr std::int64_t kClippingPath = 8;
}  // namespace graphics_mode

}  // namespace quillbar::test
