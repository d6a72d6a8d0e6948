// SPDX-License-Identifier: MIT
// The pages of the script language describe everything that its library has.
#include <gtest/gtest.h>

#include <string>

#include "host/language/library/classes/language_classes.h"
#include "host/language/library/library.h"
#include "tests/docs/reference_pages.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using language::LibraryFunction;

/// A declaration of the tables, with what it belongs to.
std::string DeclarationOf(const LibraryFunction &function) {
  std::string text(function.declaration);
  if (function.takesList) text.insert(text.find("values()"), "ParamArray ");
  return function.owner.empty() ? text : std::string(function.owner) + "." + text;
}

/// All that the language brings, a declaration in each line.
std::string Declarations() {
  std::string lines;
  const auto add = [&lines](const std::string &line) { lines += line + "\n"; };
  for (const auto table : {language::StringFunctions(), language::ConversionFunctions(),
                           language::MathematicsFunctions(), language::ArrayFunctions(), language::SystemFunctions(),
                           language::VariantFunctions(), language::StreamFunctions(), language::FolderFunctions(),
                           language::DatabaseFunctions(), language::DictionaryFunctions(), language::JsonFunctions()}) {
    for (const LibraryFunction &function : table) add(DeclarationOf(function));
  }
  host::Host host;
  language::RegisterLanguageClasses(host);
  for (const host::ClassInfo *info : host.registry().Classes()) {
    const std::string prefix = info->name + ".";
    std::size_t members = 0;
    for (const host::MethodInfo &method : info->methods) {
      if (method.IsPrivate()) continue;
      ++members;
      add(method.IsConstructor() ? "New " + info->name + method.declaration.substr(method.declaration.find('('))
                                 : prefix + method.declaration);
    }
    for (const host::PropertyInfo &property : info->properties) {
      ++members;
      add(prefix + property.name + " as " + property.typeName + (property.IsReadOnly() ? ", read-only" : ""));
    }
    for (const host::EnumerationInfo &enumeration : info->enumerations) add("Enum " + enumeration.qualifiedName);
    if (members == 0) add("class " + info->name);
  }
  return lines;
}

class LanguageReference : public ::testing::Test {
 protected:
  void SetUp() override {
    if (const std::string reason = ReasonNotToCheck(); !reason.empty()) GTEST_SKIP() << reason;
  }

  /// What the check finds missing of these declarations.
  std::string FaultsFor(const std::string &declarations) {
    const TemporaryFolder folder;
    WriteFile(folder / "declarations", declarations);
    return FaultsFoundBy("check_language.py", QUILLBAR_DOCS, folder / "declarations");
  }
};

TEST_F(LanguageReference, DescribesTheWholeLibrary) { EXPECT_EQ(FaultsFor(Declarations()), ""); }

TEST_F(LanguageReference, IsRefusedWhereSomethingIsMissing) {
  std::string declarations = Declarations();
  EXPECT_EQ(FaultsFor(declarations + "String.Reversed() As String\nclass PaperException\n"),
            "docs/language: String.Reversed() As String is missing\ndocs/language: class PaperException is missing\n");
  const std::string taken = "Ticks() As Integer\n";
  declarations.erase(declarations.find("\n" + taken) + 1, taken.size());
  EXPECT_EQ(FaultsFor(declarations), "docs/language/system.md: Time: there is no Ticks() As Integer\n");
}

}  // namespace
}  // namespace quillbar::test
