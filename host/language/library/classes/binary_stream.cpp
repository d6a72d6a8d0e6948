// SPDX-License-Identifier: MIT
// BinaryStream: files of bytes and numbers.

#include <algorithm>
#include <bit>
#include <cstring>

#include "host/language/library/classes/file_stream.h"
#include "host/language/library/classes/language_classes.h"
#include "host/language/run/exceptions.h"
#include "host/runtime/builtin/builtin_classes.h"
#include "host/runtime/native_class.h"
#include "host/runtime/platform/file_system.h"

namespace quillbar::language {
namespace {

using host::NativeClass;
using host::ObjectHandle;
using host::StringHandle;
using host::native::Give;
using Mode = FileStream::Mode;

struct BinaryData {
  FileStream file;
  bool isLittleEndian = std::endian::native == std::endian::little;
};

BinaryData &Of(Object self) { return NativeClass<BinaryData>::Of(self); }

Object Make(Object folderItem, Mode mode) {
  const ObjectHandle stream = host::Host::Current()->Create("BinaryStream");
  Of(stream.Get()).file.Open(folderItem, mode);
  return Give(stream);
}

Object Open(Object folderItem, Boolean readWrite) {
  return Make(folderItem, readWrite != 0 ? Mode::kReadWrite : Mode::kRead);
}

Object Create(Object folderItem, Boolean overwrite) {
  if (folderItem != nullptr && overwrite == 0) {
    const std::filesystem::path path = host::PathOf(*host::Host::Current(), ObjectHandle(folderItem));
    if (host::platform::KindOf(path) != host::platform::FileKind::kNone) {
      throw LibraryError{ExceptionKind::kIo,
                         "creating \"" + host::platform::Utf8Path(path) + "\" failed: it exists already", EEXIST};
    }
  }
  return Make(folderItem, Mode::kCreate);
}

String Read(Object self, Integer count) {
  const std::string bytes = Of(self).file.Read(count < 0 ? 0 : static_cast<std::size_t>(count));
  return Give(StringHandle::FromBytes(bytes, TextEncoding::kRawBytes));
}

void Write(Object self, String bytes) { Of(self).file.Write(StringHandle(bytes).Bytes()); }

template <class Number>
void Order(Object self, Number &number) {
  const bool isNative = Of(self).isLittleEndian == (std::endian::native == std::endian::little);
  if (isNative) return;
  char *const bytes = reinterpret_cast<char *>(&number);
  std::reverse(bytes, bytes + sizeof number);
}

template <class Number>
Number ReadNumber(Object self) {
  const std::string bytes = Of(self).file.Read(sizeof(Number));
  if (bytes.size() < sizeof(Number))
    throw LibraryError{ExceptionKind::kIo, "reading a number failed: the file has ended"};
  Number number;
  std::memcpy(&number, bytes.data(), sizeof number);
  Order(self, number);
  return number;
}

template <class Number>
void WriteNumber(Object self, Number number) {
  Order(self, number);
  char bytes[sizeof number];
  std::memcpy(bytes, &number, sizeof number);
  Of(self).file.Write({bytes, sizeof bytes});
}

Boolean EndOfFile(Object self) { return Of(self).file.IsAtEnd() ? 1 : 0; }
std::uint64_t Length(Object self) { return Of(self).file.Size(); }
std::uint64_t BytePosition(Object self) { return Of(self).file.Position(); }
void SetBytePosition(Object self, std::intptr_t, std::uint64_t position) { Of(self).file.SetPosition(position); }
Boolean LittleEndian(Object self) { return Of(self).isLittleEndian ? 1 : 0; }
void SetLittleEndian(Object self, std::intptr_t, Boolean value) { Of(self).isLittleEndian = value != 0; }
void Flush(Object self) { Of(self).file.Flush(); }
void Close(Object self) { Of(self).file.Close(); }

}  // namespace

ClassRecord &BinaryStreamRecord() {
  static NativeClass<BinaryData> stream("BinaryStream", [](NativeClass<BinaryData> &members) {
    members.SharedMethod<&Open>("Open(file as FolderItem, readWrite as Boolean = False) as BinaryStream")
        .SharedMethod<&Create>("Create(file as FolderItem, overwrite as Boolean = False) as BinaryStream")
        .Method<&Read>("Read(count as Integer) as String")
        .Method<&Write>("Write(bytes as String)")
        .Method<&ReadNumber<std::uint8_t>>("ReadByte() as UInt8")
        .Method<&ReadNumber<std::int8_t>>("ReadInt8() as Int8")
        .Method<&ReadNumber<std::int16_t>>("ReadInt16() as Int16")
        .Method<&ReadNumber<std::int32_t>>("ReadInt32() as Int32")
        .Method<&ReadNumber<std::int64_t>>("ReadInt64() as Int64")
        .Method<&ReadNumber<std::uint8_t>>("ReadUInt8() as UInt8")
        .Method<&ReadNumber<std::uint16_t>>("ReadUInt16() as UInt16")
        .Method<&ReadNumber<std::uint32_t>>("ReadUInt32() as UInt32")
        .Method<&ReadNumber<std::uint64_t>>("ReadUInt64() as UInt64")
        .Method<&ReadNumber<float>>("ReadSingle() as Single")
        .Method<&ReadNumber<double>>("ReadDouble() as Double")
        .Method<&WriteNumber<std::uint8_t>>("WriteByte(value as UInt8)")
        .Method<&WriteNumber<std::int8_t>>("WriteInt8(value as Int8)")
        .Method<&WriteNumber<std::int16_t>>("WriteInt16(value as Int16)")
        .Method<&WriteNumber<std::int32_t>>("WriteInt32(value as Int32)")
        .Method<&WriteNumber<std::int64_t>>("WriteInt64(value as Int64)")
        .Method<&WriteNumber<std::uint8_t>>("WriteUInt8(value as UInt8)")
        .Method<&WriteNumber<std::uint16_t>>("WriteUInt16(value as UInt16)")
        .Method<&WriteNumber<std::uint32_t>>("WriteUInt32(value as UInt32)")
        .Method<&WriteNumber<std::uint64_t>>("WriteUInt64(value as UInt64)")
        .Method<&WriteNumber<float>>("WriteSingle(value as Single)")
        .Method<&WriteNumber<double>>("WriteDouble(value as Double)")
        .Method<&Flush>("Flush()")
        .Method<&Close>("Close()")
        .Property<&EndOfFile>("EndOfFile", "Boolean")
        .Property<&EndOfFile>("EOF", "Boolean")
        .Property<&Length>("Length", "UInt64")
        .Property<&BytePosition, &SetBytePosition>("BytePosition", "UInt64")
        .Property<&BytePosition, &SetBytePosition>("Position", "UInt64")
        .Property<&LittleEndian, &SetLittleEndian>("LittleEndian", "Boolean");
  });
  return stream.record();
}

}  // namespace quillbar::language
