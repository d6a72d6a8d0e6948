// SPDX-License-Identifier: MIT
#include "host/language/platform/user_folders.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>
// After windows.h, which it needs.
#include <shlobj.h>

namespace quillbar::language::platform {
namespace {

std::filesystem::path ShellFolder(int folder) {
  wchar_t path[MAX_PATH];
  return SHGetFolderPathW(nullptr, folder, nullptr, SHGFP_TYPE_CURRENT, path) == S_OK ? std::filesystem::path(path)
                                                                                      : std::filesystem::path();
}

}  // namespace

std::filesystem::path PathOf(UserFolder folder) {
  switch (folder) {
    case UserFolder::kHome:
      return ShellFolder(CSIDL_PROFILE);
    case UserFolder::kDesktop:
      return ShellFolder(CSIDL_DESKTOPDIRECTORY);
    case UserFolder::kDocuments:
      return ShellFolder(CSIDL_PERSONAL);
    case UserFolder::kDownloads: {
      // The function has no number for it.
      const std::filesystem::path home = ShellFolder(CSIDL_PROFILE);
      return home.empty() ? home : home / L"Downloads";
    }
    case UserFolder::kPictures:
      return ShellFolder(CSIDL_MYPICTURES);
    case UserFolder::kMusic:
      return ShellFolder(CSIDL_MYMUSIC);
    case UserFolder::kMovies:
      return ShellFolder(CSIDL_MYVIDEO);
    case UserFolder::kApplicationData:
      return ShellFolder(CSIDL_APPDATA);
  }
  return {};
}

}  // namespace quillbar::language::platform
