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
#include "host/runtime/sandbox.h"

namespace quillbar::host {
namespace {

using Self = Instance<"FolderItem">;
namespace fs = std::filesystem;

struct FolderItemData {
  fs::path path;
};

fs::path &Of(Object self) { return NativeClass<FolderItemData>::Of(self).path; }

/// The path, for what asks about the file that has it, or hands it to a plugin.
fs::path &Used(Object self) {
  fs::path &path = Of(self);
  Sandbox::Require(path);
  if (const auto &note = Host::Current()->options().usesFile) note(path);
  return path;
}

[[noreturn]] void Fail(std::string_view action, const fs::path &path, const std::error_code &error) {
  throw HostError(ErrorKind::kFile,
                  fmt::format("{} \"{}\" failed: {}", action, platform::Utf8Path(path), platform::ErrorText(error)));
}

Self *Give(const fs::path &path) { return native::Give<Self>(MakeFolderItem(*Host::Current(), path)); }

fs::path PathOrThrow(Self *item, std::string_view action) {
  if (item == nullptr) throw HostError(ErrorKind::kNilObject, fmt::format("{} needs a FolderItem, not Nil", action));
  return Of(item);
}

void ConstructHere(Self *self) { Of(self) = platform::NormalPath(fs::current_path()); }
void ConstructFromPath(Self *self, String path) {
  const std::string text = StringHandle(path).Utf8();
  Of(self) =
      text.empty() ? platform::NormalPath(fs::current_path()) : platform::NormalPath(platform::PathFromUtf8(text));
}
void ConstructCopy(Self *self, Self *other) { Of(self) = PathOrThrow(other, "copying a FolderItem"); }

String NativePath(Self *self) { return native::Give(StringHandle::FromUtf8(platform::Utf8Path(Used(self)))); }
String Name(Self *self) { return native::Give(StringHandle::FromUtf8(platform::Utf8Path(Of(self).filename()))); }

void SetName(Self *self, std::intptr_t, String name) {
  const fs::path renamed = Of(self).parent_path() / platform::PathFromUtf8(StringHandle(name).Utf8());
  Sandbox::Require(Of(self));
  Sandbox::Require(renamed);
  std::error_code error;
  if (platform::IsTaken(Of(self))) platform::Rename(Of(self), renamed, error);
  if (error) Fail("renaming", Of(self), error);
  Of(self) = renamed;
}

Boolean Exists(Self *self) { return platform::KindOf(Used(self)) != platform::FileKind::kNone ? 1 : 0; }
Boolean IsFolder(Self *self) { return platform::KindOf(Used(self)) == platform::FileKind::kFolder ? 1 : 0; }
std::uint64_t Length(Self *self) { return platform::FileSize(Used(self)); }

Self *Parent(Self *self) {
  const fs::path parent = Of(self).parent_path();
  return parent == Of(self) ? nullptr : Give(parent);
}

Self *Child(Self *self, String name) { return Give(Of(self) / platform::PathFromUtf8(StringHandle(name).Utf8())); }

std::vector<fs::path> Children(Self *self) {
  std::error_code error;
  std::vector<fs::path> children = platform::ListFolder(Used(self), error);
  if (error) Fail("reading the folder", Of(self), error);
  return children;
}

Integer Count(Self *self) { return IsFolder(self) != 0 ? static_cast<Integer>(Children(self).size()) : 0; }

Self *ChildAt(Self *self, Integer index) {
  const std::vector<fs::path> children = Children(self);
  if (index < 0 || static_cast<std::size_t>(index) >= children.size()) {
    throw HostError(ErrorKind::kOutOfBounds, fmt::format("the folder \"{}\" has {} items, so there is no index {}",
                                                         platform::Utf8Path(Of(self)), children.size(), index));
  }
  return Give(children[static_cast<std::size_t>(index)]);
}

Self *Item(Self *self, Integer number) { return ChildAt(self, number - 1); }

void Remove(Self *self) {
  Sandbox::Require(Of(self));
  std::error_code error;
  const bool removed = platform::Remove(Of(self), error);
  if (!error && !removed) error = std::make_error_code(std::errc::no_such_file_or_directory);
  if (error) Fail("deleting", Of(self), error);
}

/// Deletes what the path names, as `Remove` does, but does nothing when there is nothing to delete.
void Delete(Self *self) {
  Sandbox::Require(Of(self));
  std::error_code error;
  platform::Remove(Of(self), error);
  if (error) Fail("deleting", Of(self), error);
}

void CreateFolder(Self *self) {
  Sandbox::Require(Of(self));
  std::error_code error;
  platform::CreateFolder(Of(self), error);
  if (error) Fail("creating the folder", Of(self), error);
}

/// The path to copy or move to: inside the destination when that is a folder, otherwise the destination itself.
fs::path Destination(Self *self, Self *destination, std::string_view action) {
  Sandbox::Require(Of(self));
  fs::path target = PathOrThrow(destination, action);
  if (IsFolder(destination) != 0) target /= Of(self).filename();
  Sandbox::Require(target);
  return target;
}

void CopyTo(Self *self, Self *destination) {
  std::error_code error;
  platform::Copy(Of(self), Destination(self, destination, "copying"), error);
  if (error) Fail("copying", Of(self), error);
}

void MoveTo(Self *self, Self *destination) {
  const fs::path target = Destination(self, destination, "moving");
  std::error_code error;
  if (platform::IsTaken(target)) error = std::make_error_code(std::errc::file_exists);
  if (!error) platform::Rename(Of(self), target, error);
  if (error) Fail("moving", Of(self), error);
  Of(self) = target;
}

using FolderItemMembers = Members<
    Methods<native::Method<"Constructor()", ConstructHere>,
            native::Method<"Constructor(path as String)", ConstructFromPath>,
            native::Method<"Constructor(other as FolderItem)", ConstructCopy>,
            native::Method<"Child(name as String) as FolderItem", Child>,
            native::Method<"ChildAt(index as Integer) as FolderItem", ChildAt>,
            native::Method<"Item(number as Integer) as FolderItem", Item>, native::Method<"Delete()", Delete>,
            native::Method<"Remove()", Remove>, native::Method<"CreateFolder()", CreateFolder>,
            native::Method<"CreateAsFolder()", CreateFolder>,
            native::Method<"CopyTo(destination as FolderItem)", CopyTo>,
            native::Method<"CopyFileTo(destination as FolderItem)", CopyTo>,
            native::Method<"MoveTo(destination as FolderItem)", MoveTo>,
            native::Method<"MoveFileTo(destination as FolderItem)", MoveTo>>,
    Properties<
        native::ReadOnlyProperty<"NativePath", "String", NativePath>, native::Property<"Name", "String", Name, SetName>,
        native::ReadOnlyProperty<"DisplayName", "String", Name>, native::ReadOnlyProperty<"Exists", "Boolean", Exists>,
        native::ReadOnlyProperty<"Directory", "Boolean", IsFolder>,
        native::ReadOnlyProperty<"IsFolder", "Boolean", IsFolder>, native::ReadOnlyProperty<"Length", "UInt64", Length>,
        native::ReadOnlyProperty<"Count", "Integer", Count>, native::ReadOnlyProperty<"Parent", "FolderItem", Parent>>>;

}  // namespace

ClassRecord &FolderItemRecord() { return NativeClass<FolderItemData>::Record<FolderItemMembers>("FolderItem"); }

ObjectHandle MakeFolderItem(Host &host, const fs::path &path) {
  ObjectHandle item = host.Create("FolderItem");
  Of(item.Get()) = platform::NormalPath(path);
  return item;
}

fs::path PathOf(Host &host, const ObjectHandle &folderItem) {
  if (folderItem.IsNil() || !folderItem.Class().IsSubclassOf(host.Class("FolderItem"))) {
    throw HostError(ErrorKind::kTypeMismatch, "a FolderItem is needed");
  }
  return Used(folderItem.Get());
}

}  // namespace quillbar::host
