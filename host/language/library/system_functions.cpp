// SPDX-License-Identifier: MIT
// Output, time, files: what reaches outside of the script.

#include <fmt/format.h>

#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>
#include <vector>

#include "host/language/library/library.h"
#include "host/language/values/variant.h"
#include "host/runtime/builtin/builtin_classes.h"
#include "host/runtime/platform/file_system.h"

namespace quillbar::language {
namespace {

using host::ArrayHandle;
using host::ObjectHandle;
using host::StringHandle;
namespace platform = host::platform;

void PrintLine(Runtime &runtime, const host::Value &value) {
  runtime.Output() << variant::AsText(value).Utf8() << '\n';
  if (!runtime.Output()) throw LibraryError{ExceptionKind::kIo, "the output can't be written"};
}

void PrintEmptyLine(Runtime &runtime) { runtime.Output() << '\n'; }

void DebugLog(const StringHandle &message) { std::cerr << message.Utf8() << '\n'; }

double Microseconds(Runtime &runtime) { return runtime.Microseconds(); }

/// Sixtieths of a second, the dialect's ticks.
std::int64_t Ticks(Runtime &runtime) { return static_cast<std::int64_t>(runtime.Microseconds() * 60 / 1e6); }

StringHandle CommandLine(Runtime &runtime) {
  return StringHandle::FromUtf8(fmt::format("{}", fmt::join(runtime.Arguments(), " ")));
}

ObjectHandle Random(Runtime &runtime) { return runtime.Host().Create("Random"); }

ObjectHandle GetFolderItem(Runtime &runtime, const StringHandle &path) {
  return runtime.Host().Create("FolderItem", {host::Value(path)});
}

ArrayHandle Children(Runtime &runtime, const ObjectHandle &folder) {
  const std::filesystem::path path = host::PathOf(runtime.Host(), folder);
  std::error_code error;
  const std::vector<std::filesystem::path> paths = platform::ListFolder(path, error);
  if (error) {
    throw LibraryError{
        ExceptionKind::kIo,
        fmt::format("reading the folder \"{}\" failed: {}", platform::Utf8Path(path), platform::ErrorText(error)),
        error.value()};
  }
  ArrayHandle children = ArrayHandle::Create(host::Type::Class(runtime.Host().Class("FolderItem")));
  for (const std::filesystem::path &child : paths) children.Append(host::MakeFolderItem(runtime.Host(), child));
  return children;
}

using namespace library;

constexpr LibraryFunction kTable[] = {
    kFunction<"Print(value As Any)", &PrintLine>,
    kFunction<"Print()", &PrintEmptyLine>,
    kFunction<"Microseconds() As Double", &Microseconds>,
    kFunction<"Ticks() As Integer", &Ticks>,
    kFunction<"GetFolderItem(path As String) As FolderItem", &GetFolderItem>,

    kMethod<"FolderItem", "Children() As FolderItem()", &Children>,

    kShared<"System", "DebugLog(message As String)", &DebugLog>,
    kShared<"System", "Microseconds() As Double", &Microseconds>,
    kShared<"System", "Ticks() As Integer", &Ticks>,
    kShared<"System", "CommandLine() As String", &CommandLine>,
    kShared<"System", "Random() As Random", &Random>,
};

}  // namespace

std::span<const LibraryFunction> SystemFunctions() { return kTable; }

}  // namespace quillbar::language
