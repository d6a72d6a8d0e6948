// SPDX-License-Identifier: MIT
// Bytes as calls of the plugins' members: any members, in any order, with arguments that fit their declarations. The
// fuzz target `calls` and a test with random bytes play them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/runtime/host.h"

namespace quillbar::test {

/// The files of a folder that calls load and save.
struct FilesForCalls {
  std::filesystem::path folder;
  std::string jpeg;  ///< a JPEG file, for members that take one as text
};

/// Writes small font files and a picture into the folder. `jpeg` is a JPEG file.
FilesForCalls WriteFilesForCalls(const std::filesystem::path &folder, std::string jpeg);

/// Takes a document's file as a member gave it, with the passwords of which one opens it; without any, none is needed.
using TakeFile = std::function<void(std::string_view file, const std::vector<std::string> &passwords)>;

/// Plays bytes as calls. The first byte says which values arguments have (`kHostile`); each further `kRecordSize` bytes
/// are one operation: its number, which object it is about, then two bytes for each argument.
class CallPlayer {
 public:
  static constexpr std::size_t kRecordSize = 16;
  /// Arguments are also not-a-number, infinite, out of bounds and Nil. Without it they are what a careful script
  /// would pass, though calls still come in any order.
  static constexpr std::uint8_t kHostile = 1;

  /// What a handler of an event does: the first argument byte of the operation that attaches it.
  enum Handler : std::uint8_t { kDetached, kAnswers, kRaises, kCallsBack, kReleasesAll, kHandlers };

  /// `host` has loaded both plugins, and outlives this.
  CallPlayer(host::Host &host, FilesForCalls files, TakeFile takeFile);

  /// Plays an input; whatever it made is released when this returns. Gives the number of calls made.
  std::size_t Play(std::span<const std::uint8_t> input);

  /// The number of an operation: "New Page", "Page.LineTo" (the first of that name), "get Page.Height",
  /// "set Page.Height", "handle PDFDocument.ErrorLog", "release Page".
  std::optional<std::uint8_t> NumberOf(std::string_view operation) const;
  std::size_t OperationCount() const { return operations_.size(); }

  /// Writes each call to the standard error before it is made.
  void ShowCalls() { showsCalls_ = true; }

 private:
  enum class Act : std::uint8_t { kNew, kCall, kGet, kSet, kHandle, kRelease };
  struct Operation {
    Act act;
    const host::ClassInfo *info = nullptr;
    const host::MethodInfo *method = nullptr;
    const host::PropertyInfo *property = nullptr;
    const host::EventInfo *event = nullptr;
    std::string name;
  };
  /// Two bytes from which an argument is made.
  struct Seed {
    std::uint8_t kind, value;
  };
  using Record = std::span<const std::uint8_t>;

  void PlayNext();
  void Perform(const Operation &operation, Record record);
  void Handle(const host::ObjectHandle &object, const host::EventInfo &event, std::uint8_t behaviour);
  host::Value Answer(Handler behaviour, const host::EventInfo &event);
  /// Calls `method`, of `object` or, for a constructor, of a new object.
  void Call(const Operation &operation, const host::MethodInfo &method, const host::ObjectHandle &object,
            std::vector<host::Value> arguments);
  std::vector<host::Value> Arguments(const host::MethodInfo &method, Record record);
  void Keep(const host::Value &made);

  host::Value Argument(host::Type type, Seed seed);
  double Real(Seed seed) const;
  std::int64_t Whole(Seed seed) const;
  host::StringHandle Text(Seed seed) const;
  host::Value ArrayOf(host::Type type, Seed seed);
  host::ObjectHandle ObjectOf(const host::ClassInfo &info, Seed seed);
  /// One of the objects of a class that there are; one is made where there is none. Nil where that fails.
  host::ObjectHandle Any(const host::ClassInfo &info, std::uint8_t choice);
  void MakeOne(const host::ClassInfo &info);

  void Show(const Operation &operation, const host::ObjectHandle &object, std::span<const host::Value> arguments) const;

  host::Host &host_;
  FilesForCalls files_;
  TakeFile takeFile_;
  std::vector<Operation> operations_;
  bool showsCalls_ = false;

  // Of the input that is played.
  std::span<const std::uint8_t> rest_;
  bool isHostile_ = false;
  int depth_ = 0;
  std::size_t calls_ = 0;
  std::map<const host::ClassInfo *, std::vector<host::ObjectHandle>> objects_;
  std::vector<std::string> passwords_;
};

}  // namespace quillbar::test
