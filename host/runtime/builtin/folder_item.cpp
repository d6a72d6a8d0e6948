#include "host/runtime/builtin/folder_item.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "host/runtime/builtin/builtin_classes.h"
#include "host/runtime/host_error.h"
#include "host/runtime/native_class.h"

namespace quillbar::host {
namespace {

namespace fs = std::filesystem;

struct FolderItem {
  fs::path path;
};

fs::path &Of(Object self) { return NativeClass<FolderItem>::Of(self).path; }

fs::path FromUtf8(const std::string &text) { return fs::path(std::u8string(text.begin(), text.end())); }

std::string ToUtf8(const fs::path &path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

/// Without a slash at the end, so that the last part is always the name.
fs::path Normal(const fs::path &path) {
  const fs::path normal = fs::absolute(path).lexically_normal();
  return normal.has_filename() || !normal.has_relative_path() ? normal : normal.parent_path();
}

[[noreturn]] void Fail(std::string_view action, const fs::path &path, const std::error_code &error) {
  throw HostError(ErrorKind::kFile,
                  fmt::format("{} \"{}\" failed: {}", action, ToUtf8(path), error.message()));
}

Object HandOut(const fs::path &path) { return native::HandOut(MakeFolderItem(*Host::Current(), path)); }

fs::path PathOrThrow(Object item, std::string_view action) {
  if (item == nullptr)
    throw HostError(ErrorKind::kNilObject, fmt::format("{} needs a FolderItem, not Nil", action));
  return Of(item);
}

void ConstructHere(Object self) { Of(self) = Normal(fs::current_path()); }
void ConstructFromPath(Object self, String path) {
  const std::string text = StringHandle(path).Utf8();
  Of(self) = text.empty() ? Normal(fs::current_path()) : Normal(FromUtf8(text));
}
void ConstructCopy(Object self, Object other) { Of(self) = PathOrThrow(other, "copying a FolderItem"); }

String NativePath(Object self) { return native::HandOut(StringHandle::FromUtf8(ToUtf8(Of(self)))); }
String Name(Object self) { return native::HandOut(StringHandle::FromUtf8(ToUtf8(Of(self).filename()))); }

void SetName(Object self, std::intptr_t, String name) {
  const fs::path renamed = Of(self).parent_path() / FromUtf8(StringHandle(name).Utf8());
  std::error_code error;
  if (fs::exists(fs::symlink_status(Of(self)))) fs::rename(Of(self), renamed, error);
  if (error) Fail("renaming", Of(self), error);
  Of(self) = renamed;
}

Boolean Exists(Object self) {
  std::error_code error;
  return fs::exists(Of(self), error) ? 1 : 0;
}

Boolean IsFolder(Object self) {
  std::error_code error;
  return fs::is_directory(Of(self), error) ? 1 : 0;
}

std::uint64_t Length(Object self) {
  std::error_code error;
  const bool isFile = fs::is_regular_file(Of(self), error);
  return isFile ? static_cast<std::uint64_t>(fs::file_size(Of(self))) : 0;
}

Object Parent(Object self) {
  const fs::path parent = Of(self).parent_path();
  return parent == Of(self) ? nullptr : HandOut(parent);
}

Object Child(Object self, String name) { return HandOut(Of(self) / FromUtf8(StringHandle(name).Utf8())); }

/// What a folder holds, sorted by name so that every run sees the same order.
std::vector<fs::path> Children(Object self) {
  std::vector<fs::path> children;
  std::error_code error;
  for (fs::directory_iterator entry(Of(self), error), end; !error && entry != end; entry.increment(error)) {
    children.push_back(entry->path());
  }
  if (error) Fail("reading the folder", Of(self), error);
  std::ranges::sort(children);
  return children;
}

Integer Count(Object self) { return IsFolder(self) != 0 ? static_cast<Integer>(Children(self).size()) : 0; }

Object ChildAt(Object self, Integer index) {
  const std::vector<fs::path> children = Children(self);
  if (index < 0 || static_cast<std::size_t>(index) >= children.size()) {
    throw HostError(ErrorKind::kOutOfBounds,
                    fmt::format("the folder \"{}\" holds {} items, there is no index {}", ToUtf8(Of(self)),
                                children.size(), index));
  }
  return HandOut(children[static_cast<std::size_t>(index)]);
}

Object Item(Object self, Integer number) { return ChildAt(self, number - 1); }

void Remove(Object self) {
  std::error_code error;
  const bool removed = fs::remove(Of(self), error);
  if (!error && !removed) error = std::make_error_code(std::errc::no_such_file_or_directory);
  if (error) Fail("deleting", Of(self), error);
}

/// Like Remove, but content when there is nothing to delete.
void Delete(Object self) {
  std::error_code error;
  fs::remove(Of(self), error);
  if (error) Fail("deleting", Of(self), error);
}

void CreateFolder(Object self) {
  std::error_code error;
  fs::create_directory(Of(self), error);
  if (error) Fail("creating the folder", Of(self), error);
}

/// Into the folder when the destination is one, else under the destination's name.
fs::path Destination(Object self, Object destination, std::string_view action) {
  const fs::path target = PathOrThrow(destination, action);
  return IsFolder(destination) != 0 ? target / Of(self).filename() : target;
}

void CopyTo(Object self, Object destination) {
  std::error_code error;
  fs::copy(Of(self), Destination(self, destination, "copying"), fs::copy_options::recursive, error);
  if (error) Fail("copying", Of(self), error);
}

void MoveTo(Object self, Object destination) {
  const fs::path target = Destination(self, destination, "moving");
  std::error_code error;
  if (fs::exists(target)) error = std::make_error_code(std::errc::file_exists);
  if (!error) fs::rename(Of(self), target, error);
  if (error) Fail("moving", Of(self), error);
  Of(self) = target;
}

}  // namespace

ClassRecord &FolderItemRecord() {
  static NativeClass<FolderItem> folderItem("FolderItem");
  static const bool isComplete = [] {
    folderItem.Method<&ConstructHere>("Constructor()")
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
    return true;
  }();
  static_cast<void>(isComplete);
  return folderItem.record();
}

ObjectHandle MakeFolderItem(Host &host, const fs::path &path) {
  ObjectHandle item = host.Create("FolderItem");
  Of(item.Get()) = Normal(path);
  return item;
}

fs::path PathOf(Host &host, const ObjectHandle &folderItem) {
  if (folderItem.IsNil() || !folderItem.Class().IsSubclassOf(host.Class("FolderItem"))) {
    throw HostError(ErrorKind::kTypeMismatch, "a FolderItem is needed");
  }
  return Of(folderItem.Get());
}

}  // namespace quillbar::host
