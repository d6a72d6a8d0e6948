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

using FolderItem = Instance<"FolderItem">;
using Self = Instance<"BinaryStream">;
using host::NativeClass;
using host::ObjectHandle;
using host::StringHandle;
namespace native = host::native;
using Mode = FileStream::Mode;

struct BinaryData {
  FileStream file;
  bool isLittleEndian = std::endian::native == std::endian::little;
};

BinaryData &Of(Object self) { return NativeClass<BinaryData>::Of(self); }

Self *Make(FolderItem *folderItem, Mode mode) {
  const ObjectHandle stream = host::Host::Current()->Create("BinaryStream");
  Of(stream.Get()).file.Open(folderItem, mode);
  return native::Give<Self>(stream);
}

Self *Open(FolderItem *folderItem, Boolean readWrite) {
  return Make(folderItem, readWrite != 0 ? Mode::kReadWrite : Mode::kRead);
}

Self *Create(FolderItem *folderItem, Boolean overwrite) {
  if (folderItem != nullptr && overwrite == 0) {
    const std::filesystem::path path = host::PathOf(*host::Host::Current(), ObjectHandle(folderItem));
    if (host::platform::KindOf(path) != host::platform::FileKind::kNone) {
      throw LibraryError{ExceptionKind::kIo,
                         "creating \"" + host::platform::Utf8Path(path) + "\" failed: it exists already", EEXIST};
    }
  }
  return Make(folderItem, Mode::kCreate);
}

String Read(Self *self, Integer count) {
  const std::string bytes = Of(self).file.Read(count < 0 ? 0 : static_cast<std::size_t>(count));
  return native::Give(StringHandle::FromBytes(bytes, TextEncoding::kRawBytes));
}

void Write(Self *self, String bytes) { Of(self).file.Write(StringHandle(bytes).Bytes()); }

template <class Number>
void Order(Self *self, Number &number) {
  const bool isNative = Of(self).isLittleEndian == (std::endian::native == std::endian::little);
  if (isNative) return;
  char *const bytes = reinterpret_cast<char *>(&number);
  std::reverse(bytes, bytes + sizeof number);
}

template <class Number>
Number ReadNumber(Self *self) {
  const std::string bytes = Of(self).file.Read(sizeof(Number));
  if (bytes.size() < sizeof(Number))
    throw LibraryError{ExceptionKind::kIo, "reading a number failed: the file has ended"};
  Number number;
  std::memcpy(&number, bytes.data(), sizeof number);
  Order(self, number);
  return number;
}

template <class Number>
void WriteNumber(Self *self, Number number) {
  Order(self, number);
  char bytes[sizeof number];
  std::memcpy(bytes, &number, sizeof number);
  Of(self).file.Write({bytes, sizeof bytes});
}

Boolean EndOfFile(Self *self) { return Of(self).file.IsAtEnd() ? 1 : 0; }
std::uint64_t Length(Self *self) { return Of(self).file.Size(); }
std::uint64_t BytePosition(Self *self) { return Of(self).file.Position(); }
void SetBytePosition(Self *self, std::intptr_t, std::uint64_t position) { Of(self).file.SetPosition(position); }
Boolean LittleEndian(Self *self) { return Of(self).isLittleEndian ? 1 : 0; }
void SetLittleEndian(Self *self, std::intptr_t, Boolean value) { Of(self).isLittleEndian = value != 0; }
void Flush(Self *self) { Of(self).file.Flush(); }
void Close(Self *self) { Of(self).file.Close(); }

using BinaryStreamMembers = Members<
    Methods<native::Method<"Read(count as Integer) as String", Read>, native::Method<"Write(bytes as String)", Write>,
            native::Method<"ReadByte() as UInt8", ReadNumber<std::uint8_t>>,
            native::Method<"ReadInt8() as Int8", ReadNumber<std::int8_t>>,
            native::Method<"ReadInt16() as Int16", ReadNumber<std::int16_t>>,
            native::Method<"ReadInt32() as Int32", ReadNumber<std::int32_t>>,
            native::Method<"ReadInt64() as Int64", ReadNumber<std::int64_t>>,
            native::Method<"ReadUInt8() as UInt8", ReadNumber<std::uint8_t>>,
            native::Method<"ReadUInt16() as UInt16", ReadNumber<std::uint16_t>>,
            native::Method<"ReadUInt32() as UInt32", ReadNumber<std::uint32_t>>,
            native::Method<"ReadUInt64() as UInt64", ReadNumber<std::uint64_t>>,
            native::Method<"ReadSingle() as Single", ReadNumber<float>>,
            native::Method<"ReadDouble() as Double", ReadNumber<double>>,
            native::Method<"WriteByte(value as UInt8)", WriteNumber<std::uint8_t>>,
            native::Method<"WriteInt8(value as Int8)", WriteNumber<std::int8_t>>,
            native::Method<"WriteInt16(value as Int16)", WriteNumber<std::int16_t>>,
            native::Method<"WriteInt32(value as Int32)", WriteNumber<std::int32_t>>,
            native::Method<"WriteInt64(value as Int64)", WriteNumber<std::int64_t>>,
            native::Method<"WriteUInt8(value as UInt8)", WriteNumber<std::uint8_t>>,
            native::Method<"WriteUInt16(value as UInt16)", WriteNumber<std::uint16_t>>,
            native::Method<"WriteUInt32(value as UInt32)", WriteNumber<std::uint32_t>>,
            native::Method<"WriteUInt64(value as UInt64)", WriteNumber<std::uint64_t>>,
            native::Method<"WriteSingle(value as Single)", WriteNumber<float>>,
            native::Method<"WriteDouble(value as Double)", WriteNumber<double>>, native::Method<"Flush()", Flush>,
            native::Method<"Close()", Close>>,
    Properties<native::ReadOnlyProperty<"EndOfFile", "Boolean", EndOfFile>,
               native::ReadOnlyProperty<"EOF", "Boolean", EndOfFile>,
               native::ReadOnlyProperty<"Length", "UInt64", Length>,
               native::Property<"BytePosition", "UInt64", BytePosition, SetBytePosition>,
               native::Property<"Position", "UInt64", BytePosition, SetBytePosition>,
               native::Property<"LittleEndian", "Boolean", LittleEndian, SetLittleEndian>>,
    Events<>, Enumerations<>,
    SharedMethods<
        native::SharedMethod<"Open(file as FolderItem, readWrite as Boolean = False) as BinaryStream", Open>,
        native::SharedMethod<"Create(file as FolderItem, overwrite as Boolean = False) as BinaryStream", Create>>>;

}  // namespace

ClassRecord &BinaryStreamRecord() { return NativeClass<BinaryData>::Record<BinaryStreamMembers>("BinaryStream"); }

}  // namespace quillbar::language
