// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace quillbar::program {

/// A document of a run.
struct WatchedDocument {
  std::string name;            // UTF-8, without the folder
  std::filesystem::path copy;  // a file that stays as it is while the document can be asked for
};

/// What the page shows.
struct WatchReport {
  bool isRunning = false;
  int status = 0;
  double seconds = 0;
  std::string output, errors, hint;
  /// Those of the last run that wrote any, and whether that was an earlier one.
  std::vector<WatchedDocument> documents;
  bool areEarlier = false;
};

/// The report as the page reads it: a JSON object. `addresses` are those of the documents, in their order. Of what scripts
/// print, bytes that aren't UTF-8 become U+FFFD.
std::string PageState(const WatchReport &report, const std::string &script, std::uint64_t revision,
                      const std::vector<std::string> &addresses);

}  // namespace quillbar::program
