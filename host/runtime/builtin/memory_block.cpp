// SPDX-License-Identifier: MIT
#include "host/runtime/builtin/memory_block.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>
#include <vector>

#include "host/runtime/builtin/builtin_classes.h"
#include "host/runtime/host_error.h"
#include "host/runtime/native_class.h"

namespace quillbar::host {
namespace {

constexpr bool kNativeIsLittle = std::endian::native == std::endian::little;

struct MemoryBlock {
  std::vector<char> bytes;
  bool littleEndian = kNativeIsLittle;
};

MemoryBlock &Of(Object self) { return NativeClass<MemoryBlock>::Of(self); }

std::size_t CheckedSize(Integer size) {
  if (size < 0) throw HostError(ErrorKind::kOutOfBounds, fmt::format("a MemoryBlock can't have the size {}", size));
#ifdef QUILLBAR_FUZZ
  if (size > 1 << 20) throw std::bad_alloc();
#endif
  return static_cast<std::size_t>(size);
}

/// The address of `width` bytes at `offset`. Throws HostError (kOutOfBounds) unless all of them are inside the block.
char *AddressOf(Object self, Integer offset, std::size_t width) {
  std::vector<char> &bytes = Of(self).bytes;
  const bool inside = offset >= 0 && static_cast<std::size_t>(offset) <= bytes.size() &&
                      width <= bytes.size() - static_cast<std::size_t>(offset);
  if (!inside) {
    throw HostError(ErrorKind::kOutOfBounds, fmt::format("{} bytes at offset {} are outside a MemoryBlock of {} bytes",
                                                         width, offset, bytes.size()));
  }
  return bytes.data() + offset;
}

template <class Number>
Number Swapped(Object self, Number number) {
  if (Of(self).littleEndian == kNativeIsLittle) return number;
  auto bytes = std::bit_cast<std::array<char, sizeof(Number)>>(number);
  std::ranges::reverse(bytes);
  return std::bit_cast<Number>(bytes);
}

template <class Number>
Number Read(Object self, Integer offset) {
  Number number;
  std::memcpy(&number, AddressOf(self, offset, sizeof number), sizeof number);
  return Swapped(self, number);
}

template <class Number>
void Write(Object self, Integer offset, Number number) {
  number = Swapped(self, number);
  std::memcpy(AddressOf(self, offset, sizeof number), &number, sizeof number);
}

Boolean ReadBoolean(Object self, Integer offset) { return Read<char>(self, offset) != 0 ? 1 : 0; }

void Construct(Object self, Integer byteCount) { Of(self).bytes.assign(CheckedSize(byteCount), 0); }

void *AddressOfBytes(Object self) { return Of(self).bytes.data(); }

String AllBytes(Object self) {
  const std::vector<char> &bytes = Of(self).bytes;
  return native::Give(StringHandle::FromBytes({bytes.data(), bytes.size()}, TextEncoding::kRawBytes));
}

Integer Size(Object self) { return static_cast<Integer>(Of(self).bytes.size()); }
void SetSize(Object self, std::intptr_t, Integer size) { Of(self).bytes.resize(CheckedSize(size)); }

Boolean LittleEndian(Object self) { return Of(self).littleEndian ? 1 : 0; }
void SetLittleEndian(Object self, std::intptr_t, Boolean value) { Of(self).littleEndian = value != 0; }

String StringValue(Object self, Integer offset, Integer length) {
  const std::size_t size = CheckedSize(length);
  return native::Give(StringHandle::FromBytes({AddressOf(self, offset, size), size}, TextEncoding::kRawBytes));
}

/// Text shorter than `length` is padded with zero bytes, longer text is cut.
void SetStringValue(Object self, Integer offset, Integer length, String value) {
  const std::size_t size = CheckedSize(length);
  char *target = AddressOf(self, offset, size);
  const std::string_view bytes = StringHandle(value).Bytes().substr(0, size);
  std::memset(target, 0, size);
  std::ranges::copy(bytes, target);
}

}  // namespace

ClassRecord &MemoryBlockRecord() {
  static NativeClass<MemoryBlock> memoryBlock("MemoryBlock", [](NativeClass<MemoryBlock> &members) {
    members.Method<&Construct>("Constructor(bytes as Integer)")
        .Method<&AddressOfBytes>("Operator_Convert() As Ptr")
        .Method<&AllBytes>("Operator_Convert() As String")
        .AssignableMethod<&Read<std::uint8_t>, &Write<std::uint8_t>>("Byte(offset as Integer) as UInt8")
        .AssignableMethod<&Read<std::int8_t>, &Write<std::int8_t>>("Int8Value(offset as Integer) as Int8")
        .AssignableMethod<&Read<std::int16_t>, &Write<std::int16_t>>("Int16Value(offset as Integer) as Int16")
        .AssignableMethod<&Read<std::int32_t>, &Write<std::int32_t>>("Int32Value(offset as Integer) as Int32")
        .AssignableMethod<&Read<std::int64_t>, &Write<std::int64_t>>("Int64Value(offset as Integer) as Int64")
        .AssignableMethod<&Read<std::uint8_t>, &Write<std::uint8_t>>("UInt8Value(offset as Integer) as UInt8")
        .AssignableMethod<&Read<std::uint16_t>, &Write<std::uint16_t>>("UInt16Value(offset as Integer) as UInt16")
        .AssignableMethod<&Read<std::uint32_t>, &Write<std::uint32_t>>("UInt32Value(offset as Integer) as UInt32")
        .AssignableMethod<&Read<std::uint64_t>, &Write<std::uint64_t>>("UInt64Value(offset as Integer) as UInt64")
        .AssignableMethod<&Read<float>, &Write<float>>("SingleValue(offset as Integer) as Single")
        .AssignableMethod<&Read<double>, &Write<double>>("DoubleValue(offset as Integer) as Double")
        .AssignableMethod<&ReadBoolean, &Write<Boolean>>("BooleanValue(offset as Integer) as Boolean")
        .AssignableMethod<&StringValue, &SetStringValue>("StringValue(offset as Integer, length as Integer) as String")
        .Property<&Size, &SetSize>("Size", "Integer")
        .Property<&LittleEndian, &SetLittleEndian>("LittleEndian", "Boolean");
  });
  return memoryBlock.record();
}

ObjectHandle MakeMemoryBlock(Host &host, std::string_view bytes) {
  ObjectHandle block = host.Create("MemoryBlock", {static_cast<Integer>(bytes.size())});
  std::ranges::copy(bytes, Of(block.Get()).bytes.begin());
  return block;
}

std::string_view BytesOf(Host &host, const ObjectHandle &memoryBlock) {
  if (memoryBlock.IsNil() || !memoryBlock.Class().IsSubclassOf(host.Class("MemoryBlock"))) {
    throw HostError(ErrorKind::kTypeMismatch, "a MemoryBlock is needed");
  }
  const std::vector<char> &bytes = Of(memoryBlock.Get()).bytes;
  return {bytes.data(), bytes.size()};
}

}  // namespace quillbar::host
