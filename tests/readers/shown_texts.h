// SPDX-License-Identifier: MIT
// Documents with every kind of font, with a page for each font and encoding, and the text that a reader must find on
// it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/plugin/driver/plugin_test.h"
#include "tests/readers/encoding_texts.h"

namespace quillbar::test {

enum class FontKind { kTrueType, kStandard, kType1 };

/// Texts are UTF-8.
struct ShownLine {
  std::string text;         // what ShowText is given
  std::string leftToRight;  // the characters on the page
  std::string asRead;       // in the order in which people read them: the reverse for Hebrew and Arabic
};

/// A page and the texts that it shows.
struct ShownPage {
  std::string name;  // font and encoding
  std::vector<ShownLine> lines;
};

/// A document that shows texts, and the list of its pages.
class ShownTexts {
 public:
  /// Shows all texts of this kind, each font and encoding on a new page of the document.
  ShownTexts(const Document &document, FontKind kind);

  const std::vector<ShownPage> &pages() const { return pages_; }

 private:
  void ShowTrueType();
  void ShowStandard();
  void ShowType1();
  void ShowAll(const std::string &name, const ScriptObject &font, const EncodingText &text, bool (*has)(char32_t));
  void Show(const std::string &name, const ScriptObject &font, std::vector<ShownLine> lines);
  ScriptObject FontIn(const ScriptObject &font, const EncodingText &text) const;
  ScriptObject File(const std::filesystem::path &path) const;

  const Document &document_;
  std::vector<ShownPage> pages_;
};

}  // namespace quillbar::test
