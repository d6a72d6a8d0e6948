// SPDX-License-Identifier: MIT
// Literal strings: what is written is read back byte for byte.
#include <gtest/gtest.h>
#include <hpdf.h>
#include <hpdf_objects.h>

#include <string>
#include <string_view>

#include "plugin/engine/fonts/document_fonts.h"
#include "plugin/engine/fonts/simple_font.h"
#include "plugin/engine/pages/content_writer.h"
#include "tests/plugin/engine/driver/library_document.h"

namespace quillbar {
namespace {

std::string EveryByte() {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
  return bytes;
}

// What a reader makes of a literal string whose only escapes are octal ones.
std::string Unescaped(std::string_view literal) {
  EXPECT_TRUE(literal.size() >= 2 && literal.front() == '(' && literal.back() == ')') << literal;
  std::string bytes;
  for (std::size_t i = 1; i + 1 < literal.size(); ++i) {
    if (literal[i] == '\\') {
      bytes.push_back(static_cast<char>(std::stoi(std::string(literal.substr(i + 1, 3)), nullptr, 8)));
      i += 3;
    } else {
      bytes.push_back(literal[i]);
    }
  }
  return bytes;
}

class LiteralStringTest : public testing::Test {
 protected:
  // `text` as a literal string, which is the same in objects and in the content of pages.
  std::string Written(std::string_view text) {
    const std::string inObject = Read([&](HPDF_Stream stream) {
      return HPDF_Stream_WriteEscapeText2(stream, text.data(), static_cast<HPDF_UINT>(text.size()));
    });
    // A font knows each code after its first show.
    for (int show = 0; show < 2; ++show) EXPECT_EQ(Shown(text), inObject + ' ') << show;
    return inObject;
  }

 private:
  std::string Shown(std::string_view text) {
    const std::string shown = Read([&](HPDF_Stream stream) {
      HPDF_TextWidth counted{};
      engine::ContentWriter content(stream);
      content.AppendString("()", text, [&](std::string_view part, char *end) {
        return engine::WriteShownCodes(font_, part, end, counted);
      });
      const HPDF_STATUS status = content.Finish();
      const auto *bytes = reinterpret_cast<const HPDF_BYTE *>(text.data());
      const HPDF_TextWidth expected = engine::WidthOfText(font_, {bytes, text.size()}, nullptr);
      EXPECT_EQ(counted.width, expected.width);
      EXPECT_EQ(counted.numchars, expected.numchars);
      EXPECT_EQ(counted.numspace, expected.numspace);
      return status;
    });
    return shown;
  }

  template <typename Write>
  std::string Read(Write write) {
    HPDF_Stream stream = HPDF_MemStream_New(document_.document->mmgr, 4096);
    EXPECT_EQ(write(stream), HPDF_STATUS{HPDF_OK});
    std::string written(HPDF_Stream_Size(stream), '\0');
    auto size = static_cast<HPDF_UINT>(written.size());
    HPDF_Stream_Seek(stream, 0, HPDF_SEEK_SET);
    if (size != 0) HPDF_Stream_Read(stream, reinterpret_cast<HPDF_BYTE *>(written.data()), &size);
    HPDF_Stream_Free(stream);
    return written;
  }

  LibraryDocument document_;
  HPDF_Font font_ = Call<engine::GetFont>(document_.document, "Helvetica", "WinAnsiEncoding");
};

TEST_F(LiteralStringTest, EveryByteIsReadBackAndIsPrintableInTheFile) {
  const std::string written = Written(EveryByte());
  EXPECT_EQ(Unescaped(written), EveryByte());
  for (const char c : written.substr(1, written.size() - 2)) {
    EXPECT_TRUE(c >= ' ' && c <= '~') << static_cast<int>(c);
    EXPECT_EQ(std::string_view("%#/()<>[]{}").find(c), std::string_view::npos) << c;
  }
  EXPECT_EQ(Written("a(b)\\\xE9"), "(a\\050b\\051\\134\\351)");
}

TEST_F(LiteralStringTest, TextOfAnyLengthIsWhole) {
  for (const std::size_t length : {0, 1, 7, 8, 9, 255, 256, 257, 511, 512, 513, 5000, 65535}) {
    const std::string plain(length, 'x'), escaped(length, '(');
    EXPECT_EQ(Written(plain), "(" + plain + ")");
    EXPECT_EQ(Unescaped(Written(escaped)), escaped);
  }
}

TEST_F(LiteralStringTest, AnEscapeAtAnyPlaceLeavesItsNeighboursAlone) {
  for (std::size_t place = 0; place < 300; ++place) {
    std::string text(300, 'x');
    text[place] = '\\';
    ASSERT_EQ(Unescaped(Written(text)), text) << place;
  }
}

TEST_F(LiteralStringTest, NamesEscapeWhatIsNotRegular) {
  LibraryDocument document;
  HPDF_Stream stream = HPDF_MemStream_New(document.document->mmgr, 0);
  EXPECT_EQ(HPDF_Stream_WriteEscapeName(stream, "A#b (\x7F\xE4)/z"), HPDF_OK);
  EXPECT_EQ(ContentOf(stream), "/A#23b#20#28#7F#E4#29#2Fz");
  HPDF_Stream_Free(stream);
}

TEST_F(LiteralStringTest, NamesHaveOneTo127Bytes) {
  LibraryDocument document;
  const HPDF_MMgr memory = document.document->mmgr;
  EXPECT_EQ(HPDF_Name_New(memory, ""), nullptr);
  EXPECT_EQ(HPDF_Error_GetCode(memory->error), HPDF_STATUS{HPDF_NAME_INVALID_VALUE});
  HPDF_Error_Reset(memory->error);
  EXPECT_EQ(HPDF_Name_New(memory, std::string(128, 'x').c_str()), nullptr);
  EXPECT_EQ(HPDF_Error_GetCode(memory->error), HPDF_STATUS{HPDF_NAME_OUT_OF_RANGE});
  HPDF_Error_Reset(memory->error);
  HPDF_Name name = HPDF_Name_New(memory, std::string(127, 'x').c_str());
  ASSERT_NE(name, nullptr);
  HPDF_FreeMem(memory, name);
}

}  // namespace
}  // namespace quillbar
