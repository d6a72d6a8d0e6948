// SPDX-License-Identifier: MIT
// TextInputStream and TextOutputStream: files of text, read and written as UTF-8.

#include <memory>

#include "host/language/library/classes/file_stream.h"
#include "host/language/library/classes/language_classes.h"
#include "host/language/run/exceptions.h"
#include "host/runtime/native_class.h"
#include "host/runtime/text.h"

namespace quillbar::language {
namespace {

using FolderItem = Instance<"FolderItem">;
using InputSelf = Instance<"TextInputStream">;
using OutputSelf = Instance<"TextOutputStream">;
using host::NativeClass;
using host::ObjectHandle;
using host::StringHandle;
namespace native = host::native;
using Mode = FileStream::Mode;

struct InputData {
  FileStream file;
};

struct OutputData {
  FileStream file;
};

FileStream &Input(Object self) { return NativeClass<InputData>::Of(self).file; }
FileStream &Output(Object self) { return NativeClass<OutputData>::Of(self).file; }

InputSelf *OpenInput(FolderItem *folderItem) {
  const ObjectHandle stream = host::Host::Current()->Create("TextInputStream");
  Input(stream.Get()).Open(folderItem, Mode::kRead);
  return native::Give<InputSelf>(stream);
}

OutputSelf *OpenOutput(FolderItem *folderItem, Mode mode) {
  const ObjectHandle stream = host::Host::Current()->Create("TextOutputStream");
  Output(stream.Get()).Open(folderItem, mode);
  return native::Give<OutputSelf>(stream);
}

OutputSelf *Create(FolderItem *folderItem) { return OpenOutput(folderItem, Mode::kCreate); }
OutputSelf *Append(FolderItem *folderItem) { return OpenOutput(folderItem, Mode::kAppend); }

String ReadLine(InputSelf *self) { return native::Give(StringHandle::FromUtf8(Input(self).ReadLine())); }
String ReadAll(InputSelf *self) { return native::Give(StringHandle::FromUtf8(Input(self).ReadAll())); }

/// Reads `count` bytes, and the rest of the character in which they end.
String Read(InputSelf *self, Integer count) {
  return native::Give(
      StringHandle::FromUtf8(Input(self).ReadWholeCharacters(count < 0 ? 0 : static_cast<std::size_t>(count))));
}

Boolean EndOfFile(InputSelf *self) { return Input(self).IsAtEnd() ? 1 : 0; }
void CloseInput(InputSelf *self) { Input(self).Close(); }

void Write(OutputSelf *self, String text) {
  Output(self).Write(host::text::Convert(StringHandle(text), TextEncoding::kUtf8).Bytes());
}

void WriteLine(OutputSelf *self, String text) {
  Write(self, text);
  Output(self).Write("\n");
}

void WriteEmptyLine(OutputSelf *self) { Output(self).Write("\n"); }
void Flush(OutputSelf *self) { Output(self).Flush(); }
void CloseOutput(OutputSelf *self) { Output(self).Close(); }

using TextInputStreamMembers =
    Members<Methods<native::Method<"ReadLine() as String", ReadLine>, native::Method<"ReadAll() as String", ReadAll>,
                    native::Method<"Read(count as Integer) as String", Read>, native::Method<"Close()", CloseInput>>,
            Properties<native::ReadOnlyProperty<"EndOfFile", "Boolean", EndOfFile>,
                       native::ReadOnlyProperty<"EOF", "Boolean", EndOfFile>>,
            Events<>, Enumerations<>,
            SharedMethods<native::SharedMethod<"Open(file as FolderItem) as TextInputStream", OpenInput>>>;

using TextOutputStreamMembers = Members<
    Methods<native::Method<"Write(text as String)", Write>, native::Method<"WriteLine(text as String)", WriteLine>,
            native::Method<"WriteLine()", WriteEmptyLine>, native::Method<"Flush()", Flush>,
            native::Method<"Close()", CloseOutput>>,
    Properties<>, Events<>, Enumerations<>,
    SharedMethods<native::SharedMethod<"Create(file as FolderItem) as TextOutputStream", Create>,
                  native::SharedMethod<"Append(file as FolderItem) as TextOutputStream", Append>,
                  native::SharedMethod<"Open(file as FolderItem) as TextOutputStream", Append>>>;

}  // namespace

ClassRecord &TextInputStreamRecord() {
  return NativeClass<InputData>::Record<TextInputStreamMembers>("TextInputStream");
}

ClassRecord &TextOutputStreamRecord() {
  return NativeClass<OutputData>::Record<TextOutputStreamMembers>("TextOutputStream");
}

}  // namespace quillbar::language
