// SPDX-License-Identifier: MIT
// What a reader gives back as another text, whoever wrote the file. A test shows each of them on a file that
// isn't ours.
#pragma once

#include <string>
#include <vector>

#include "tests/readers/text_readers.h"
#include "tests/readers/treatment.h"

namespace quillbar::test {

struct KnownLimit {
  std::vector<TextReader> readers;
  std::vector<Treatment> treatments;  // it is shown with the first of them
  const char *pages;                  // those whose name holds this text
  const char *shown;
  const char *read;
  const char *reason;
};

const std::vector<KnownLimit> &KnownLimits();

/// Those that hold for a page of this name.
std::vector<KnownLimit> KnownLimitsOf(TextReader reader, Treatment treatment, const std::string &page);

/// A line as it comes back under these limits.
std::string WithLimits(std::string line, const std::vector<KnownLimit> &limits);

}  // namespace quillbar::test
