// SPDX-License-Identifier: MIT
// Streams that write files, so that a saved file is whole or absent.
//
// What is written is gathered here: a document is many small pieces, and a call of the C library for each takes longer
// than copying it. The C library passes on at once what is larger than its own buffer. A short file is written on
// closing only, so on a full disk closing is what fails.
//
// The file has its name only when its save has succeeded: a partial one would block the next save, because existing
// files are never overwritten.
#include "plugin/engine/streams/file_writer.h"

#include <hpdf_utils.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "plugin/engine/streams/native_file.h"
#include "plugin/engine/streams/stream.h"
#include "plugin/engine/streams/whole_file.h"

namespace quillbar::engine {

namespace {

constexpr std::size_t kBufferSize = 1 << 16;

class FileWriter {
 public:
  explicit FileWriter(std::unique_ptr<WholeFile> file) : file_(std::move(file)) {}

  // Whether all has gone well so far.
  bool Write(const HPDF_BYTE *bytes, std::size_t size) {
    while (size > buffer_.size() - gathered_) {
      const std::size_t part = buffer_.size() - gathered_;
      Gather(bytes, part);
      bytes += part;
      size -= part;
      if (!Flush()) return false;
    }
    Gather(bytes, size);
    return problem_ == 0;
  }

  // Ends the file; 0 or the first problem.
  int End() {
    if (Flush()) problem_ = file_->Commit();
    return problem_;
  }

  int problem() const { return problem_; }

 private:
  void Gather(const HPDF_BYTE *bytes, std::size_t size) {
    if (size != 0) std::memcpy(buffer_.data() + gathered_, bytes, size);
    gathered_ += size;
  }

  bool Flush() {
    errno = 0;
    if (problem_ == 0 && std::fwrite(buffer_.data(), 1, gathered_, file_->stream()) != gathered_) {
      problem_ = errno != 0 ? errno : EIO;
    }
    gathered_ = 0;
    return problem_ == 0;
  }

  std::array<HPDF_BYTE, kBufferSize> buffer_;
  std::size_t gathered_ = 0;
  std::unique_ptr<WholeFile> file_;
  // errno of the first failed operation; 0 if there was none.
  int problem_ = 0;
};

FileWriter *WriterOf(HPDF_Stream stream) { return static_cast<FileWriter *>(stream->attr); }

HPDF_STATUS SetProblem(HPDF_Error error, int problem) {
  return HPDF_SetError(error, HPDF_FILE_IO_ERROR, static_cast<HPDF_STATUS>(problem));
}

HPDF_STATUS Write(HPDF_Stream stream, const HPDF_BYTE *bytes, HPDF_UINT size) {
  FileWriter &writer = *WriterOf(stream);
  return writer.Write(bytes, size) ? HPDF_OK : SetProblem(stream->error, writer.problem());
}

void Discard(HPDF_Stream stream) { delete WriterOf(stream); }

// Null with errno set when the path can't be written.
std::unique_ptr<FileWriter> BeginFile(const char *utf16Path) {
  const std::optional<NativePath> path = NativePathOf(utf16Path);
  if (!path) return nullptr;
  std::unique_ptr<WholeFile> file = WholeFile::Open(*path);
  return file != nullptr ? std::make_unique<FileWriter>(std::move(file)) : nullptr;
}

}  // namespace

HPDF_Stream NewFileWriter(HPDF_MMgr memory, const char *utf16Path) {
  const HPDF_Stream stream = NewStream(memory, HPDF_STREAM_FILE);
  if (stream == nullptr) return nullptr;

  std::unique_ptr<FileWriter> writer;
  HPDF_STATUS failure = HPDF_FILE_OPEN_ERROR;
  try {
    writer = BeginFile(utf16Path);
  } catch (const std::bad_alloc &) {
    failure = HPDF_FAILD_TO_ALLOC_MEM;
    errno = 0;
  }
  if (writer == nullptr) {
    HPDF_SetError(memory->error, failure, static_cast<HPDF_STATUS>(errno));
    HPDF_FreeMem(memory, stream);
    return nullptr;
  }
  stream->write_fn = &Write;
  stream->free_fn = &Discard;
  stream->attr = writer.release();
  return stream;
}

HPDF_STATUS EndFile(HPDF_Stream fileWriter, HPDF_STATUS status) {
  FileWriter &writer = *WriterOf(fileWriter);
  if (status == HPDF_OK) writer.End();
  if (writer.problem() != 0) status = SetProblem(fileWriter->error, writer.problem());
  HPDF_Stream_Free(fileWriter);
  return status;
}

}  // namespace quillbar::engine
