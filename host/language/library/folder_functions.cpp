// SPDX-License-Identifier: MIT
// Files and folders: GetFolderItem, the children of a folder, the folders of SpecialFolder.

#include <fmt/format.h>

#include <filesystem>
#include <system_error>
#include <vector>

#include "host/language/library/library.h"
#include "host/language/platform/user_folders.h"
#include "host/runtime/builtin/builtin_classes.h"
#include "host/runtime/platform/file_system.h"

namespace quillbar::language {
namespace {

using host::ArrayHandle;
using host::ObjectHandle;
using host::StringHandle;
using platform::UserFolder;
namespace files = host::platform;

ObjectHandle GetFolderItem(Runtime &runtime, const StringHandle &path) {
  return runtime.Host().Create("FolderItem", {host::Value(path)});
}

ArrayHandle Children(Runtime &runtime, const ObjectHandle &folder) {
  const std::filesystem::path path = host::PathOf(runtime.Host(), folder);
  std::error_code error;
  const std::vector<std::filesystem::path> paths = files::ListFolder(path, error);
  if (error) {
    throw LibraryError{
        ExceptionKind::kIo,
        fmt::format("reading the folder \"{}\" failed: {}", files::Utf8Path(path), files::ErrorText(error)),
        error.value()};
  }
  ArrayHandle children = ArrayHandle::Create(host::Type::Class(runtime.Host().Class("FolderItem")));
  for (const std::filesystem::path &child : paths) children.Append(host::MakeFolderItem(runtime.Host(), child));
  return children;
}

/// Nil for a folder that the system doesn't name.
ObjectHandle Item(Runtime &runtime, const std::filesystem::path &path) {
  return path.empty() ? ObjectHandle() : host::MakeFolderItem(runtime.Host(), path);
}

template <UserFolder kFolder>
ObjectHandle OfUser(Runtime &runtime) {
  return Item(runtime, platform::PathOf(kFolder));
}

ObjectHandle Temporary(Runtime &runtime) {
  std::error_code error;
  return Item(runtime, std::filesystem::temp_directory_path(error));
}

ObjectHandle CurrentWorkingDirectory(Runtime &runtime) { return Item(runtime, std::filesystem::current_path()); }

/// What applications find beside themselves, scripts find beside their file.
ObjectHandle Resources(Runtime &runtime) { return Item(runtime, runtime.Folder()); }

ObjectHandle Resource(Runtime &runtime, const StringHandle &name) {
  if (runtime.Folder().empty()) return {};
  return Item(runtime, runtime.Folder() / files::PathFromUtf8(name.Utf8()));
}

using namespace library;

constexpr LibraryFunction kFolderFunctions[] = {
    kFunction<"GetFolderItem(path As String) As FolderItem", &GetFolderItem>,

    kMethod<"FolderItem", "Children() As FolderItem()", &Children>,

    kShared<"SpecialFolder", "ApplicationData() As FolderItem", &OfUser<UserFolder::kApplicationData>>,
    kShared<"SpecialFolder", "CurrentWorkingDirectory() As FolderItem", &CurrentWorkingDirectory>,
    kShared<"SpecialFolder", "Desktop() As FolderItem", &OfUser<UserFolder::kDesktop>>,
    kShared<"SpecialFolder", "Documents() As FolderItem", &OfUser<UserFolder::kDocuments>>,
    kShared<"SpecialFolder", "Downloads() As FolderItem", &OfUser<UserFolder::kDownloads>>,
    kShared<"SpecialFolder", "Movies() As FolderItem", &OfUser<UserFolder::kMovies>>,
    kShared<"SpecialFolder", "Music() As FolderItem", &OfUser<UserFolder::kMusic>>,
    kShared<"SpecialFolder", "Pictures() As FolderItem", &OfUser<UserFolder::kPictures>>,
    kShared<"SpecialFolder", "Resource(name As String) As FolderItem", &Resource>,
    kShared<"SpecialFolder", "Resources() As FolderItem", &Resources>,
    kShared<"SpecialFolder", "Temporary() As FolderItem", &Temporary>,
    kShared<"SpecialFolder", "UserHome() As FolderItem", &OfUser<UserFolder::kHome>>,
};

}  // namespace

std::span<const LibraryFunction> FolderFunctions() { return kFolderFunctions; }

}  // namespace quillbar::language
