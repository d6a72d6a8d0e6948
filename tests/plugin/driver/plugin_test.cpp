// SPDX-License-Identifier: MIT
#include "tests/plugin/driver/plugin_test.h"

#include "tests/support/utf8_path.h"

namespace quillbar::test {

Document PluginTest::NewCompressedDocument() {
  return {host(), host().Create("PDFDocument", {host().Create("CompressorHandle")})};
}

ScriptObject PluginTest::NewFolderItem(const std::filesystem::path &path) {
  return NewObject("FolderItem", {Utf8(path)});
}

}  // namespace quillbar::test
