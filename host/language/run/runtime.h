// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <istream>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "host/language/run/exceptions.h"
#include "host/language/run/limits.h"
#include "host/language/tree/code.h"
#include "host/runtime/host.h"

namespace quillbar::language {

/// What a script reads from and writes to when it names no file.
struct Streams {
  std::istream &input;
  std::ostream &output;
  std::ostream &errors;
};

/// The state of a running script: the host, its global variables, the stack of variables, the output.
class Runtime {
 public:
  /// `folder` is where the script's file is; empty when the script isn't in a file.
  Runtime(host::Host &host, const Streams &streams, std::filesystem::path folder, std::vector<std::string> arguments,
          std::vector<Representation> globals);
  ~Runtime();
  /// Releases what the global variables hold.
  void ReleaseVariables();
  Runtime(const Runtime &) = delete;
  Runtime &operator=(const Runtime &) = delete;

  host::Host &Host() const { return host_; }
  std::istream &Input() const { return streams_.input; }
  std::ostream &Output() const { return streams_.output; }
  std::ostream &Errors() const { return streams_.errors; }
  const std::filesystem::path &Folder() const { return folder_; }
  /// The cells of the script's global variables, by slot.
  Cell *Globals() { return globals_.data(); }
  const std::vector<std::string> &Arguments() const { return arguments_; }
  std::mt19937_64 &Random() { return random_; }

  /// Microseconds since the script started.
  double Microseconds() const;

  /// Raises an exception of the language at a position in the script.
  [[noreturn]] void Raise(const Frame &frame, Span span, ExceptionKind kind, std::string message,
                          std::int64_t number = 0) const;

  /// Notes where the script is when it ends by an interruption; the first place counts.
  void NoteEnd(const Frame &frame, Span span) {
    if (end_.empty()) end_ = Trace(frame, span);
  }
  /// Where it ended so, innermost first; empty when it didn't.
  const std::vector<TraceStep> &End() const { return end_; }

  /// Adds the positions of the calls in progress to an exception.
  static std::vector<TraceStep> Trace(const Frame &frame, Span span);

  /// The exception as an object of its class, made on first use.
  host::ObjectHandle ExceptionObject(Raised &raised) const;

  /// Runs a procedure. `prepare` fills the parameters' cells (from 1 on) while the caller's frame is still the current
  /// one; `finish` takes the result out of cell 0.
  template <class Prepare, class Finish>
  auto Call(const Procedure &procedure, const Frame *caller, Span span, Prepare prepare, Finish finish) {
    const Activation activation(*this, procedure, caller, span);
    prepare(activation.cells());
    Frame frame{*this, procedure, caller, span, activation.cells(), globals_.data()};
    procedure.body.Execute(frame);
    return finish(activation.cells());
  }

  /// Notes, while it lives, that the script is calling a member.
  class PluginCall {
   public:
    PluginCall(Runtime &runtime, const Frame &frame, Span span)
        : runtime_(runtime), frame_(frame), span_(span), outer_(runtime.pluginCall_) {
      runtime.pluginCall_ = this;
    }
    ~PluginCall() { runtime_.pluginCall_ = outer_; }
    PluginCall(const PluginCall &) = delete;
    PluginCall &operator=(const PluginCall &) = delete;
    const Frame &frame() const { return frame_; }
    Span span() const { return span_; }

   private:
    Runtime &runtime_;
    const Frame &frame_;
    Span span_;
    const PluginCall *outer_;
  };

  /// The call of a member in progress; null when there is none.
  const PluginCall *CurrentPluginCall() const { return pluginCall_; }

  /// Whether the script is still running; handlers that outlive it do nothing.
  std::weak_ptr<const bool> Liveness() const { return alive_; }

 private:
  /// A part of the stack for one call. Its cells are zero at first; it releases what they hold at the end.
  class Activation {
   public:
    Activation(Runtime &runtime, const Procedure &procedure, const Frame *caller, Span span)
        : runtime_(runtime), procedure_(procedure), cells_(runtime.stack_.get() + runtime.used_) {
      if (runtime.depth_ >= runtime.maxCalls_ || runtime.used_ + procedure.cellCount > Limits::kVariables ||
          runtime.MachineStackIsShort()) {
        runtime.RaiseStackOverflow(procedure, caller, span);
      }
      runtime.used_ += procedure.cellCount;
      ++runtime.depth_;
      std::fill_n(cells_, procedure.cellCount, Cell());
    }
    ~Activation() {
      for (const Procedure::OwningCell &owning : procedure_.owningCells) {
        cells_[owning.slot].Clear(owning.representation);
      }
      runtime_.used_ -= procedure_.cellCount;
      --runtime_.depth_;
    }
    Activation(const Activation &) = delete;
    Activation &operator=(const Activation &) = delete;
    Cell *cells() const { return cells_; }

   private:
    Runtime &runtime_;
    const Procedure &procedure_;
    Cell *cells_;
  };

  /// Roughly where the machine's stack is now.
  static std::uintptr_t StackPointer() { return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)); }
  bool MachineStackIsShort() const {
    const std::uintptr_t here = StackPointer();
    return (here > stackBase_ ? here - stackBase_ : stackBase_ - here) > Limits::kMachineStack;
  }
  [[noreturn]] void RaiseStackOverflow(const Procedure &procedure, const Frame *caller, Span span) const;

  host::Host &host_;
  Streams streams_;
  std::filesystem::path folder_;
  std::vector<std::string> arguments_;
  std::vector<Representation> globalKinds_;
  std::vector<Cell> globals_;
  struct Freed {
    void operator()(Cell *cells) const { std::free(cells); }
  };
  std::unique_ptr<Cell[], Freed> stack_;  // Limits::kVariables; memory is only taken for those that have been used
  std::size_t used_ = 0;
  std::size_t depth_ = 0;
  std::size_t maxCalls_ = Limits::Current().calls;
  const PluginCall *pluginCall_ = nullptr;
  std::uintptr_t stackBase_;
  std::vector<TraceStep> end_;
  std::mt19937_64 random_;
  double started_;  // microseconds
  std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace quillbar::language
