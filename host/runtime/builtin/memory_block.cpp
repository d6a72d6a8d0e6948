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
#include "platform/fuzzed.h"

namespace quillbar::host {
namespace {

using Self = Instance<"MemoryBlock">;
constexpr bool kNativeIsLittle = std::endian::native == std::endian::little;

struct MemoryBlockData {
  std::vector<char> bytes;
  bool littleEndian = kNativeIsLittle;
};

MemoryBlockData &Of(Object self) { return NativeClass<MemoryBlockData>::Of(self); }

std::size_t CheckedSize(Integer size) {
  if (size < 0) throw HostError(ErrorKind::kOutOfBounds, fmt::format("a MemoryBlock can't have the size {}", size));
  if (IsFuzzed() && size > 1 << 20) throw std::bad_alloc();
  return static_cast<std::size_t>(size);
}

/// The address of `width` bytes at `offset`. Throws HostError (kOutOfBounds) unless all of them are inside the block.
char *AddressOf(Self *self, Integer offset, std::size_t width) {
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
Number Swapped(Self *self, Number number) {
  if (Of(self).littleEndian == kNativeIsLittle) return number;
  auto bytes = std::bit_cast<std::array<char, sizeof(Number)>>(number);
  std::ranges::reverse(bytes);
  return std::bit_cast<Number>(bytes);
}

template <class Number>
Number Read(Self *self, Integer offset) {
  Number number;
  std::memcpy(&number, AddressOf(self, offset, sizeof number), sizeof number);
  return Swapped(self, number);
}

template <class Number>
void Write(Self *self, Integer offset, Number number) {
  number = Swapped(self, number);
  std::memcpy(AddressOf(self, offset, sizeof number), &number, sizeof number);
}

Boolean ReadBoolean(Self *self, Integer offset) { return Read<char>(self, offset) != 0 ? 1 : 0; }

void Construct(Self *self, Integer byteCount) { Of(self).bytes.assign(CheckedSize(byteCount), 0); }

void *AddressOfBytes(Self *self) { return Of(self).bytes.data(); }

String AllBytes(Self *self) {
  const std::vector<char> &bytes = Of(self).bytes;
  return native::Give(StringHandle::FromBytes({bytes.data(), bytes.size()}, TextEncoding::kRawBytes));
}

Integer Size(Self *self) { return static_cast<Integer>(Of(self).bytes.size()); }
void SetSize(Self *self, std::intptr_t, Integer size) { Of(self).bytes.resize(CheckedSize(size)); }

Boolean LittleEndian(Self *self) { return Of(self).littleEndian ? 1 : 0; }
void SetLittleEndian(Self *self, std::intptr_t, Boolean value) { Of(self).littleEndian = value != 0; }

String StringValue(Self *self, Integer offset, Integer length) {
  const std::size_t size = CheckedSize(length);
  return native::Give(StringHandle::FromBytes({AddressOf(self, offset, size), size}, TextEncoding::kRawBytes));
}

/// Text shorter than `length` is padded with zero bytes, longer text is cut.
void SetStringValue(Self *self, Integer offset, Integer length, String value) {
  const std::size_t size = CheckedSize(length);
  char *target = AddressOf(self, offset, size);
  const std::string_view bytes = StringHandle(value).Bytes().substr(0, size);
  std::memset(target, 0, size);
  std::ranges::copy(bytes, target);
}

using MemoryBlockMembers = Members<
    Methods<
        native::Method<"Constructor(bytes as Integer)", Construct>,
        native::Method<"Operator_Convert() As Ptr", AddressOfBytes>,
        native::Method<"Operator_Convert() As String", AllBytes>,
        native::AssignableMethod<"Byte(offset as Integer) as UInt8", Read<std::uint8_t>, Write<std::uint8_t>>,
        native::AssignableMethod<"Int8Value(offset as Integer) as Int8", Read<std::int8_t>, Write<std::int8_t>>,
        native::AssignableMethod<"Int16Value(offset as Integer) as Int16", Read<std::int16_t>, Write<std::int16_t>>,
        native::AssignableMethod<"Int32Value(offset as Integer) as Int32", Read<std::int32_t>, Write<std::int32_t>>,
        native::AssignableMethod<"Int64Value(offset as Integer) as Int64", Read<std::int64_t>, Write<std::int64_t>>,
        native::AssignableMethod<"UInt8Value(offset as Integer) as UInt8", Read<std::uint8_t>, Write<std::uint8_t>>,
        native::AssignableMethod<"UInt16Value(offset as Integer) as UInt16", Read<std::uint16_t>, Write<std::uint16_t>>,
        native::AssignableMethod<"UInt32Value(offset as Integer) as UInt32", Read<std::uint32_t>, Write<std::uint32_t>>,
        native::AssignableMethod<"UInt64Value(offset as Integer) as UInt64", Read<std::uint64_t>, Write<std::uint64_t>>,
        native::AssignableMethod<"SingleValue(offset as Integer) as Single", Read<float>, Write<float>>,
        native::AssignableMethod<"DoubleValue(offset as Integer) as Double", Read<double>, Write<double>>,
        native::AssignableMethod<"BooleanValue(offset as Integer) as Boolean", ReadBoolean, Write<Boolean>>,
        native::AssignableMethod<"StringValue(offset as Integer, length as Integer) as String", StringValue,
                                 SetStringValue>>,
    Properties<native::Property<"Size", "Integer", Size, SetSize>,
               native::Property<"LittleEndian", "Boolean", LittleEndian, SetLittleEndian>>>;

}  // namespace

ClassRecord &MemoryBlockRecord() { return NativeClass<MemoryBlockData>::Record<MemoryBlockMembers>("MemoryBlock"); }

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
