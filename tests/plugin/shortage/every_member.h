// SPDX-License-Identifier: MIT
// A script that uses every member of both plugins, whatever some of them give back.
#pragma once

#include <filesystem>
#include <set>
#include <string>

#include "tests/plugin/driver/document.h"

namespace quillbar::test {

/// What a script left behind.
struct ScriptResult {
  std::vector<Failure> failures;  ///< that ErrorLog told, in their order
  std::string file;               ///< what the last SaveToString gave, with memory granted again
  bool hasDocument = false;       ///< whether the document answered at all
};

/// The members that the scripts use, as "Page.LineTo".
std::set<std::string> UsedMembers();

/// Makes a document of text, pictures, links and paths, saves it in all three ways, the file into `folder`, and calls
/// `grant` before it saves for the last time. Everything that it made is released when it returns.
ScriptResult UseDocument(host::Host &host, const std::filesystem::path &folder, void (*grant)());

/// Makes, loads, changes and copies rasters.
void UseRasters(host::Host &host, const std::filesystem::path &picture);

}  // namespace quillbar::test
