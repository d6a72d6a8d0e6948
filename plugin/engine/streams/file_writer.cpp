// SPDX-License-Identifier: MIT
// Streams that write files, so that a saved file is whole or absent.
//
// A file that fits into the C library's buffer is written on closing only, so on a full disk closing is what fails.
// The file has its name only when its save has succeeded: a partial one would block the next save, because existing
// files are never overwritten.
#include "plugin/engine/streams/file_writer.h"

#include <hpdf_utils.h>

#include <array>
#include <cerrno>
#include <memory>
#include <new>
#include <optional>

#include "plugin/engine/streams/native_file.h"
#include "plugin/engine/streams/stream.h"
#include "plugin/engine/streams/whole_file.h"

namespace quillbar::engine {

namespace {

constexpr std::size_t kBufferSize = 1 << 16;

struct FileWriter {
  // What the C library is to keep back: left to itself it takes what the file system names, often 4 KB.
  std::array<char, kBufferSize> buffer;
  std::unique_ptr<WholeFile> file;
  // errno of the first failed operation; 0 if there was none.
  int problem = 0;
};

FileWriter *WriterOf(HPDF_Stream stream) { return static_cast<FileWriter *>(stream->attr); }

HPDF_STATUS SetProblem(HPDF_Error error, int problem) {
  return HPDF_SetError(error, HPDF_FILE_IO_ERROR, static_cast<HPDF_STATUS>(problem));
}

HPDF_STATUS Write(HPDF_Stream stream, const HPDF_BYTE *bytes, HPDF_UINT size) {
  FileWriter *writer = WriterOf(stream);
  errno = 0;
  if (std::fwrite(bytes, 1, size, writer->file->stream()) == size) return HPDF_OK;
  if (writer->problem == 0) writer->problem = errno != 0 ? errno : EIO;
  return SetProblem(stream->error, writer->problem);
}

void Discard(HPDF_Stream stream) { delete WriterOf(stream); }

// Null with errno set when the path can't be written.
std::unique_ptr<FileWriter> BeginFile(const char *utf16Path) {
  const std::optional<NativePath> path = NativePathOf(utf16Path);
  if (!path) return nullptr;
  auto writer = std::make_unique<FileWriter>();
  writer->file = WholeFile::Open(*path);
  if (writer->file == nullptr) return nullptr;
  std::setvbuf(writer->file->stream(), writer->buffer.data(), _IOFBF, kBufferSize);
  return writer;
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
  FileWriter *writer = WriterOf(fileWriter);
  if (status == HPDF_OK && writer->problem == 0) writer->problem = writer->file->Commit();
  if (writer->problem != 0) status = SetProblem(fileWriter->error, writer->problem);
  HPDF_Stream_Free(fileWriter);
  return status;
}

}  // namespace quillbar::engine
