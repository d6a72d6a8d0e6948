// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>

#include "bench/document_contents.h"

namespace quillbar::bench {

/// The main function of a peer: `PROGRAM text|paths PAGES plain|compressed LINES FILE` writes the document to FILE. LINES,
/// a file, is for peers in other languages; those in C++ know the lines. `Writer` has the members that
/// document_contents.h names. Returns the exit status.
template <class Writer>
int WriteAsPeer(int argumentCount, char **arguments) {
  if (argumentCount != 6) {
    std::fprintf(stderr, "usage: %s text|paths PAGES plain|compressed LINES FILE\n", arguments[0]);
    return 2;
  }
  try {
    const Lines lines = TextLines();
    const int pages = std::atoi(arguments[2]);
    Writer writer(lines);
    writer.BeginDocument(arguments[3] == std::string_view("compressed"), arguments[5]);
    if (arguments[1] == std::string_view("text")) {
      WriteTextPages(writer, pages);
    } else {
      WritePathPages(writer, pages);
    }
    writer.EndDocument();
    return 0;
  } catch (const std::exception &problem) {
    std::fprintf(stderr, "%s\n", problem.what());
    return 1;
  }
}

/// For the two writers of the other benchmarks, which get the file's name at the end.
template <class Writer>
class NamedFirst : public Writer {
 public:
  using Writer::Writer;
  void BeginDocument(bool isCompressed, const char *file) {
    file_ = file;
    Writer::BeginDocument(isCompressed);
  }
  void EndDocument() { Writer::EndDocument(file_); }

 private:
  const char *file_ = nullptr;
};

}  // namespace quillbar::bench
