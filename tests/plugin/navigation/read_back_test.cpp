// SPDX-License-Identifier: MIT
// What documents say beside their pages comes back from every reader as it went in: information, bookmarks,
// notes and addresses.
#include <gmock/gmock.h>

#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/document_readers.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::AnyOf;
using testing::SizeIs;

struct Language {
  const char *name;
  std::string text;
  // The path of an address, as it stands and with what is not ASCII escaped.
  std::string path, escapedPath;
};

const std::vector<Language> &Languages() {
  static const std::vector<Language> languages{
      {"English", "Plain (with) \\ marks", "plain", "plain"},
      {"German", "Größe für Übermorgen – „schön“, 5 €", "Größe", "Gr%C3%B6%C3%9Fe"},
      {"Greek", "Καλημέρα, Ελλάδα", "Ελλάδα", "%CE%95%CE%BB%CE%BB%CE%AC%CE%B4%CE%B1"},
      {"Japanese", "日本語の目次、第１章", "日本", "%E6%97%A5%E6%9C%AC"},
      {"Arabic", "الفصل الأول: مرحبا", "مرحبا", "%D9%85%D8%B1%D8%AD%D8%A8%D8%A7"},
      {"Emoji", "smile 😀 and 🖋 write", "😀", "%F0%9F%98%80"}};
  return languages;
}

class ReadBack : public PluginTest, public testing::WithParamInterface<DocumentReader> {
 protected:
  /// A document for each language, with two pages, and what this test's reader finds in it.
  void CompareAll(bool isEncrypted) {
    const TemporaryFolder folder;
    std::vector<std::filesystem::path> files;
    for (const Language &language : Languages()) {
      files.push_back(folder / (std::string(language.name) + ".pdf"));
      WriteFile(files.back(), Saved(language, isEncrypted));
    }
    const std::vector<ReadDocument> read = ReadBy(GetParam(), files);
    ASSERT_EQ(read.size(), files.size());
    for (std::size_t i = 0; i < files.size(); ++i) Compare(Languages()[i], read[i]);
  }

 private:
  std::string Saved(const Language &language, bool isEncrypted) {
    const Document document = NewDocument();
    if (isEncrypted) document.Call("SetPassword", "owner", "");
    document.Set("Title", language.text);
    document.Set("Author", "A " + language.text);
    document.Set("Subject", "S " + language.text);
    document.Set("KeyWords", "K " + language.text);
    document.Set("Creator", "C " + language.text);
    const ScriptObject first = document.AddPage(), second = document.AddPage();
    first.Call("CreateTextAnnotation", language.text, 10.0F, 10.0F, 30.0F, 30.0F);
    first.Call("CreateURLAnnotation", "https://example.org/" + language.path, 50.0F, 10.0F, 90.0F, 30.0F);
    first.Call("CreateURLAnnotation", "https://example.org/" + language.escapedPath, 50.0F, 50.0F, 90.0F, 70.0F);
    const ScriptObject upper = document.CallObject("CreateOutline", host::Value::Nil(), language.text);
    const ScriptObject lower = document.CallObject("CreateOutline", upper, "2 " + language.text);
    upper.Call("SetDestination", first.CallObject("CreateDestination"));
    lower.Call("SetDestination", second.CallObject("CreateDestination"));
    EXPECT_THAT(document.TakeFailures(), SizeIs(0));
    return document.Saved();
  }

  static void Compare(const Language &language, const ReadDocument &read) {
    SCOPED_TRACE(language.name);
    ReadDocument document = read;
    EXPECT_EQ(document.information["Title"], language.text);
    EXPECT_EQ(document.information["Author"], "A " + language.text);
    EXPECT_EQ(document.information["Subject"], "S " + language.text);
    EXPECT_EQ(document.information["Keywords"], "K " + language.text);
    EXPECT_EQ(document.information["Creator"], "C " + language.text);

    ASSERT_THAT(document.bookmarks, SizeIs(1));
    EXPECT_EQ(document.bookmarks[0].title, language.text);
    EXPECT_EQ(document.bookmarks[0].page, 1);
    ASSERT_THAT(document.bookmarks[0].children, SizeIs(1));
    EXPECT_EQ(document.bookmarks[0].children[0].title, "2 " + language.text);
    EXPECT_EQ(document.bookmarks[0].children[0].page, 2);

    ASSERT_THAT(document.pages, SizeIs(2));
    const std::vector<ReadAnnotation> &annotations = document.pages[0].annotations;
    ASSERT_THAT(annotations, SizeIs(3));
    EXPECT_EQ(annotations[0].contents, language.text);
    // Readers may escape what they open.
    EXPECT_THAT(annotations[1].address,
                AnyOf("https://example.org/" + language.path, "https://example.org/" + language.escapedPath));
    EXPECT_EQ(annotations[2].address, "https://example.org/" + language.escapedPath);
  }
};

TEST_P(ReadBack, AsItWentIn) {
  QUILLBAR_NEEDS_READER(GetParam());
  CompareAll(false);
}

TEST_P(ReadBack, AsItWentInFromEncryptedFiles) {
  QUILLBAR_NEEDS_READER(GetParam());
  CompareAll(true);
}

INSTANTIATE_TEST_SUITE_P(Readers, ReadBack, testing::ValuesIn(kAllDocumentReaders),
                         [](const auto &made) { return NameOf(made.param); });

}  // namespace
}  // namespace quillbar::test
