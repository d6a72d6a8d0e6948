// SPDX-License-Identifier: MIT
#include "host/language/run/run_script.h"

#include <fmt/format.h>

#include <cerrno>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include "host/language/check/checker.h"
#include "host/language/library/classes/language_classes.h"
#include "host/language/run/limits.h"
#include "host/language/run/runtime.h"
#include "host/language/syntax/diagnostics.h"
#include "host/language/syntax/parser.h"
#include "host/language/syntax/source_text.h"
#include "host/language/tree/objects.h"
#include "host/language/tree/program.h"
#include "host/runtime/interruption.h"
#include "host/runtime/platform/file_system.h"
#include "platform/openable_path.h"

namespace quillbar::language {
namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kTimeIsUp = 124;  // as of the command `timeout`
constexpr int kMemoryIsUp = 125;
constexpr int kInterrupted = 128;  // and the number of the signal, as in shells

/// How many of the innermost and outermost calls of a long stack trace are shown; the others are counted.
constexpr std::size_t kInnermostShown = 12;
constexpr std::size_t kOutermostShown = 4;

std::optional<std::string> ReadFile(const std::filesystem::path &path, std::ostream &errors) {
  const auto fail = [&](int errorNumber) {
    errors << fmt::format(
        "{}: error: the script can't be read: {}\n", host::platform::Utf8Path(path),
        errorNumber == 0 ? "the system gives no cause" : std::generic_category().message(errorNumber));
    return std::nullopt;
  };
  if (host::platform::KindOf(path) == host::platform::FileKind::kFolder) return fail(EISDIR);
  errno = 0;
  std::ifstream file(quillbar::platform::OpenablePath(path), std::ios::binary);
  if (!file) return fail(errno);
  std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (file.bad()) return fail(errno);
  return text;
}

/// Adds the files of a script's classes and modules; false, after a message, when one can't be read.
bool AddFiles(SourceText &source, std::span<const std::filesystem::path> files, std::ostream &errors) {
  for (const std::filesystem::path &file : files) {
    std::optional<std::string> text = ReadFile(file, errors);
    if (!text) return false;
    if (source.Text().size() + text->size() > SourceText::kMaxAllBytes) {
      errors << fmt::format("{}: error: with this file the script has more than {} bytes\n",
                            host::platform::Utf8Path(file), SourceText::kMaxAllBytes);
      return false;
    }
    source.Add(host::platform::Utf8Path(file), std::move(*text));
  }
  return true;
}

/// A checked program; nothing after errors, which have been shown.
std::unique_ptr<Program> Prepare(host::Host &host, const SourceText &source, std::ostream &errors) {
  RegisterLanguageClasses(host);
  Diagnostics diagnostics;
  std::unique_ptr<Program> program;
  const syntax::Script script = Parse(source, diagnostics);
  if (diagnostics.Empty()) program = Check(source, script, host, diagnostics);
  if (diagnostics.Empty()) return program;
  for (const Diagnostic &diagnostic : diagnostics.List()) errors << Format(source, diagnostic, ColorsOf(errors));
  if (diagnostics.List().size() > 1) {
    errors << fmt::format("{} errors{}\n", diagnostics.List().size(),
                          diagnostics.IsCut() ? ", and more that are not shown" : "");
  }
  return nullptr;
}

std::string DescribeStep(const SourceText &source, const TraceStep &step) {
  const Position at = source.Locate(step.span.begin);
  const SourceText::File &file = source.FileAt(step.span.begin);
  const std::string what =
      step.procedure->isScript
          ? step.procedure->name
          : fmt::format("{} {}", step.procedure->result.IsNone() ? "Sub" : "Function", step.procedure->name);
  const bool isFirst = &file == &source.Files().front();
  return fmt::format("  in {}, line {}, column {}{}\n", what, at.line, at.column, isFirst ? "" : " of " + file.name);
}

void ShowException(const SourceText &source, const Raised &raised, std::ostream &errors) {
  errors << Format(source, raised.trace.front().span, raised.className,
                   raised.message.empty() ? "(without a message)" : raised.message, ColorsOf(errors));
  const std::size_t count = raised.trace.size();
  const bool isLong = count > kInnermostShown + kOutermostShown + 1;
  for (std::size_t i = 0; i < count; ++i) {
    if (isLong && i == kInnermostShown) {
      errors << fmt::format("  … {} more calls …\n", count - kInnermostShown - kOutermostShown);
      i = count - kOutermostShown;
    }
    errors << DescribeStep(source, raised.trace[i]);
  }
}

/// The exit status after an interruption. Of one by a limit it shows where the script was, innermost call first.
int EndInterrupted(const SourceText &source, const std::vector<TraceStep> &where, std::ostream &errors) {
  const Limits &limits = Limits::Current();
  const int cause = host::Interruption::Signal();
  const bool isTime = cause == host::Interruption::kTimeLimit;
  if (!isTime && cause != host::Interruption::kMemoryLimit) return kInterrupted + cause;
  Raised end;
  end.className = "error";
  end.message = isTime ? fmt::format("the script has run for {} s, the limit of --max-time", limits.seconds)
                       : fmt::format("the script needs more memory than {}, the limit of --max-memory",
                                     SizeText(limits.memoryBytes));
  end.trace = where;
  if (where.empty()) {
    errors << fmt::format("{}: {}: {}\n", source.Files().front().name, end.className, end.message);
  } else {
    ShowException(source, end, errors);
  }
  return isTime ? kTimeIsUp : kMemoryIsUp;
}

void SetArguments(Runtime &runtime, const Program &program, std::span<const std::string> arguments) {
  host::ArrayHandle list = host::ArrayHandle::Create(host::TypeKind::kString);
  for (const std::string &argument : arguments) list.Append(host::StringHandle::FromUtf8(argument));
  runtime.Globals()[program.argumentsSlot].SetArray(std::move(list));
}

/// Runs the text of a script; `folder` is where its file is, empty for none.
int RunSource(host::Host &host, const SourceText &source, std::filesystem::path folder,
              std::span<const std::string> arguments, const Streams &streams) {
  std::ostream &output = streams.output;
  const std::unique_ptr<Program> program = Prepare(host, source, streams.errors);
  if (!program) return kFailure;
  Runtime runtime(host, streams, std::move(folder), {arguments.begin(), arguments.end()}, program->globals);
  const ObjectLives lives(runtime, *program);
  SetArguments(runtime, *program, arguments);
  const auto run = [&](const Procedure &procedure) {
    runtime.Call(
        procedure, nullptr, {}, [](Cell *) {}, [](Cell *) {});
  };
  try {
    run(program->initializer);
    run(program->main);
  } catch (const Raised &raised) {
    output.flush();
    // Work that is cut short, and memory that is refused, end as errors.
    if (host::Interruption::IsRequested()) return EndInterrupted(source, raised.trace, streams.errors);
    ShowException(source, raised, streams.errors);
    return kFailure;
  } catch (const QuitRequest &request) {
    output.flush();
    return request.status;
  } catch (const host::Interrupted &) {
    output.flush();
    return EndInterrupted(source, runtime.End(), streams.errors);
  }
  output.flush();
  return kSuccess;
}

}  // namespace

