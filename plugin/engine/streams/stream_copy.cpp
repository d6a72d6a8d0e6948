// SPDX-License-Identifier: MIT
// How the content of one stream is written into another: as it is or deflated, encrypted or not.
#include <hpdf.h>
#include <hpdf_utils.h>

#include <algorithm>
#include <iterator>
#include <span>

#include "plugin/engine/memory/memory_manager.h"
#include "plugin/engine/streams/deflater.h"
#include "plugin/engine/streams/memory_stream.h"
#include "plugin/engine/streams/write_bytes.h"

namespace quillbar::engine {

namespace {

// Where the content goes.
struct Sink {
  // In pieces, as each is encrypted in memory of its own.
  HPDF_STATUS Write(std::span<const HPDF_BYTE> bytes) const {
    if (encryption == nullptr) return WriteBytes(stream, bytes);
    HPDF_BYTE encrypted[MemoryStream::kPiece];
    HPDF_STATUS status = HPDF_OK;
    while (status == HPDF_OK && !bytes.empty()) {
      const std::span<const HPDF_BYTE> piece = bytes.first(std::min(bytes.size(), std::size(encrypted)));
      bytes = bytes.subspan(piece.size());
      HPDF_Encrypt_CryptBuf(encryption, piece.data(), encrypted, static_cast<HPDF_UINT>(piece.size()));
      status = WriteBytes(stream, {encrypted, piece.size()});
    }
    return status;
  }

  HPDF_Stream stream;
  HPDF_Encrypt encryption;
};

// Calls `use` with each block of the source; ends with the first failure.
template <typename Use>
HPDF_STATUS ForEachBlock(const MemoryStream &source, Use use) {
  HPDF_STATUS status = HPDF_OK;
  for (HPDF_UINT position = 0; status == HPDF_OK && position != source.size;) {
    const std::span<const HPDF_BYTE> block = source.ContentFrom(position);
    position += static_cast<HPDF_UINT>(block.size());
    status = use(block);
  }
  return status;
}

// Deflates `source` into `sink`. Failures of the compressor and of writing are HPDF_ZLIB_ERROR with their number as
// detail. An empty stream is deflated as well: readers want the end of the compressed data.
class DeflatingCopy {
 public:
  DeflatingCopy(const MemoryStream &source, const Sink &sink)
      : source_(source), sink_(sink), deflater_(CompressorMemoryOf(source.mmgr)) {}

  HPDF_STATUS Run() {
    if (const int result = deflater_.Begin(); result != Deflater::kOk) return Fail(result);
    const HPDF_STATUS status =
        ForEachBlock(source_, [this](std::span<const HPDF_BYTE> block) { return Deflate(block); });
    return status == HPDF_OK ? Finish() : status;
  }

 private:
  // In pieces that begin where the stream's pieces do, whatever the size of its blocks.
  HPDF_STATUS Deflate(std::span<const HPDF_BYTE> block) {
    HPDF_STATUS status = HPDF_OK;
    while (status == HPDF_OK && !block.empty()) {
      const std::span<const HPDF_BYTE> piece = block.first(std::min(block.size(), std::size_t{MemoryStream::kPiece}));
      block = block.subspan(piece.size());
      status = DeflatePiece(piece);
    }
    return status;
  }

  HPDF_STATUS DeflatePiece(std::span<const HPDF_BYTE> piece) {
    deflater_.SetInput(piece);
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
    const std::span<const HPDF_BYTE> output = deflater_.TakeOutput();
    const HPDF_STATUS status = sink_.Write(output);
    return status == HPDF_OK ? status : HPDF_SetError(source_.error, HPDF_ZLIB_ERROR, status);
  }

  HPDF_STATUS Fail(int result) {
    return HPDF_SetError(source_.error, HPDF_ZLIB_ERROR, static_cast<HPDF_STATUS>(result));
  }

  const MemoryStream &source_;
  Sink sink_;
  Deflater deflater_;
};

}  // namespace

}  // namespace quillbar::engine

/// Writes all of `source`, a memory stream, deflated if `filter` says so, and encrypted unless `encryption` is null.
extern "C" HPDF_STATUS HPDF_Stream_WriteToStream(HPDF_Stream source, HPDF_Stream destination, HPDF_UINT filter,
                                                 HPDF_Encrypt encryption) {
  using namespace quillbar::engine;
  if (source->type != HPDF_STREAM_MEMORY || destination == nullptr || destination->write_fn == nullptr) {
    return HPDF_SetError(source->error, HPDF_INVALID_OBJECT, 0);
  }
  if (HPDF_Error_GetCode(source->error) != HPDF_NOERROR || HPDF_Error_GetCode(destination->error) != HPDF_NOERROR) {
    return HPDF_THIS_FUNC_WAS_SKIPPED;
  }
  const Sink sink{destination, encryption};
  const MemoryStream &content = AsMemoryStream(source);
  if ((filter & HPDF_STREAM_FILTER_FLATE_DECODE) != 0) return DeflatingCopy(content, sink).Run();
  return ForEachBlock(content, [&sink](std::span<const HPDF_BYTE> block) { return sink.Write(block); });
}
