// SPDX-License-Identifier: MIT
// The program's standard streams: StdIn, StdOut, StdErr and Input. Their text is UTF-8.

#include <istream>
#include <iterator>
#include <limits>
#include <ostream>
#include <string>

#include "host/language/library/classes/language_classes.h"
#include "host/language/library/library.h"
#include "host/runtime/native_class.h"
#include "host/runtime/text.h"

namespace quillbar::language {
namespace {

using host::NativeClass;
using host::ObjectHandle;
using host::StringHandle;

struct InputData {};
struct OutputData {
  bool isForErrors = false;
};

ObjectHandle Make(Runtime &runtime, const char *className) {
  return runtime.Host().Create(runtime.Host().Class(className), nullptr, {});
}

ObjectHandle StdIn(Runtime &runtime) { return Make(runtime, "StandardInputStream"); }
ObjectHandle StdOut(Runtime &runtime) { return Make(runtime, "StandardOutputStream"); }
ObjectHandle StdErr(Runtime &runtime) {
  ObjectHandle stream = Make(runtime, "StandardOutputStream");
  NativeClass<OutputData>::Of(stream.Get()).isForErrors = true;
  return stream;
}

/// The input, after a prompt that is still to be written.
std::istream &InputOf(Runtime &runtime) {
  runtime.Output().flush();
  return runtime.Input();
}

StringHandle Input(Runtime &runtime) {
  std::string line;
  std::getline(InputOf(runtime), line);
  if (line.ends_with('\r')) line.pop_back();
  return StringHandle::FromUtf8(line);
}

StringHandle ReadLine(Runtime &runtime, const ObjectHandle &) { return Input(runtime); }

StringHandle ReadAll(Runtime &runtime, const ObjectHandle &) {
  std::istream &input = InputOf(runtime);
  std::string text;
  char buffer[1 << 16];
  while (input.read(buffer, sizeof buffer) || input.gcount() > 0) {
    text.append(buffer, static_cast<std::size_t>(input.gcount()));
    RequireStringSize(text.size());
  }
  return StringHandle::FromUtf8(text);
}

StringHandle Read(Runtime &runtime, const ObjectHandle &, std::int64_t count) {
  std::istream &input = InputOf(runtime);
  std::string text;
  const auto continues = [](int next) { return (next & 0xC0) == 0x80; };
  for (int next = input.peek(); next != EOF; next = input.peek()) {
    if (static_cast<std::int64_t>(text.size()) >= count && (text.empty() || !continues(next))) break;
    text += static_cast<char>(input.get());
  }
  return StringHandle::FromUtf8(text);
}

bool EndOfFile(Runtime &runtime, const ObjectHandle &) { return InputOf(runtime).peek() == EOF; }

void Write(Runtime &runtime, const ObjectHandle &stream, const StringHandle &text) {
  std::ostream &output = NativeClass<OutputData>::Of(stream.Get()).isForErrors ? runtime.Errors() : runtime.Output();
  output << host::text::Convert(text, TextEncoding::kUtf8).Bytes();
  if (!output) throw LibraryError{ExceptionKind::kIo, "the output can't be written"};
}

void WriteLine(Runtime &runtime, const ObjectHandle &stream, const StringHandle &text) {
  Write(runtime, stream, host::text::Concatenate(text, StringHandle::FromUtf8("\n")));
}

void Flush(Runtime &runtime, const ObjectHandle &) {
  runtime.Output().flush();
  runtime.Errors().flush();
}

using namespace library;

constexpr LibraryFunction kStreamFunctions[] = {
    kFunction<"StdIn() As StandardInputStream", &StdIn>,
    kFunction<"StdOut() As StandardOutputStream", &StdOut>,
    kFunction<"StdErr() As StandardOutputStream", &StdErr>,
    kFunction<"Input() As String", &Input>,

    kMethod<"StandardInputStream", "ReadLine() As String", &ReadLine>,
    kMethod<"StandardInputStream", "ReadAll() As String", &ReadAll>,
    kMethod<"StandardInputStream", "Read(count As Integer) As String", &Read>,
    kMethod<"StandardInputStream", "EndOfFile() As Boolean", &EndOfFile>,
    kMethod<"StandardInputStream", "IsEndOfFile() As Boolean", &EndOfFile>,
    kMethod<"StandardInputStream", "EOF() As Boolean", &EndOfFile>,

    kMethod<"StandardOutputStream", "Write(text As String)", &Write>,
    kMethod<"StandardOutputStream", "WriteLine(text As String = \"\")", &WriteLine>,
    kMethod<"StandardOutputStream", "Flush()", &Flush>,
};

// Scripts get the streams from the functions.
void ConstructInput(Instance<"StandardInputStream"> *) {}
void ConstructOutput(Instance<"StandardOutputStream"> *) {}

}  // namespace

std::span<const LibraryFunction> StreamFunctions() { return kStreamFunctions; }

ClassRecord &StandardInputStreamRecord() {
  return NativeClass<InputData>::Record<
      Members<Methods<Method<"Constructor()", ConstructInput, kPrivateConstructorFlags>>>>("StandardInputStream");
}

ClassRecord &StandardOutputStreamRecord() {
  return NativeClass<OutputData>::Record<
      Members<Methods<Method<"Constructor()", ConstructOutput, kPrivateConstructorFlags>>>>("StandardOutputStream");
}

}  // namespace quillbar::language
