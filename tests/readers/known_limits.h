// SPDX-License-Identifier: MIT
// What a reader copies as another text, whatever program wrote the file. A test shows each of them on a file that
// isn't ours.
#pragma once

#include <string>
#include <vector>

#include "tests/readers/text_readers.h"
#include "tests/readers/treatment.h"

namespace quillbar::test {

/// One limit: whose it is, where it applies, and what it does to a text.
struct KnownLimit {
  std::vector<TextReader> readers;
  std::vector<Treatment> treatments;  // it is shown with the first of them
  const char *pages;                  // those whose name holds this text
  const char *shown;
  const char *read;
  const char *reason;
};

/// All known limits.
const std::vector<KnownLimit> &KnownLimits();

/// The limits that apply to a page of this name.
std::vector<KnownLimit> KnownLimitsOf(TextReader reader, Treatment treatment, const std::string &page);

/// A line as it is copied under these limits.
std::string WithLimits(std::string line, const std::vector<KnownLimit> &limits);

/// A line without blanks beside marks, for where MuPDF puts them (tests/support/reader_versions.h).
std::string WithoutBlanksBesideMarks(const std::string &line);

}  // namespace quillbar::test
