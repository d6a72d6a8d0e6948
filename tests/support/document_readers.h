// SPDX-License-Identifier: MIT
// Readers of PDF files that report what a document has besides its pictures: pdf.js (Firefox and many applications)
// and PDFium (Chrome and Edge), which run in Node.js; poppler (Evince and Okular) and MuPDF. ./test fetches the
// first two; where a reader is missing, tests say so and are skipped.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quillbar::test {

enum class DocumentReader { kPdfJs, kPdfium, kPoppler, kMuPdf };
void PrintTo(DocumentReader reader, std::ostream *out);

/// All texts are UTF-8, as the reader gives them. The page that something leads to counts from 1; 0 means none.
struct ReadAnnotation {
  std::string kind;      // "Text", "Link"
  std::string contents;  // of a note
  std::string address;   // of a link to the web
  int page = 0;          // of a link inside the document
};

/// What a reader finds on a page.
struct ReadPage {
  std::string text;  // lines end in the reader's own way
  std::vector<ReadAnnotation> annotations;
};

/// An entry of the outline.
struct ReadBookmark {
  std::string title;
  int page = 0;
  std::vector<ReadBookmark> children;
};

/// What a reader finds in a document.
struct ReadDocument {
  std::vector<ReadPage> pages;
  std::map<std::string, std::string> information;  // "Title", "Author"
  std::vector<ReadBookmark> bookmarks;
};

inline constexpr DocumentReader kAllDocumentReaders[] = {DocumentReader::kPdfJs, DocumentReader::kPdfium,
                                                         DocumentReader::kPoppler, DocumentReader::kMuPdf};

/// A reader's name in the name of a test.
std::string NameOf(DocumentReader reader);

/// Why the reader can't be used here; empty if it can.
std::string ReasonToLeaveOut(DocumentReader reader);

/// What the reader finds in these files, in their order. All files at once: starting the reader takes longer than most
/// files. A file that it refuses, or a warning, fails the test.
std::vector<ReadDocument> ReadBy(DocumentReader reader, const std::vector<std::filesystem::path> &files);
/// What the reader finds in the bytes of one file.
ReadDocument ReadBy(DocumentReader reader, std::string_view bytes);

}  // namespace quillbar::test

/// Skips the test with a message where the reader can't be used.
#define QUILLBAR_NEEDS_READER(reader) \
  if (const std::string reason = quillbar::test::ReasonToLeaveOut(reader); !reason.empty()) GTEST_SKIP() << reason
