// SPDX-License-Identifier: MIT
#include "host/runtime/builtin/folder_item.h"

#include <fmt/format.h>

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "host/runtime/builtin/builtin_classes.h"
#include "host/runtime/host_error.h"
#include "host/runtime/native_class.h"
#include "host/runtime/platform/file_system.h"

namespace quillbar::host {
namespace {

namespace fs = std::filesystem;

struct FolderItem {
  fs::path path;
};

fs::path &Of(Object self) { return NativeClass<FolderItem>::Of(self).path; }

[[noreturn]] void Fail(std::string_view action, const fs::path &path, const std::error_code &error) {
  throw HostError(ErrorKind::kFile,
                  fmt::format("{} \"{}\" failed: {}", action, platform::Utf8Path(path), platform::ErrorText(error)));
}

Object Give(const fs::path &path) { return native::Give(MakeFolderItem(*Host::Current(), path)); }

fs::path PathOrThrow(Object item, std::string_view action) {
  if (item == nullptr) throw HostError(ErrorKind::kNilObject, fmt::format("{} needs a FolderItem, not Nil", action));
  return Of(item);
}

void ConstructHere(Object self) { Of(self) = platform::NormalPath(fs::current_path()); }
void ConstructFromPath(Object self, String path) {
  const std::string text = StringHandle(path).Utf8();
  Of(self) =
      text.empty() ? platform::NormalPath(fs::current_path()) : platform::NormalPath(platform::PathFromUtf8(text));
}
void ConstructCopy(Object self, Object other) { Of(self) = PathOrThrow(other, "copying a FolderItem"); }

String NativePath(Object self) { return native::Give(StringHandle::FromUtf8(platform::Utf8Path(Of(self)))); }
String Name(Object self) { return native::Give(StringHandle::FromUtf8(platform::Utf8Path(Of(self).filename()))); }

void SetName(Object self, std::intptr_t, String name) {
  const fs::path renamed = Of(self).parent_path() / platform::PathFromUtf8(StringHandle(name).Utf8());
  std::error_code error;
  if (platform::IsTaken(Of(self))) platform::Rename(Of(self), renamed, error);
  if (error) Fail("renaming", Of(self), error);
  Of(self) = renamed;
}

Boolean Exists(Object self) { return platform::KindOf(Of(self)) != platform::FileKind::kNone ? 1 : 0; }
Boolean IsFolder(Object self) { return platform::KindOf(Of(self)) == platform::FileKind::kFolder ? 1 : 0; }
std::uint64_t Length(Object self) { return platform::FileSize(Of(self)); }

Object Parent(Object self) {
  const fs::path parent = Of(self).parent_path();
  return parent == Of(self) ? nullptr : Give(parent);
}

Object Child(Object self, String name) { return Give(Of(self) / platform::PathFromUtf8(StringHandle(name).Utf8())); }

std::vector<fs::path> Children(Object self) {
  std::error_code error;
  std::vector<fs::path> children = platform::ListFolder(Of(self), error);
  if (error) Fail("reading the folder", Of(self), error);
  return children;
}

Integer Count(Object self) { return IsFolder(self) != 0 ? static_cast<Integer>(Children(self).size()) : 0; }

Object ChildAt(Object self, Integer index) {
  const std::vector<fs::path> children = Children(self);
  if (index < 0 || static_cast<std::size_t>(index) >= children.size()) {
    throw HostError(ErrorKind::kOutOfBounds, fmt::format("the folder \"{}\" has {} items, so there is no index {}",
                                                         platform::Utf8Path(Of(self)), children.size(), index));
  }
  return Give(children[static_cast<std::size_t>(index)]);
}

Object Item(Object self, Integer number) { return ChildAt(self, number - 1); }

void Remove(Object self) {
  std::error_code error;
  const bool removed = platform::Remove(Of(self), error);
  if (!error && !removed) error = std::make_error_code(std::errc::no_such_file_or_directory);
  if (error) Fail("deleting", Of(self), error);
}

/// Deletes what the path names, as `Remove` does, but does nothing when there is nothing to delete.
void Delete(Object self) {
  std::error_code error;
  platform::Remove(Of(self), error);
  if (error) Fail("deleting", Of(self), error);
}

void CreateFolder(Object self) {
  std::error_code error;
  platform::CreateFolder(Of(self), error);
  if (error) Fail("creating the folder", Of(self), error);
}

/// The path to copy or move to: inside the destination when that is a folder, otherwise the destination itself.
fs::path Destination(Object self, Object destination, std::string_view action) {
  const fs::path target = PathOrThrow(destination, action);
  return IsFolder(destination) != 0 ? target / Of(self).filename() : target;
}

void CopyTo(Object self, Object destination) {
  std::error_code error;
  platform::Copy(Of(self), Destination(self, destination, "copying"), error);
  if (error) Fail("copying", Of(self), error);
}

void MoveTo(Object self, Object destination) {
  const fs::path target = Destination(self, destination, "moving");
  std::error_code error;
  if (platform::IsTaken(target)) error = std::make_error_code(std::errc::file_exists);
  if (!error) platform::Rename(Of(self), target, error);
  if (error) Fail("moving", Of(self), error);
  Of(self) = target;
}

}  // namespace

ClassRecord &FolderItemRecord() {
  static NativeClass<FolderItem> folderItem("FolderItem", [](NativeClass<FolderItem> &members) {
    members.Method<&ConstructHere>("Constructor()")
        .Method<&ConstructFromPath>("Constructor(path as String)")
        .Method<&ConstructCopy>("Constructor(other as FolderItem)")
        .Method<&Child>("Child(name as String) as FolderItem")
        .Method<&ChildAt>("ChildAt(index as Integer) as FolderItem")
        .Method<&Item>("Item(number as Integer) as FolderItem")
        .Method<&Delete>("Delete()")
        .Method<&Remove>("Remove()")
        .Method<&CreateFolder>("CreateFolder()")
        .Method<&CreateFolder>("CreateAsFolder()")
        .Method<&CopyTo>("CopyTo(destination as FolderItem)")
        .Method<&CopyTo>("CopyFileTo(destination as FolderItem)")
        .Method<&MoveTo>("MoveTo(destination as FolderItem)")
        .Method<&MoveTo>("MoveFileTo(destination as FolderItem)")
        .Property<&NativePath>("NativePath", "String")
        .Property<&Name, &SetName>("Name", "String")
        .Property<&Name>("DisplayName", "String")
        .Property<&Exists>("Exists", "Boolean")
        .Property<&IsFolder>("Directory", "Boolean")
        .Property<&IsFolder>("IsFolder", "Boolean")
        .Property<&Length>("Length", "UInt64")
        .Property<&Count>("Count", "Integer")
        .Property<&Parent>("Parent", "FolderItem");
  });
  return folderItem.record();
}

ObjectHandle MakeFolderItem(Host &host, const fs::path &path) {
  ObjectHandle item = host.Create("FolderItem");
  Of(item.Get()) = platform::NormalPath(path);
  return item;
}

fs::path PathOf(Host &host, const ObjectHandle &folderItem) {
  if (folderItem.IsNil() || !folderItem.Class().IsSubclassOf(host.Class("FolderItem"))) {
    throw HostError(ErrorKind::kTypeMismatch, "a FolderItem is needed");
  }
  return Of(folderItem.Get());
}

}  // namespace quillbar::host
