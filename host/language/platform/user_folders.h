// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

/// The folders that a system has for its user.
namespace quillbar::language::platform {

enum class UserFolder { kHome, kDesktop, kDocuments, kDownloads, kPictures, kMusic, kMovies, kApplicationData };

/// The folder, whether it exists or not; an empty path where the system names none.
std::filesystem::path PathOf(UserFolder folder);

}  // namespace quillbar::language::platform
