# SPDX-License-Identifier: MIT
# Saving to a file tells the file's stream (file_writer.cpp) how it ended. libharu ignores the status at that place, so
# that a save which failed without marking the error record left a partial file and counted as a success.
libharu_edit(FILE src/hpdf_doc.c
  ANCHOR "InternalSaveToStream (pdf, stream);"
  REPLACEMENT "QuillbarEndFile (stream, InternalSaveToStream (pdf, stream));")
