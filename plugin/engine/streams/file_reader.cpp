// SPDX-License-Identifier: MIT
// Streams that read files: font files.
#include <hpdf.h>
#include <hpdf_utils.h>

#include <cerrno>
#include <cstdio>
#include <new>
#include <optional>

#include "plugin/engine/streams/native_file.h"
#include "plugin/engine/streams/stream.h"

namespace quillbar::engine {

namespace {

std::FILE *FileOf(HPDF_Stream stream) { return static_cast<std::FILE *>(stream->attr); }

HPDF_STATUS Read(HPDF_Stream stream, HPDF_BYTE *bytes, HPDF_UINT *size) {
  const auto count = static_cast<HPDF_UINT>(std::fread(bytes, 1, *size, FileOf(stream)));
  if (count == *size) return HPDF_OK;
  const int problem = std::ferror(FileOf(stream));
  if (problem != 0) return HPDF_SetError(stream->error, HPDF_FILE_IO_ERROR, static_cast<HPDF_STATUS>(problem));
  *size = count;
  return HPDF_STREAM_EOF;
}

void Close(HPDF_Stream stream) { std::fclose(FileOf(stream)); }

// Null with errno set when the file can't be read. Folders have no fonts, and pipes and devices may have no end.
std::FILE *OpenFontFile(const char *utf16Path) {
  const std::optional<NativePath> path = NativePathOf(utf16Path);
  if (!path) return nullptr;
  if (LeadsElsewhere(*path)) {
    errno = EINVAL;
    return nullptr;
  }
  return OpenNative(*path, "rb");
}

}  // namespace

}  // namespace quillbar::engine

using namespace quillbar::engine;

/// A stream that reads a regular file. Null, with the error record set, when the file can't be opened
/// (HPDF_FILE_OPEN_ERROR with errno as detail) and when memory is short.
extern "C" HPDF_Stream HPDF_FileReader_New(HPDF_MMgr memory, const char *utf16Path) {
  std::FILE *file = nullptr;
  try {
    file = OpenFontFile(utf16Path);
  } catch (const std::bad_alloc &) {
    HPDF_SetError(memory->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
    return nullptr;
  }
  if (file == nullptr) {
    HPDF_SetError(memory->error, HPDF_FILE_OPEN_ERROR, static_cast<HPDF_STATUS>(errno));
    return nullptr;
  }
  const HPDF_Stream stream = NewStream(memory, HPDF_STREAM_FILE);
  if (stream == nullptr) {
    std::fclose(file);
    return nullptr;
  }
  stream->read_fn = &Read;
  stream->free_fn = &Close;
  stream->attr = file;
  return stream;
}
