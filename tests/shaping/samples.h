// SPDX-License-Identifier: MIT
// The scripts and fonts of Debian packages in which shaped text is judged.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "tests/shaping/reference_shaper.h"
#include "tests/shaping/script_names.h"

namespace quillbar::test {

/// A font for a writing system, and how text in it is shaped.
struct Sample {
  WritingSystem system;
  Shaping shaping;
  const char *fontName;
  const char *package;
  const char *path;
};
void PrintTo(const Sample &sample, std::ostream *out);

/// A sample's name in the name of a test.
std::string NameOf(const Sample &sample);

const std::vector<Sample> &Samples();
/// One sample for each writing system whose text is shaped.
std::vector<Sample> ShapedSamples();

/// A text as scripts pass it: with a mark where it is to be ordered from right to left.
std::string AsGiven(const Sample &sample, const std::string &text);

}  // namespace quillbar::test
