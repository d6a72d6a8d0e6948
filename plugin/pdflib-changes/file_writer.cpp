// Streams that write files (HPDF_FileWriter_New), so that a saved file is whole or absent.
//
// libharu ignores what closing a file says. A file that fits into the C library's buffer is written on
// closing only, so on a full disk its save was a success and the file empty; after other failures a partial
// file stayed, which would block the next save, because the plugin never overwrites. Here the first failure
// of writing, flushing or closing is HPDF_FILE_IO_ERROR with errno as detail, and a file whose save failed in
// any way is removed.
#include <hpdf.h>

#include <cerrno>
#include <memory>

#include "plugin/pdflib-changes/native_file.h"
#include "plugin/pdflib-changes/seam.h"
#undef fopen

namespace {

using namespace quillbar::pdflib;

constexpr std::size_t kBufferSize = 1 << 16;

struct FileWriter {
  NativePath path;
  std::FILE *file = nullptr;
  FileIdentity identity;
  // errno of the first failed operation; 0 if there was none.
  int problem = 0;
  // The file's content is not what was meant, even if every operation succeeded.
  bool discarded = false;

  void NoteProblem() {
    if (problem == 0) problem = errno != 0 ? errno : EIO;
  }
};

FileWriter *WriterOf(HPDF_Stream stream) { return static_cast<FileWriter *>(stream->attr); }

HPDF_STATUS Write(HPDF_Stream stream, const HPDF_BYTE *bytes, HPDF_UINT size) {
  FileWriter *writer = WriterOf(stream);
  errno = 0;
  if (std::fwrite(bytes, 1, size, writer->file) == size) return HPDF_OK;
  writer->NoteProblem();
  return HPDF_SetError(stream->error, HPDF_FILE_IO_ERROR, static_cast<HPDF_STATUS>(writer->problem));
}

HPDF_INT32 Tell(HPDF_Stream stream) { return static_cast<HPDF_INT32>(stream->size); }

void Close(HPDF_Stream stream) {
  const std::unique_ptr<FileWriter> writer(WriterOf(stream));
  stream->attr = nullptr;
  errno = 0;
  if (std::fflush(writer->file) != 0) writer->NoteProblem();
  errno = 0;
  if (std::fclose(writer->file) != 0) writer->NoteProblem();
  if (writer->problem != 0) {
    // Also in place of what the library made of a failed write on its way up, such as a failed compression.
    HPDF_SetError(stream->error, HPDF_FILE_IO_ERROR, static_cast<HPDF_STATUS>(writer->problem));
  }
  if (writer->problem != 0 || writer->discarded) RemoveIfSame(writer->path, writer->identity);
}

}  // namespace

extern "C" HPDF_Stream HPDF_FileWriter_New(HPDF_MMgr memory, const char *utf16Path) {
  auto *stream = static_cast<HPDF_Stream>(HPDF_GetMem(memory, sizeof(HPDF_Stream_Rec)));
  if (stream == nullptr) return nullptr;

  std::unique_ptr<FileWriter> writer(new FileWriter);
  errno = EINVAL;
  std::optional<NativePath> path;
  if (utf16Path != nullptr) path = NativePathOf(utf16Path);
  if (path) {
    writer->path = *std::move(path);
    writer->file = OpenNative(writer->path, "wb");
  }
  if (writer->file == nullptr) {
    HPDF_SetError(memory->error, HPDF_FILE_OPEN_ERROR, static_cast<HPDF_STATUS>(errno));
    HPDF_FreeMem(memory, stream);
    return nullptr;
  }
  std::setvbuf(writer->file, nullptr, _IOFBF, kBufferSize);
  writer->identity = IdentityOf(writer->file);

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
