// SPDX-License-Identifier: MIT
#include "tests/shaping/drawn_text.h"

#include <gtest/gtest.h>

#include <set>

namespace quillbar::test {
namespace {

std::string StreamOf(QPDFObjectHandle stream) {
  const std::shared_ptr<Buffer> data = stream.getStreamData();
  return {reinterpret_cast<const char *>(data->getBuffer()), data->getSize()};
}

unsigned TwoBytes(const std::string &bytes, std::size_t at) {
  return static_cast<unsigned>(static_cast<unsigned char>(bytes.at(at))) << 8 |
         static_cast<unsigned char>(bytes.at(at + 1));
}

QPDFObjectHandle ProgramOf(QPDFObjectHandle descriptor) {
  QPDFObjectHandle trueType = descriptor.getKey("/FontFile2");
  return trueType.isStream() ? trueType : descriptor.getKey("/FontFile3");
}

// The array W: `first [width …]` or `first last width`, in thousandths of an em.
std::map<unsigned, double> WidthsOf(QPDFObjectHandle array) {
  std::map<unsigned, double> widths;
  if (!array.isArray()) return widths;
  for (int i = 0; i + 1 < array.getArrayNItems();) {
    const auto first = static_cast<unsigned>(array.getArrayItem(i).getIntValue());
    QPDFObjectHandle next = array.getArrayItem(i + 1);
    if (next.isArray()) {
      for (int k = 0; k < next.getArrayNItems(); ++k)
        widths[first + static_cast<unsigned>(k)] = next.getArrayItem(k).getNumericValue();
      i += 2;
    } else {
      for (unsigned code = first; code <= static_cast<unsigned>(next.getIntValue()); ++code)
        widths[code] = array.getArrayItem(i + 2).getNumericValue();
      i += 3;
    }
  }
  return widths;
}

}  // namespace

struct DrawnTexts::Font {
  explicit Font(QPDFObjectHandle font)
      : descendant(font.getKey("/DescendantFonts").getArrayItem(0)),
        outlines(StreamOf(ProgramOf(descendant.getKey("/FontDescriptor")))),
        widths(WidthsOf(descendant.getKey("/W"))),
        otherWidth(descendant.hasKey("/DW") ? descendant.getKey("/DW").getNumericValue() : 1000) {
    EXPECT_EQ(font.getKey("/Encoding").unparse(), "/Identity-H") << "codes are glyphs of the descendant font";
    QPDFObjectHandle map = descendant.getKey("/CIDToGIDMap");
    if (map.isStream()) glyphs = StreamOf(map);
  }

  double WidthOf(unsigned code) const {
    const auto found = widths.find(code);
    return found == widths.end() ? otherWidth : found->second;
  }
  // In a CFF program without a map the code chooses the glyph too: its characters are numbered as its glyphs are.
  unsigned GlyphOf(unsigned code) const {
    if (glyphs.empty()) return code;
    return 2 * code + 1 < glyphs.size() ? TwoBytes(glyphs, 2 * code) : 0;
  }

  QPDFObjectHandle descendant;
  FontOutlines outlines;
  std::map<unsigned, double> widths;
  double otherWidth;
  std::string glyphs;
};

DrawnTexts::Font &DrawnTexts::FontOf(std::size_t page, const std::string &name) {
  QPDFObjectHandle font = file_.Font(page, name);
  std::shared_ptr<Font> &known = fonts_[font.getObjGen()];
  if (!known) known = std::make_shared<Font>(font);
  return *known;
}

void DrawnTexts::Show(Font &font, const std::string &codes, double rise, double characterSpace, DrawnText &text,
                      double &x) {
  const double unit = 1.0 / font.outlines.UnitsPerEm();
  for (std::size_t i = 0; i + 1 < codes.size(); i += 2) {
    const unsigned code = TwoBytes(codes, i);
    for (const Contour &contour : font.outlines.ContoursOf(font.GlyphOf(code)))
      text.contours.push_back({contour.shape, x + contour.x * unit, rise + contour.y * unit});
    x += font.WidthOf(code) / 1000 + characterSpace;
  }
}

void DrawnTexts::ReadPage(std::size_t page, std::vector<DrawnText> &texts) {
  static const std::set<std::string> kWithoutPlaces{"ET", "BMC", "BDC", "EMC", "q",  "Q", "g",
                                                    "rg", "k",   "gs",  "Tr",  "TL", "G", "RG"};
  Font *font = nullptr;
  // Places are divided by the size, which is that of the whole text.
  double size = 1, x = 0, start = 0, rise = 0, characterSpace = 0;
  bool isPlaced = false;
  for (const ContentOperator &operation : file_.Operators(page)) {
    const std::string &name = operation.name;
    const std::vector<Operand> &operands = operation.operands;
    if (name == "BT") {
      texts.emplace_back();
      x = start = rise = 0;
      isPlaced = false;
    } else if (name == "Tf") {
      font = &FontOf(page, operands.at(0).text);
      size = operands.at(1).number;
    } else if (name == "Td") {
      // The first one places the text on the page.
      if (isPlaced) {
        start += operands.at(0).number / size;
        x = start;
      }
      isPlaced = true;
    } else if (name == "Ts") {
      rise = operands.at(0).number / size;
    } else if (name == "Tc") {
      characterSpace = operands.at(0).number / size;
    } else if (name == "Tj") {
      Show(*font, operands.at(0).text, rise, characterSpace, texts.back(), x);
    } else if (name == "TJ") {
      for (const Operand &element : operands.at(0).elements) {
        if (element.kind == Operand::Kind::kNumber)
          x -= element.number / 1000;
        else
          Show(*font, element.text, rise, characterSpace, texts.back(), x);
      }
    } else if (!kWithoutPlaces.contains(name)) {
      ADD_FAILURE() << "the operator " << operation << " isn't expected in text";
    }
    if (!texts.empty()) texts.back().advance = x;
  }
}

std::vector<DrawnText> DrawnTexts::Read() {
  std::vector<DrawnText> texts;
  for (std::size_t page = 0; page < file_.PageCount(); ++page) ReadPage(page, texts);
  return texts;
}

}  // namespace quillbar::test
