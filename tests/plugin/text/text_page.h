// SPDX-License-Identifier: MIT
// What tests of text share: fonts of a document, a page in a text object, and what was written on it.
#pragma once

#include <string>
#include <vector>

#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {

/// Members of Font.FontEncodingEnum.
namespace font_encoding {
inline constexpr std::int64_t kMacRoman = 0;
inline constexpr std::int64_t kWindowsAnsi = 1;
inline constexpr std::int64_t kCyrillic = 5;  // ISO 8859-5
inline constexpr std::int64_t kAutomatic = 100;
}  // namespace font_encoding

class TextTest : public PluginTest {
 protected:
  /// A page of the document in a text object.
  static ScriptObject TextPage(const Document &document) {
    const ScriptObject page = document.AddPage();
    page.Call("BeginText");
    return page;
  }
  static ScriptObject TextPage(const Document &document, const ScriptObject &font, double size = 10) {
    const ScriptObject page = TextPage(document);
    page.Call("SetFont", font, size);
    return page;
  }

  /// A page with Courier in 10 points, in which every character is 6 points wide.
  static ScriptObject CourierPage(const Document &document) { return TextPage(document, document.GetFont("Courier")); }

  /// Calls a method with ByRef arguments; they come back in `arguments`.
  host::Value CallByRef(const ScriptObject &object, std::string_view method, std::vector<host::Value> &arguments) {
    return host().CallByRef(object.handle(), method, arguments);
  }

  ScriptObject LoadTrueType(const Document &document, const std::string &path) {
    return document.CallObject("LoadTrueTypeFont", NewFolderItem(path));
  }

  /// A page's fonts and texts in the order of its content: "/Helvetica ISO8859-7" for each font set, "(text)"
  /// for each text shown, in the bytes of the font.
  static std::vector<std::string> Story(const Document &document, std::size_t page = 0) {
    const PdfFile file(document.Saved());
    std::vector<std::string> story;
    for (const ContentOperator &operation : file.Operators(page)) {
      if (operation.name == "Tf") {
        QPDFObjectHandle font = file.Font(page, operation.operands.at(0).text);
        story.push_back(font.getKey("/BaseFont").getName() + " " + EncodingOf(font));
      } else if (operation.name == "Tj" || operation.name == "'") {
        story.push_back("(" + operation.operands.at(0).text + ")");
      }
    }
    return story;
  }

 private:
  // The name of a font's encoding, or the code of its first difference with the glyph there.
  static std::string EncodingOf(QPDFObjectHandle font) {
    QPDFObjectHandle encoding = font.getKey("/Encoding");
    if (encoding.isName()) return encoding.getName().substr(1);
    QPDFObjectHandle differences = encoding.getKey("/Differences");
    return std::to_string(differences.getArrayItem(0).getIntValue()) + differences.getArrayItem(1).getName();
  }
};

}  // namespace quillbar::test
