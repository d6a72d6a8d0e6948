#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {

Document PluginTest::NewCompressedDocument() {
  return {host(), host().Create("PDFDocument", {host().Create("CompressorHandle")})};
}

ScriptObject PluginTest::NewFolderItem(const std::filesystem::path &path) {
  const std::u8string utf8 = path.u8string();
  return NewObject("FolderItem", {std::string(utf8.begin(), utf8.end())});
}

}  // namespace quillbar::test
