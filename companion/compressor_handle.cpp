// SPDX-License-Identifier: MIT
#include "companion/compressor_handle.h"

#include <zlib.h>

#include "binding/class_data.h"
#include "binding/members.h"

// `CompressorHandle`: gives other plugins the deflate functions of zlib. Every object carries the same three
// functions; the caller keeps its own stream record.
namespace quillbar::companion {
namespace {

void FillIn(Object instance) {
  auto *data = ClassData<CompressorHandleData>(instance);
  // zlib's stream parameter has a type of its own; as an argument it is an address like any other.
  data->end = [](void *stream) { return deflateEnd(static_cast<z_streamp>(stream)); };
  data->init = [](void *stream, int level, const char *version, int streamSize) {
    return deflateInit_(static_cast<z_streamp>(stream), level, version, streamSize);
  };
  data->deflate = [](void *stream, int flush) { return deflate(static_cast<z_streamp>(stream), flush); };
}

void Constructor(CompressorHandle *) {}

using Lines = Members<Methods<Method<"Constructor()", Constructor>>>;

}  // namespace

ClassRecord CompressorHandleData::definition =
    DescribeClass<Lines, FillIn>("CompressorHandle", nullptr, sizeof(CompressorHandleData));

}  // namespace quillbar::companion
