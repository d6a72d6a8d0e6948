#include "plugin/text/foreign_face.h"

#include <map>
#include <set>

#include "plugin/document/owned_by_document.h"

namespace quillbar::text {

namespace {

/// Almost always empty. Plain process-wide data: all calls come on the host's script thread.
std::map<const Font *, std::set<PDFDocument *>> &KeptDocuments() {
  static std::map<const Font *, std::set<PDFDocument *>> documents;
  return documents;
}

}  // namespace

void KeepDocumentOfFace(const Font *font, PDFDocument *document) {
  if (document != nullptr && KeptDocuments()[font].insert(document).second) Keep(document);
}

void ForgetDocumentsOfFaces(const Font *font) {
  const auto kept = KeptDocuments().extract(font);
  if (kept.empty()) return;
  for (PDFDocument *document : kept.mapped()) Let(document);
}

}  // namespace quillbar::text
