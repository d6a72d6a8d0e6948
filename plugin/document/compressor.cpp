// SPDX-License-Identifier: MIT
#include "plugin/document/compressor.h"

#include "binding/class_reference.h"
#include "plugin/pdflib-changes/deflate_entries.h"

namespace quillbar {

namespace {

/// The private data of a `CompressorHandle`, which belongs to another plugin.
struct CompressorData {
  void *notRead;
  pdflib::DeflateEndEntry deflateEnd;
  pdflib::DeflateInitEntry deflateInit;
  pdflib::DeflateEntry deflate;
};
static_assert(sizeof(CompressorData) == 4 * sizeof(void *));

}  // namespace

bool TakeCompressor(CompressorHandle *compressor) {
  const ClassRef compressorClass = ClassReference<"CompressorHandle">::Get();
  const auto *data = static_cast<const CompressorData *>(CallHost<service::GetPluginData>(compressor, compressorClass));
  if (data == nullptr) return false;
  pdflib::deflateEndEntry = data->deflateEnd;
  pdflib::deflateInitEntry = data->deflateInit;
  pdflib::deflateEntry = data->deflate;
  return data->deflateEnd != nullptr && data->deflateInit != nullptr && data->deflate != nullptr;
}

void ClearCompressor() {
  ClassReference<"CompressorHandle">::Clear();
  pdflib::deflateInitEntry = nullptr;
  pdflib::deflateEntry = nullptr;
  pdflib::deflateEndEntry = nullptr;
}

}  // namespace quillbar
