// SPDX-License-Identifier: MIT
// Streams that write files (HPDF_FileWriter_New), so that a saved file is whole or absent.
//
// libharu ignores what closing a file says. A file that fits into the C library's buffer is written on
// closing only, so on a full disk its save was a success and the file empty; after other failures, and when
// the process ended in between, a partial file stayed, which would block the next save, because the plugin
// never overwrites. Here the first failure of writing, flushing, closing or renaming is HPDF_FILE_IO_ERROR
// with errno as detail, and the file has its name only when its save has succeeded.
#include <hpdf.h>

#include <cerrno>
#include <memory>
#include <new>
#include <optional>

#include "plugin/engine/streams/native_file.h"
#include "plugin/engine/streams/seam.h"
#include "plugin/engine/streams/whole_file.h"
#undef fopen

namespace {

using namespace quillbar::engine;

constexpr std::size_t kBufferSize = 1 << 16;

struct FileWriter {
  std::unique_ptr<WholeFile> file;
  // errno of the first failed operation; 0 if there was none.
  int problem = 0;
  // The file's content is not what was meant, even if every operation succeeded.
  bool discarded = false;
};

FileWriter *WriterOf(HPDF_Stream stream) { return static_cast<FileWriter *>(stream->attr); }

HPDF_STATUS Write(HPDF_Stream stream, const HPDF_BYTE *bytes, HPDF_UINT size) {
  FileWriter *writer = WriterOf(stream);
  errno = 0;
  if (std::fwrite(bytes, 1, size, writer->file->stream()) == size) return HPDF_OK;
  if (writer->problem == 0) writer->problem = errno != 0 ? errno : EIO;
  return HPDF_SetError(stream->error, HPDF_FILE_IO_ERROR, static_cast<HPDF_STATUS>(writer->problem));
}

HPDF_INT32 Tell(HPDF_Stream stream) { return static_cast<HPDF_INT32>(stream->size); }

void Close(HPDF_Stream stream) {
  const std::unique_ptr<FileWriter> writer(WriterOf(stream));
  stream->attr = nullptr;
  if (writer->problem == 0 && !writer->discarded) writer->problem = writer->file->Commit();
  if (writer->problem != 0) {
    // Also in place of what the library made of a failed write on its way up, such as a failed compression.
    HPDF_SetError(stream->error, HPDF_FILE_IO_ERROR, static_cast<HPDF_STATUS>(writer->problem));
  }
}

// Null with errno set when the path can't be written.
std::unique_ptr<FileWriter> NewWriter(const char *utf16Path) {
  errno = EINVAL;
  const std::optional<NativePath> path = utf16Path != nullptr ? NativePathOf(utf16Path) : std::optional<NativePath>();
  if (!path) return nullptr;
  auto writer = std::make_unique<FileWriter>();
  writer->file = WholeFile::Open(*path);
  if (writer->file == nullptr) return nullptr;
  std::setvbuf(writer->file->stream(), nullptr, _IOFBF, kBufferSize);
  return writer;
}

}  // namespace

extern "C" HPDF_Stream HPDF_FileWriter_New(HPDF_MMgr memory, const char *utf16Path) {
  auto *stream = static_cast<HPDF_Stream>(HPDF_GetMem(memory, sizeof(HPDF_Stream_Rec)));
  if (stream == nullptr) return nullptr;

  std::unique_ptr<FileWriter> writer;
  HPDF_STATUS failure = HPDF_FILE_OPEN_ERROR;
  try {
    writer = NewWriter(utf16Path);
  } catch (const std::bad_alloc &) {
    failure = HPDF_FAILD_TO_ALLOC_MEM;
    errno = 0;
  }
  if (writer == nullptr) {
    HPDF_SetError(memory->error, failure, static_cast<HPDF_STATUS>(errno));
    HPDF_FreeMem(memory, stream);
    return nullptr;
  }

  *stream = HPDF_Stream_Rec{};
  stream->sig_bytes = HPDF_STREAM_SIG_BYTES;
  stream->type = HPDF_STREAM_FILE;
  stream->error = memory->error;
  stream->mmgr = memory;
  stream->write_fn = &Write;
  stream->tell_fn = &Tell;
  stream->free_fn = &Close;
  stream->attr = writer.release();
  return stream;
}

void QuillbarEndFile(void *stream, unsigned long status) {
  if (status == HPDF_OK) return;
  auto *fileStream = static_cast<HPDF_Stream>(stream);
  WriterOf(fileStream)->discarded = true;
  const HPDF_Error error = fileStream->error;
  if (error->error_no == HPDF_OK && error->raised_no == HPDF_OK) HPDF_SetError(error, status, 0);
}
