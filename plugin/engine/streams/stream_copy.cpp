// SPDX-License-Identifier: MIT
// How the content of one stream is written into another: as it is or deflated, encrypted or not.
#include <hpdf.h>
#include <hpdf_utils.h>

#include <span>

#include "plugin/engine/memory/memory_manager.h"
#include "plugin/engine/streams/deflater.h"

namespace quillbar::engine {

namespace {

// Where the content goes.
struct Sink {
  HPDF_STATUS Write(std::span<HPDF_BYTE> bytes) const {
    const auto size = static_cast<HPDF_UINT>(bytes.size());
    if (encryption != nullptr) HPDF_Encrypt_CryptBuf(encryption, bytes.data(), bytes.data(), size);
    return HPDF_Stream_Write(stream, bytes.data(), size);
  }

  HPDF_Stream stream;
  HPDF_Encrypt encryption;
};

// Reads all of `source` and calls `use` with each block of it; ends with the first failure of either.
template <typename Use>
HPDF_STATUS ForEachBlock(HPDF_Stream source, Use use) {
  HPDF_STATUS status = HPDF_Stream_Seek(source, 0, HPDF_SEEK_SET);
  while (status == HPDF_OK) {
    HPDF_BYTE block[HPDF_STREAM_BUF_SIZ];
    HPDF_UINT size = sizeof block;
    status = HPDF_Stream_Read(source, block, &size);
    if (status != HPDF_OK && status != HPDF_STREAM_EOF) return status;
    if (size == 0) continue;
    if (const HPDF_STATUS failure = use(std::span(block, size)); failure != HPDF_OK) return failure;
  }
  return status == HPDF_STREAM_EOF ? HPDF_OK : status;
}

// Deflates `source` into `sink`. Failures of the compressor and of writing are HPDF_ZLIB_ERROR with their number as
// detail. An empty stream is deflated as well: readers want the end of the compressed data.
class DeflatingCopy {
 public:
  DeflatingCopy(HPDF_Stream source, const Sink &sink)
      : source_(source), sink_(sink), deflater_(CompressorMemoryOf(source->mmgr)) {}

  HPDF_STATUS Run() {
    if (const int result = deflater_.Begin(); result != Deflater::kOk) return Fail(result);
    const HPDF_STATUS status = ForEachBlock(source_, [this](std::span<HPDF_BYTE> block) { return Deflate(block); });
    return status == HPDF_OK ? Finish() : status;
  }

 private:
  HPDF_STATUS Deflate(std::span<HPDF_BYTE> block) {
    deflater_.SetInput(block);
    while (deflater_.HasInput()) {
      const int result = deflater_.Step(false);
      if (result != Deflater::kOk && result != Deflater::kEnd) return Fail(result);
      if (!deflater_.IsOutputFull()) continue;
      if (const HPDF_STATUS status = WriteOutput(); status != HPDF_OK) return status;
    }
    return HPDF_OK;
  }

  HPDF_STATUS Finish() {
    for (;;) {
      const int result = deflater_.Step(true);
      if (result != Deflater::kOk && result != Deflater::kEnd) return Fail(result);
      const HPDF_STATUS status = WriteOutput();
      if (status != HPDF_OK || result == Deflater::kEnd) return status;
    }
  }

  HPDF_STATUS WriteOutput() {
    const std::span<HPDF_BYTE> output = deflater_.TakeOutput();
    const HPDF_STATUS status = output.empty() ? HPDF_OK : sink_.Write(output);
    return status == HPDF_OK ? status : HPDF_SetError(source_->error, HPDF_ZLIB_ERROR, status);
  }

  HPDF_STATUS Fail(int result) {
    return HPDF_SetError(source_->error, HPDF_ZLIB_ERROR, static_cast<HPDF_STATUS>(result));
  }

  HPDF_Stream source_;
  Sink sink_;
  Deflater deflater_;
};

}  // namespace

}  // namespace quillbar::engine

/// Writes all of `source`, deflated if `filter` says so, and encrypted unless `encryption` is null.
extern "C" HPDF_STATUS HPDF_Stream_WriteToStream(HPDF_Stream source, HPDF_Stream destination, HPDF_UINT filter,
                                                 HPDF_Encrypt encryption) {
  using namespace quillbar::engine;
  if (destination == nullptr || destination->write_fn == nullptr) {
    return HPDF_SetError(source->error, HPDF_INVALID_OBJECT, 0);
  }
  if (HPDF_Error_GetCode(source->error) != HPDF_NOERROR || HPDF_Error_GetCode(destination->error) != HPDF_NOERROR) {
    return HPDF_THIS_FUNC_WAS_SKIPPED;
  }
  const Sink sink{destination, encryption};
  if ((filter & HPDF_STREAM_FILTER_FLATE_DECODE) != 0) return DeflatingCopy(source, sink).Run();
  return ForEachBlock(source, [&sink](std::span<HPDF_BYTE> block) { return sink.Write(block); });
}
