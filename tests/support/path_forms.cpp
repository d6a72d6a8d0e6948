// SPDX-License-Identifier: MIT
#include "tests/support/path_forms.h"

#include <algorithm>

#include "tests/support/utf8_path.h"

namespace quillbar::test {
namespace {

namespace fs = std::filesystem;

#ifdef _WIN32
constexpr bool kIsWindows = true;
#else
constexpr bool kIsWindows = false;
#endif

// The form that Windows accepts whatever its length; elsewhere every path is accepted.
fs::path WithLongPrefix(const fs::path &path) {
  return kIsWindows ? PathOf("\\\\?\\" + Utf8(fs::path(path).make_preferred())) : path;
}

}  // namespace

PathForm::PathForm(Kind kind) : kind_(kind), folder_(scratch_.path()) {
  if (kind == Kind::kLongerThan260) {
    for (const char letter : {'a', 'b', 'c', 'd', 'e', 'f'}) Make(std::string(60, letter));
  } else {
    Make("Ωδή 手紙 \U0001F388");
  }
}

PathForm::~PathForm() {
  std::error_code ignored;
  for (const std::string &file : files_) fs::remove(OwnPath(file), ignored);
  // One by one: the standard library can't list folders with long paths on Windows.
  std::ranges::for_each(made_.rbegin(), made_.rend(), [&](const fs::path &path) { fs::remove(path, ignored); });
}

void PathForm::Make(const std::string &utf8Name) {
  folder_ /= PathOf(utf8Name);
  fs::create_directory(WithLongPrefix(folder_));
  made_.push_back(WithLongPrefix(folder_));
}

fs::path PathForm::File(const std::string &utf8Name) {
  files_.push_back(utf8Name);
  const fs::path file = folder_ / PathOf(utf8Name);
  switch (kind_) {
    case Kind::kForwardSlashes:
      return file.generic_u8string();
    case Kind::kWithLongPrefix:
      return WithLongPrefix(file);
    case Kind::kNetwork:
      return PathOf("\\\\quillbar-test.invalid\\share\\" + utf8Name);
    case Kind::kNetworkLongPrefix:
      return PathOf("\\\\?\\UNC\\quillbar-test.invalid\\share\\" + utf8Name);
    default:
      return file;
  }
}

fs::path PathForm::OwnPath(const std::string &utf8Name) const { return WithLongPrefix(folder_ / PathOf(utf8Name)); }

std::vector<PathForm::Kind> ReachablePathForms() {
  using enum PathForm::Kind;
  if (kIsWindows) return {kAnyCharacters, kLongerThan260, kForwardSlashes, kWithLongPrefix};
  return {kAnyCharacters, kLongerThan260};
}

std::string NameOf(PathForm::Kind kind) {
  switch (kind) {
    case PathForm::Kind::kAnyCharacters:
      return "AnyCharacters";
    case PathForm::Kind::kLongerThan260:
      return "LongerThan260";
    case PathForm::Kind::kForwardSlashes:
      return "ForwardSlashes";
    case PathForm::Kind::kWithLongPrefix:
      return "WithLongPrefix";
    case PathForm::Kind::kNetwork:
      return "Network";
    case PathForm::Kind::kNetworkLongPrefix:
      return "NetworkLongPrefix";
  }
  return {};
}

void PrintTo(PathForm::Kind kind, std::ostream *out) { *out << NameOf(kind); }

}  // namespace quillbar::test
