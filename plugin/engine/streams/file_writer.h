// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

/// A stream that writes a new file, to be ended with `EndFile`. The path is UTF-16 in the machine's byte order. Null,
/// with the error record set, when the file can't be begun (HPDF_FILE_OPEN_ERROR with errno as detail; EEXIST for a
/// file that exists) and when memory is short.
HPDF_Stream NewFileWriter(HPDF_MMgr memory, const char *utf16Path);

/// Ends the file and frees the stream. With HPDF_OK as `status` of what was written the file gets its name, else
/// nothing of it is left. The first failure of writing, flushing, closing and renaming is set in the error record as
/// HPDF_FILE_IO_ERROR with errno as detail, in place of what was made of it on its way up, such as a failed
/// compression. HPDF_OK, that failure, or `status`.
HPDF_STATUS EndFile(HPDF_Stream fileWriter, HPDF_STATUS status);

}  // namespace quillbar::engine
