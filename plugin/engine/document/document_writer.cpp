// SPDX-License-Identifier: MIT
#include "plugin/engine/document/document_writer.h"

#include <hpdf_doc.h>
#include <hpdf_encryptdict.h>
#include <hpdf_utils.h>

#include <cerrno>
#include <charconv>
#include <iterator>
#include <utility>

#include "plugin/engine/pages/open_pages.h"
#include "plugin/engine/security/encryption_mode.h"

namespace quillbar::engine {

namespace {

// Writes one document into a stream. After a failure nothing more is done.
class DocumentWriter {
 public:
  DocumentWriter(HPDF_Doc document, HPDF_Stream stream, SaveProgress progress)
      : document_(document),
        xref_(document->xref),
        entries_(document->xref->entries),
        stream_(stream),
        progress_(progress) {}

  HPDF_STATUS Run() {
    WriteHeader();
    AddToTrailer("Root", document_->catalog);
    AddToTrailer("Info", document_->info);
    if (document_->encrypt_on != HPDF_FALSE) PrepareEncryption();
    EndedPages endedPages;
    if (IsFine()) status_ = endedPages.EndAll(xref_);
    // An object may add others while it is written.
    for (HPDF_UINT number = 1; IsFine() && number < entries_->count; ++number) {
      WriteObject(number);
      Report(number);
    }
    if (IsFine()) WriteCrossReference();
    return status_;
  }

 private:
  bool IsFine() const { return status_ == HPDF_OK; }

  void Write(const char *text) {
    if (IsFine()) status_ = HPDF_Stream_WriteStr(stream_, text);
  }

  void WriteNumber(HPDF_UINT number) {
    char text[16] = {};
    std::to_chars(text, std::end(text) - 1, number);
    Write(text);
  }

  // The version, and a comment by which programs see that the file is not text.
  void WriteHeader() {
    Write("%PDF-1.");
    WriteNumber(static_cast<HPDF_UINT>(document_->pdf_version - HPDF_VER_12) + 2);
    Write("\n%\xB7\xBE\xAD\xAA\n");
  }

  void AddToTrailer(const char *key, HPDF_Dict dictionary) {
    if (IsFine()) status_ = HPDF_Dict_Add(document_->trailer, key, dictionary);
  }

  void PrepareEncryption() {
    encryption_ = HPDF_EncryptDict_GetAttr(document_->encrypt_dict);
    if (IsFine()) status_ = HPDF_Doc_PrepareEncryption(document_);
  }

  void WriteObject(HPDF_UINT number) {
    const HPDF_XrefEntry entry = HPDF_Xref_GetEntry(xref_, number);
    entry->byte_offset = stream_->size;
    WriteNumber(number);
    Write(" 0 obj\n");
    if (encryption_ != nullptr) HPDF_Encrypt_InitKey(encryption_, number, entry->gen_no);
    if (IsFine()) status_ = HPDF_Obj_WriteValue(entry->obj, stream_, encryption_);
    Write("\nendobj\n");
  }

  void Report(HPDF_UINT written) {
    if (!IsFine() || progress_ == nullptr) return;
    // Calls that are made meanwhile are not part of this one.
    const HPDF_Error_Rec own = std::exchange(document_->error, Idle(document_->error));
    const bool givesUp = progress_(written, entries_->count - 1) != 0;
    document_->error = own;
    if (givesUp) status_ = HPDF_SetError(&document_->error, HPDF_FILE_IO_ERROR, ECANCELED);
  }

  static HPDF_Error_Rec Idle(HPDF_Error_Rec error) {
    error.call_depth = 0;
    error.raised_no = error.raised_detail_no = error.error_no = error.detail_no = HPDF_OK;
    return error;
  }

  // An entry has 20 bytes: the offset in ten digits, the generation in five, the kind, and the end of the line.
  void WriteEntry(const HPDF_XrefEntry_Rec &entry) {
    char text[] = "0000000000 00000 n\r\n";
    PutDigits(text + 10, entry.byte_offset);
    PutDigits(text + 16, entry.gen_no);
    text[17] = entry.entry_typ;
    Write(text);
  }

  static void PutDigits(char *end, HPDF_UINT number) {
    for (; number != 0; number /= 10) *--end = static_cast<char>('0' + number % 10);
  }

  void WriteCrossReference() {
    const HPDF_UINT start = stream_->size;
    Write("xref\n0 ");
    WriteNumber(entries_->count);
    Write("\n");
    for (HPDF_UINT number = 0; IsFine() && number < entries_->count; ++number) {
      WriteEntry(*HPDF_Xref_GetEntry(xref_, number));
    }
    if (IsFine()) {
      status_ = HPDF_Dict_AddNumber(document_->trailer, "Size", static_cast<HPDF_INT32>(entries_->count));
    }
    Write("trailer\n");
    if (IsFine()) status_ = HPDF_Dict_Write(document_->trailer, stream_, nullptr);
    Write("\nstartxref\n");
    WriteNumber(start);
    Write("\n%%EOF\n");
  }

  HPDF_Doc document_;
  HPDF_Xref xref_;
  HPDF_List entries_;
  HPDF_Stream stream_;
  SaveProgress progress_;
  HPDF_Encrypt encryption_ = nullptr;
  HPDF_STATUS status_ = HPDF_OK;
};

}  // namespace

HPDF_STATUS WriteDocument(HPDF_Doc document, HPDF_Stream stream, SaveProgress progress) {
  if (document->encrypt_on != HPDF_FALSE && FixedEncryption::IsOn(document)) {
    return HPDF_SetError(&document->error, HPDF_INVALID_OPERATION, 0);
  }
  const FixedEncryption fixedEncryption(document);
  return DocumentWriter(document, stream, progress).Run();
}

}  // namespace quillbar::engine
