/* Included before everything else while libharu's files are compiled: the C library's file functions that
 * become ours. */
#ifndef QUILLBAR_PDFLIB_SEAM_H
#define QUILLBAR_PDFLIB_SEAM_H

#include <stdio.h>

#ifdef __cplusplus
extern "C"
#endif
    FILE *
    QuillbarOpenFile(const char *utf16Path, const char *mode);

#define fopen QuillbarOpenFile

#endif
