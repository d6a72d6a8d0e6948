// SPDX-License-Identifier: MIT
// A library document with the kind of error handler that the plugin installs: it notes the failure, lets a
// test call back into the document, and then resets the library's error state.
#pragma once

#include <gtest/gtest.h>
#include <hpdf.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "plugin/engine/document/document.h"
#include "plugin/guard/library_call.h"

namespace quillbar {

struct Failure {
  HPDF_STATUS code = HPDF_OK;
  HPDF_STATUS detail = 0;
  bool operator==(const Failure &) const = default;
};

class LibraryDocument {
 public:
  LibraryDocument() : document(engine::NewDocument(&LibraryDocument::Handle, this)) { EXPECT_NE(document, nullptr); }
  ~LibraryDocument() { HPDF_Free(document); }
  LibraryDocument(const LibraryDocument &) = delete;
  LibraryDocument &operator=(const LibraryDocument &) = delete;

  // The codes that the handler was called with since the last time this was asked.
  std::vector<HPDF_STATUS> TakeCodes() {
    std::vector<HPDF_STATUS> codes;
    for (const Failure &failure : failures) codes.push_back(failure.code);
    failures.clear();
    return codes;
  }

  // The document saved into memory; empty if that failed.
  std::string SaveToString() {
    if (Call<engine::SaveToMemory>(document) != HPDF_OK) return {};
    HPDF_UINT32 size = Call<HPDF_GetStreamSize>(document);
    std::string bytes(size, '\0');
    EXPECT_EQ(Call<HPDF_ReadFromStream>(document, reinterpret_cast<HPDF_BYTE *>(bytes.data()), &size), HPDF_OK);
    EXPECT_EQ(size, bytes.size());
    return bytes;
  }

  const HPDF_Doc document;
  std::vector<Failure> failures;
  std::function<void()> inHandler;

 private:
  static void Handle(HPDF_STATUS code, HPDF_STATUS detail, void *self) {
    auto &document = *static_cast<LibraryDocument *>(self);
    document.failures.push_back({code, detail});
    if (document.inHandler) document.inHandler();
    HPDF_ResetError(document.document);
  }
};

// All that a memory stream has.
inline std::string ContentOf(HPDF_Stream stream) {
  std::string bytes(stream->size, '\0');
  HPDF_UINT size = stream->size;
  EXPECT_EQ(HPDF_Stream_Seek(stream, 0, HPDF_SEEK_SET), HPDF_OK);
  EXPECT_EQ(HPDF_Stream_Read(stream, reinterpret_cast<HPDF_BYTE *>(bytes.data()), &size), HPDF_OK);
  EXPECT_EQ(size, bytes.size());
  return bytes;
}

// What has been written to a page's content stream so far.
inline std::string ContentOf(HPDF_Page page) { return ContentOf(static_cast<HPDF_PageAttr>(page->attr)->stream); }

}  // namespace quillbar
