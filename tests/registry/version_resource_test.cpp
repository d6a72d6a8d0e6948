// SPDX-License-Identifier: MIT
// What Windows shows about the library's file.
#include <gmock/gmock.h>
#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/utf8_path.h"

namespace quillbar {
namespace {

class VersionResource : public testing::Test {
 protected:
  void SetUp() override {
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(file_.c_str(), &ignored);
    ASSERT_NE(size, 0U) << "the file has no version resource";
    resource_.resize(size);
    ASSERT_NE(GetFileVersionInfoW(file_.c_str(), 0, size, resource_.data()), 0);
  }

  // A text of the resource in American English and UTF-16.
  std::string Text(const std::string &name) {
    const std::wstring path = test::PathOf("\\StringFileInfo\\040904B0\\" + name).wstring();
    void *text = nullptr;
    UINT length = 0;
    if (VerQueryValueW(resource_.data(), path.c_str(), &text, &length) == 0) return "no such text";
    return test::Utf8(std::filesystem::path(static_cast<const wchar_t *>(text)));
  }

  const std::filesystem::path file_ = QUILLBAR_PLUGIN_FILE;
  std::vector<char> resource_;
};

TEST_F(VersionResource, NamesTheProductItsVersionAndItsOwner) {
  EXPECT_EQ(Text("ProductName"), "Quillbar PDF Writer");
  EXPECT_THAT(Text("ProductVersion"), testing::StartsWith(QUILLBAR_VERSION));
  EXPECT_THAT(Text("LegalCopyright"), testing::HasSubstr("Quillbar"));
  EXPECT_EQ(Text("OriginalFilename"), "QuillbarPDFWriter.dll");
}

TEST_F(VersionResource, HoldsTheVersionAsNumbersToo) {
  void *found = nullptr;
  UINT length = 0;
  ASSERT_NE(VerQueryValueW(resource_.data(), L"\\", &found, &length), 0);
  const auto *numbers = static_cast<const VS_FIXEDFILEINFO *>(found);
  EXPECT_EQ(std::to_string(HIWORD(numbers->dwProductVersionMS)) + '.' +
                std::to_string(LOWORD(numbers->dwProductVersionMS)) + '.' +
                std::to_string(HIWORD(numbers->dwProductVersionLS)),
            QUILLBAR_VERSION);
  EXPECT_EQ(numbers->dwFileType, static_cast<DWORD>(VFT_DLL));
}

}  // namespace
}  // namespace quillbar
