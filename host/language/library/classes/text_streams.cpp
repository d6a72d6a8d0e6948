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

using host::NativeClass;
using host::ObjectHandle;
using host::StringHandle;
using host::native::Give;
using Mode = FileStream::Mode;

struct InputData {
  FileStream file;
};

struct OutputData {
  FileStream file;
};

FileStream &Input(Object self) { return NativeClass<InputData>::Of(self).file; }
FileStream &Output(Object self) { return NativeClass<OutputData>::Of(self).file; }

Object OpenInput(Object folderItem) {
  const ObjectHandle stream = host::Host::Current()->Create("TextInputStream");
  Input(stream.Get()).Open(folderItem, Mode::kRead);
  return Give(stream);
}

Object OpenOutput(Object folderItem, Mode mode) {
  const ObjectHandle stream = host::Host::Current()->Create("TextOutputStream");
  Output(stream.Get()).Open(folderItem, mode);
  return Give(stream);
}

Object Create(Object folderItem) { return OpenOutput(folderItem, Mode::kCreate); }
Object Append(Object folderItem) { return OpenOutput(folderItem, Mode::kAppend); }

String ReadLine(Object self) { return Give(StringHandle::FromUtf8(Input(self).ReadLine())); }
String ReadAll(Object self) { return Give(StringHandle::FromUtf8(Input(self).ReadAll())); }

/// Reads `count` bytes, and the rest of the character in which they end.
String Read(Object self, Integer count) {
  return Give(StringHandle::FromUtf8(Input(self).ReadWholeCharacters(count < 0 ? 0 : static_cast<std::size_t>(count))));
}

Boolean EndOfFile(Object self) { return Input(self).IsAtEnd() ? 1 : 0; }
void CloseInput(Object self) { Input(self).Close(); }

void Write(Object self, String text) {
  Output(self).Write(host::text::Convert(StringHandle(text), TextEncoding::kUtf8).Bytes());
}

void WriteLine(Object self, String text) {
  Write(self, text);
  Output(self).Write("\n");
}

void WriteEmptyLine(Object self) { Output(self).Write("\n"); }
void Flush(Object self) { Output(self).Flush(); }
void CloseOutput(Object self) { Output(self).Close(); }

}  // namespace

ClassRecord &TextInputStreamRecord() {
  static NativeClass<InputData> stream("TextInputStream", [](NativeClass<InputData> &members) {
    members.SharedMethod<&OpenInput>("Open(file as FolderItem) as TextInputStream")
        .Method<&ReadLine>("ReadLine() as String")
        .Method<&ReadAll>("ReadAll() as String")
        .Method<&Read>("Read(count as Integer) as String")
        .Method<&CloseInput>("Close()")
        .Property<&EndOfFile>("EndOfFile", "Boolean")
        .Property<&EndOfFile>("EOF", "Boolean");
  });
  return stream.record();
}

ClassRecord &TextOutputStreamRecord() {
  static NativeClass<OutputData> stream("TextOutputStream", [](NativeClass<OutputData> &members) {
    members.SharedMethod<&Create>("Create(file as FolderItem) as TextOutputStream")
        .SharedMethod<&Append>("Append(file as FolderItem) as TextOutputStream")
        .SharedMethod<&Append>("Open(file as FolderItem) as TextOutputStream")
        .Method<&Write>("Write(text as String)")
        .Method<&WriteLine>("WriteLine(text as String)")
        .Method<&WriteEmptyLine>("WriteLine()")
        .Method<&Flush>("Flush()")
        .Method<&CloseOutput>("Close()");
  });
  return stream.record();
}

}  // namespace quillbar::language
