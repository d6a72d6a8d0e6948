// SPDX-License-Identifier: MIT
#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

#include "host/language/platform/user_folders.h"

namespace quillbar::language::platform {
namespace {

namespace fs = std::filesystem;

/// A folder that the environment names; relative ones don't count.
fs::path FromEnvironment(const char *variable) {
  const char *value = std::getenv(variable);
  return value != nullptr && *value == '/' ? fs::path(value) : fs::path();
}

fs::path Home() {
  if (const fs::path home = FromEnvironment("HOME"); !home.empty()) return home;
  const passwd *entry = getpwuid(getuid());
  return entry == nullptr ? fs::path() : fs::path(entry->pw_dir);
}

/// The folder as desktops keep it in user-dirs.dirs (XDG user directories), or below home under its English name.
fs::path DesktopFolder(std::string_view key, std::string_view usualName) {
  const fs::path home = Home();
  if (home.empty()) return {};
  fs::path settings = FromEnvironment("XDG_CONFIG_HOME");
  if (settings.empty()) settings = home / ".config";
  std::ifstream file(settings / "user-dirs.dirs");
  const std::string start = "XDG_" + std::string(key) + "_DIR=\"";
  constexpr std::string_view kHome = "$HOME/";
  for (std::string line; std::getline(file, line);) {
    if (!line.starts_with(start) || !line.ends_with('"')) continue;
    const std::string path = line.substr(start.size(), line.size() - start.size() - 1);
    if (path.starts_with('/')) return path;
    if (path.starts_with(kHome)) return home / path.substr(kHome.size());
  }
  return home / usualName;
}

}  // namespace

fs::path PathOf(UserFolder folder) {
  switch (folder) {
    case UserFolder::kHome:
      return Home();
    case UserFolder::kDesktop:
      return DesktopFolder("DESKTOP", "Desktop");
    case UserFolder::kDocuments:
      return DesktopFolder("DOCUMENTS", "Documents");
    case UserFolder::kDownloads:
      return DesktopFolder("DOWNLOAD", "Downloads");
    case UserFolder::kPictures:
      return DesktopFolder("PICTURES", "Pictures");
    case UserFolder::kMusic:
      return DesktopFolder("MUSIC", "Music");
    case UserFolder::kMovies:
#ifdef __APPLE__
      return DesktopFolder("VIDEOS", "Movies");
#else
      return DesktopFolder("VIDEOS", "Videos");
#endif
    case UserFolder::kApplicationData:
      break;
  }
  const fs::path home = Home();
#ifdef __APPLE__
  return home.empty() ? home : home / "Library" / "Application Support";
#else
  const fs::path data = FromEnvironment("XDG_DATA_HOME");
  return !data.empty() || home.empty() ? data : home / ".local" / "share";
#endif
}

}  // namespace quillbar::language::platform
