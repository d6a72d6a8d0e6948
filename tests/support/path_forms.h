// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"

namespace quillbar::test {

/// A folder whose path has one of the forms that programs stumble over. The folder is made anew, and removed with the
/// files that were named in it.
class PathForm {
 public:
  enum class Kind {
    kAnyCharacters,      // no code page has all of them
    kLongerThan260,      // beyond Windows' limit for plain paths
    kForwardSlashes,     // the separator that Windows accepts but doesn't write
    kWithLongPrefix,     // "\\?\", with which Windows takes a path as it stands
    kNetwork,            // "\\server\share", of a server that isn't there
    kNetworkLongPrefix,  // "\\?\UNC\server\share", likewise
  };

  explicit PathForm(Kind kind);
  ~PathForm();
  PathForm(const PathForm &) = delete;
  PathForm &operator=(const PathForm &) = delete;

  /// A file's path in this form, for the program under test.
  std::filesystem::path File(const std::string &utf8Name);
  /// The same file for this test, in the form that every function accepts.
  std::filesystem::path OwnPath(const std::string &utf8Name) const;

 private:
  void Make(const std::string &utf8Name);

  Kind kind_;
  TemporaryFolder scratch_;
  std::filesystem::path folder_;
  std::vector<std::filesystem::path> made_;
  std::vector<std::string> files_;
};

/// The forms in which a file can be reached on this platform.
std::vector<PathForm::Kind> ReachablePathForms();

void PrintTo(PathForm::Kind kind, std::ostream *out);
/// For names of tests.
std::string NameOf(PathForm::Kind kind);

}  // namespace quillbar::test
