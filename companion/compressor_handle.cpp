// SPDX-License-Identifier: MIT
#include "companion/compressor_handle.h"

#include "binding/class_data.h"
#include "binding/members.h"
#include "companion/compressor/deflate_stream.h"

// `CompressorHandle`: gives other plugins deflate functions with zlib's interface. Every object carries the same three
// functions; the caller keeps its own stream record.
namespace quillbar::companion {
namespace {

void FillIn(Object instance) {
  auto *data = ClassData<CompressorHandleData>(instance);
  // zlib's stream parameter has a type of its own; as an argument it is an address like any other.
  data->end = [](void *stream) { return EndDeflate(static_cast<z_streamp>(stream)); };
  data->init = [](void *stream, int level, const char *version, int streamSize) {
    return InitDeflate(static_cast<z_streamp>(stream), level, version, streamSize);
  };
  data->deflate = [](void *stream, int flush) { return Deflate(static_cast<z_streamp>(stream), flush); };
}

void Constructor(CompressorHandle *) {}

using Lines = Members<Methods<Method<"Constructor()", Constructor>>>;

}  // namespace

ClassRecord CompressorHandleData::definition =
    DescribeClass<Lines, FillIn>("CompressorHandle", nullptr, sizeof(CompressorHandleData));

}  // namespace quillbar::companion
