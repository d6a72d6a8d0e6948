// SPDX-License-Identifier: MIT
#include "plugin/engine/document/document_writer.h"

#include <hpdf_doc.h>
#include <hpdf_encryptdict.h>
#include <hpdf_utils.h>

#include <charconv>
#include <string_view>

#include "plugin/engine/pages/open_pages.h"

namespace quillbar::engine {

namespace {

// Writes one document into a stream. Every step ends the writing when it fails.
class DocumentWriter {
 public:
  DocumentWriter(HPDF_Doc document, HPDF_Stream stream)
      : document_(document), xref_(document->xref), entries_(document->xref->entries), stream_(stream) {}

  HPDF_STATUS Run() {
    HPDF_STATUS status = WriteHeader();
    if (status == HPDF_OK) status = AddToTrailer("Root", document_->catalog);
    if (status == HPDF_OK) status = AddToTrailer("Info", document_->info);
    if (status == HPDF_OK && document_->encrypt_on != HPDF_FALSE) status = PrepareEncryption();
    EndedPages endedPages;
    if (status == HPDF_OK) status = endedPages.EndAll(xref_);
    // An object may add others while it is written.
    for (HPDF_UINT number = 1; status == HPDF_OK && number < entries_->count; ++number) status = WriteObject(number);
    if (status == HPDF_OK) status = WriteCrossReference();
    return status;
  }

 private:
  HPDF_STATUS Write(std::string_view text) {
    return HPDF_Stream_Write(stream_, reinterpret_cast<const HPDF_BYTE *>(text.data()),
                             static_cast<HPDF_UINT>(text.size()));
  }

  HPDF_STATUS WriteNumber(HPDF_UINT number) {
    char text[16];
    return Write({text, std::to_chars(text, std::end(text), number).ptr});
  }

  // The version, and a comment by which programs see that the file is not text.
  HPDF_STATUS WriteHeader() {
    const auto minorVersion = static_cast<HPDF_UINT>(document_->pdf_version - HPDF_VER_12) + 2;
    HPDF_STATUS status = Write("%PDF-1.");
    if (status == HPDF_OK) status = WriteNumber(minorVersion);
    return status == HPDF_OK ? Write("\n%\xB7\xBE\xAD\xAA\n") : status;
  }

  HPDF_STATUS AddToTrailer(const char *key, HPDF_Dict dictionary) {
    return HPDF_Dict_Add(document_->trailer, key, dictionary);
  }

  HPDF_STATUS PrepareEncryption() {
    encryption_ = HPDF_EncryptDict_GetAttr(document_->encrypt_dict);
    return HPDF_Doc_PrepareEncryption(document_);
  }

  HPDF_STATUS WriteObject(HPDF_UINT number) {
    const HPDF_XrefEntry entry = HPDF_Xref_GetEntry(xref_, number);
    entry->byte_offset = stream_->size;
    HPDF_STATUS status = WriteNumber(number);
    if (status == HPDF_OK) status = Write(" 0 obj\n");
    if (encryption_ != nullptr) HPDF_Encrypt_InitKey(encryption_, number, entry->gen_no);
    if (status == HPDF_OK) status = HPDF_Obj_WriteValue(entry->obj, stream_, encryption_);
    return status == HPDF_OK ? Write("\nendobj\n") : status;
  }

  // An entry has 20 bytes: the offset in ten digits, the generation in five, the kind, and the end of the line.
  HPDF_STATUS WriteEntry(const HPDF_XrefEntry_Rec &entry) {
    char text[] = "0000000000 00000 n\r\n";
    PutDigits(text + 10, entry.byte_offset);
    PutDigits(text + 16, entry.gen_no);
    text[17] = entry.entry_typ;
    return Write(text);
  }

  static void PutDigits(char *end, HPDF_UINT number) {
    for (; number != 0; number /= 10) *--end = static_cast<char>('0' + number % 10);
  }

  HPDF_STATUS WriteCrossReference() {
    const HPDF_UINT start = stream_->size;
    HPDF_STATUS status = Write("xref\n0 ");
    if (status == HPDF_OK) status = WriteNumber(entries_->count);
    if (status == HPDF_OK) status = Write("\n");
    for (HPDF_UINT number = 0; status == HPDF_OK && number < entries_->count; ++number) {
      status = WriteEntry(*HPDF_Xref_GetEntry(xref_, number));
    }
    if (status == HPDF_OK) {
      status = HPDF_Dict_AddNumber(document_->trailer, "Size", static_cast<HPDF_INT32>(entries_->count));
    }
    if (status == HPDF_OK) status = Write("trailer\n");
    if (status == HPDF_OK) status = HPDF_Dict_Write(document_->trailer, stream_, nullptr);
    if (status == HPDF_OK) status = Write("\nstartxref\n");
    if (status == HPDF_OK) status = WriteNumber(start);
    return status == HPDF_OK ? Write("\n%%EOF\n") : status;
  }

  HPDF_Doc document_;
  HPDF_Xref xref_;
  HPDF_List entries_;
  HPDF_Stream stream_;
  HPDF_Encrypt encryption_ = nullptr;
};

}  // namespace

HPDF_STATUS WriteDocument(HPDF_Doc document, HPDF_Stream stream) { return DocumentWriter(document, stream).Run(); }

}  // namespace quillbar::engine
