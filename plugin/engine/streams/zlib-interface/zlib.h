// SPDX-License-Identifier: MIT
/* The part of zlib's deflate interface that libharu's streams use, declared only: the functions are those of
 * deflate_entries.cpp, which call the entry points handed in at run time. The record has zlib's layout on
 * every platform (56 bytes where pointers and longs have 32 bits, 112 where both have 64). */
#ifndef QUILLBAR_ZLIB_INTERFACE_H
#define QUILLBAR_ZLIB_INTERFACE_H

#ifdef __cplusplus
extern "C" {
#endif

/* Passed to the compressor as it stands, whatever zlib it carries; zlib compares the first character only. */
#define ZLIB_VERSION "1.1.3"

#define Z_NO_FLUSH 0
#define Z_FINISH 4
#define Z_OK 0
#define Z_STREAM_END 1
#define Z_STREAM_ERROR (-2)
#define Z_BUF_ERROR (-5)
#define Z_DEFAULT_COMPRESSION (-1)

typedef unsigned char Bytef;

typedef struct z_stream_s {
  const Bytef *next_in;
  unsigned int avail_in;
  unsigned long total_in;
  Bytef *next_out;
  unsigned int avail_out;
  unsigned long total_out;
  const char *msg;
  void *state;
  void *(*zalloc)(void *opaque, unsigned int items, unsigned int size);
  void (*zfree)(void *opaque, void *address);
  void *opaque;
  int data_type;
  unsigned long adler;
  unsigned long reserved;
} z_stream;

int QuillbarDeflateInit(z_stream *stream, int level, const char *version, int recordSize);
int QuillbarDeflate(z_stream *stream, int flush);
int QuillbarDeflateEnd(z_stream *stream);

#define deflateInit_ QuillbarDeflateInit
#define deflate QuillbarDeflate
#define deflateEnd QuillbarDeflateEnd

#ifdef __cplusplus
}
#endif

#endif