int RunText(host::Host &host, std::string name, std::string text, std::span<const std::string> arguments,
            std::ostream &output, std::ostream &errors, std::istream &input,
            std::span<const std::filesystem::path> others) {
  SourceText source(std::move(name), std::move(text));
  if (!AddFiles(source, others, errors)) return kFailure;
  return RunSource(host, source, {}, arguments, {input, output, errors});
}

int RunScript(host::Host &host, const std::filesystem::path &script, std::span<const std::string> arguments,
              std::ostream &output, std::ostream &errors, std::istream &input,
              std::span<const std::filesystem::path> others) {
  std::optional<std::string> text = ReadFile(script, errors);
  if (!text) return kFailure;
  SourceText source(host::platform::Utf8Path(script), std::move(*text));
  if (!AddFiles(source, others, errors)) return kFailure;
  return RunSource(host, source, host::platform::NormalPath(script).parent_path(), arguments, {input, output, errors});
}

int CheckScript(host::Host &host, const std::filesystem::path &script, std::ostream &errors,
                std::span<const std::filesystem::path> others) {
  std::optional<std::string> text = ReadFile(script, errors);
  if (!text) return kFailure;
  return CheckText(host, host::platform::Utf8Path(script), std::move(*text), errors, others);
}

int CheckText(host::Host &host, std::string name, std::string text, std::ostream &errors,
              std::span<const std::filesystem::path> others) {
  SourceText source(std::move(name), std::move(text));
  if (!AddFiles(source, others, errors)) return kFailure;
  return Prepare(host, source, errors) ? kSuccess : kFailure;
}

}  // namespace quillbar::language
