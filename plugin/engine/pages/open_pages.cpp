// SPDX-License-Identifier: MIT
// HPDF_Xref_WriteToStream, through which every save goes: what is open on a page, a path, a text object or
// saved graphics states, is ended in the file, and stays open on the page.
//
// libharu's save ends it on the page: what a script shows after it has saved in the middle of a text object
// is refused, and the states that it wants to restore are gone.
#include <hpdf.h>
#include <hpdf_utils.h>

#include <new>
#include <string>
#include <vector>

extern "C" HPDF_STATUS Libharu_HPDF_Xref_WriteToStream(HPDF_Xref xref, HPDF_Stream stream, HPDF_Encrypt encryption);

namespace quillbar::engine {

namespace {

// The operators that end what is open on a page; empty for most pages.
std::string EndingOf(const HPDF_PageAttr_Rec &page) {
  std::string ending;
  if ((page.gmode & (HPDF_GMODE_PATH_OBJECT | HPDF_GMODE_CLIPPING_PATH)) != 0) ending += "n\n";
  if (page.gmode == HPDF_GMODE_TEXT_OBJECT) ending += "ET\n";
  if (page.gstate != nullptr) {
    for (HPDF_GState state = page.gstate; state->prev != nullptr; state = state->prev) ending += "Q\n";
  }
  return ending;
}

// Where a memory stream's content ends. The stream can be cut back to it.
class StreamEnd {
 public:
  explicit StreamEnd(HPDF_Stream stream)
      : stream_(stream),
        size_(stream->size),
        bufferCount_(Attributes().buf->count),
        writePosition_(Attributes().w_pos),
        writePointer_(Attributes().w_ptr) {}

  void CutBack() const {
    HPDF_MemStreamAttr_Rec &attributes = Attributes();
    while (attributes.buf->count > bufferCount_)
      HPDF_FreeMem(stream_->mmgr, HPDF_List_RemoveByIndex(attributes.buf, attributes.buf->count - 1));
    attributes.w_pos = writePosition_;
    attributes.w_ptr = writePointer_;
    // The next read begins with a seek; until then nothing may point into what is gone.
    attributes.r_ptr = nullptr;
    attributes.r_ptr_idx = 0;
    attributes.r_pos = 0;
    stream_->size = size_;
  }

 private:
  HPDF_MemStreamAttr_Rec &Attributes() const { return *static_cast<HPDF_MemStreamAttr>(stream_->attr); }

  HPDF_Stream stream_;
  HPDF_UINT size_;
  HPDF_UINT bufferCount_;
  HPDF_UINT writePosition_;
  HPDF_BYTE *writePointer_;
};

// The pages of a document with the ends of what is open on them, for as long as this lives.
class EndedPages {
 public:
  ~EndedPages() {
    for (const StreamEnd &end : ends_) end.CutBack();
  }

  // The library's status.
  HPDF_STATUS EndAll(HPDF_Xref xref) {
    try {
      for (HPDF_UINT i = 0; i < xref->entries->count; ++i) {
        const void *object = HPDF_Xref_GetEntry(xref, i)->obj;
        if (object == nullptr ||
            static_cast<const HPDF_Obj_Header *>(object)->obj_class != (HPDF_OSUBCLASS_PAGE | HPDF_OCLASS_DICT))
          continue;
        const HPDF_STATUS status = End(*static_cast<HPDF_PageAttr>(static_cast<const HPDF_Dict_Rec *>(object)->attr));
        if (status != HPDF_OK) return status;
      }
    } catch (const std::bad_alloc &) {
      return HPDF_SetError(xref->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
    }
    return HPDF_OK;
  }

 private:
  HPDF_STATUS End(const HPDF_PageAttr_Rec &page) {
    const std::string ending = EndingOf(page);
    if (ending.empty()) return HPDF_OK;
    ends_.emplace_back(page.stream);
    return HPDF_Stream_WriteStr(page.stream, ending.c_str());
  }

  std::vector<StreamEnd> ends_;
};

}  // namespace

}  // namespace quillbar::engine

extern "C" HPDF_STATUS HPDF_Xref_WriteToStream(HPDF_Xref xref, HPDF_Stream stream, HPDF_Encrypt encryption) {
  quillbar::engine::EndedPages pages;
  const HPDF_STATUS status = pages.EndAll(xref);
  return status == HPDF_OK ? Libharu_HPDF_Xref_WriteToStream(xref, stream, encryption) : status;
}
