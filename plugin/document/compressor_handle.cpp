// SPDX-License-Identifier: MIT
#include "plugin/document/compressor_handle.h"

#include "binding/class_reference.h"
#include "plugin/engine/streams/deflate_entries.h"

namespace quillbar {

namespace {

/// The private data of a `CompressorHandle`, which belongs to another plugin.
struct CompressorData {
  void *notRead;
  engine::DeflateEndEntry deflateEnd;
  engine::DeflateInitEntry deflateInit;
  engine::DeflateEntry deflate;
};
static_assert(sizeof(CompressorData) == 4 * sizeof(void *));

}  // namespace

bool TakeCompressor(CompressorHandle *compressor) {
  const ClassRef compressorClass = ClassReference<"CompressorHandle">::Get();
  const auto *data = static_cast<const CompressorData *>(CallHost<service::GetPluginData>(compressor, compressorClass));
  if (data == nullptr) return false;
  engine::deflateEndEntry = data->deflateEnd;
  engine::deflateInitEntry = data->deflateInit;
  engine::deflateEntry = data->deflate;
  return data->deflateEnd != nullptr && data->deflateInit != nullptr && data->deflate != nullptr;
}

void ClearCompressor() {
  ClassReference<"CompressorHandle">::Clear();
  engine::deflateInitEntry = nullptr;
  engine::deflateEntry = nullptr;
  engine::deflateEndEntry = nullptr;
}

}  // namespace quillbar
