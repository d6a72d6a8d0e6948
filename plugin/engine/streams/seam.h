// SPDX-License-Identifier: MIT
/* Included before everything else while libharu's files are compiled: what their text calls by other names,
 * or that an edit of it calls. Plain C, without the library's types, which are not known yet. */
#ifndef QUILLBAR_SEAM_H
#define QUILLBAR_SEAM_H

#include <stdio.h>

#ifdef __cplusplus
extern "C" {
#endif

/* native_file.cpp */
FILE *QuillbarOpenFile(const char *utf16Path, const char *mode);
#define fopen QuillbarOpenFile

/* file_writer.cpp: tells a file's stream how the save into it ended (an HPDF_STATUS). */
void QuillbarEndFile(void *stream, unsigned long status);

#ifdef __cplusplus
}
#endif

#endif
