// SPDX-License-Identifier: MIT
// Numbers that are not finite, and very large and very small ones, in every member that takes a number.
#include <array>
#include <cmath>
#include <limits>

#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/judges.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

enum class Inside { kPage, kPath, kText };

// A member with numeric parameters or a numeric property, with arguments that it accepts.
struct NumericMember {
  const char *name;
  Inside inside;
  std::vector<float> good;
  bool isProperty = false;
};

std::vector<NumericMember> NumericMembers() {
  return {
      {"Rectangle", Inside::kPath, {1, 2, 3, 4}},
      {"Ellipse", Inside::kPath, {1, 2, 3, 4}},
      {"Arc", Inside::kPath, {1, 2, 3, 0, 45}},
      {"MoveTo", Inside::kPath, {1, 2}},
      {"LineTo", Inside::kPath, {1, 2}},
      {"CurveTo", Inside::kPath, {1, 2, 3, 4, 5, 6}},
      {"CurveTo2", Inside::kPath, {1, 2, 3, 4}},
      {"CurveTo3", Inside::kPath, {1, 2, 3, 4}},
      {"SetCMYKFill", Inside::kPage, {0, 1, 0, 1}},
      {"SetCMYKStroke", Inside::kPage, {0, 1, 0, 1}},
      {"SetRGBFill", Inside::kPage, {0, 1, 0}},
      {"SetRGBStroke", Inside::kPage, {0, 1, 0}},
      {"ConcatMatrix", Inside::kPage, {1, 0, 0, 1, 5, 6}},
      {"LineWidth", Inside::kPage, {2}, true},
      {"Height", Inside::kPage, {500}, true},
      {"Width", Inside::kPage, {500}, true},
      {"MoveTextPosition", Inside::kText, {1, 2}},
      {"SetTextMatrix", Inside::kText, {1, 0, 0, 1, 5, 6}},
      {"SetTextRotation", Inside::kText, {30, 5, 6}},
      {"TextLeading", Inside::kText, {12}, true},
      {"TextRise", Inside::kText, {3}, true},
      {"WordSpace", Inside::kText, {3}, true},
  };
}

void Use(const ScriptObject &page, const NumericMember &member, const std::vector<float> &numbers) {
  if (member.isProperty) {
    page.Set(member.name, numbers.at(0));
    return;
  }
  std::vector<host::Value> arguments(numbers.begin(), numbers.end());
  page.host().CallByRef(page.handle(), member.name, arguments);
}

class Numbers : public PluginTest {
 protected:
  static ScriptObject AddPageIn(const Document &document, Inside inside, bool fromTop) {
    const ScriptObject page = document.AddPage();
    page.Set("TransformCoordinates", fromTop);
    if (inside == Inside::kPath) page.Call("MoveTo", 0, 0);
    if (inside == Inside::kText) page.Call("BeginText");
    return page;
  }
  static void Leave(const ScriptObject &page, Inside inside) {
    if (inside == Inside::kPath) page.Call("EndPath");
    if (inside == Inside::kText) page.Call("EndText");
  }
};

TEST_F(Numbers, ThatAreNotFiniteAreRefusedInEveryPlaceAndNothingIsWritten) {
  constexpr std::array kNotFinite{std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                                  -std::numeric_limits<float>::infinity()};
  const Failure refused{library_error::kInvalidParameter, 0};
  const Document document = NewDocument();
  std::vector<std::pair<std::string, std::size_t>> pages;  // the member and how many operators its page must have
  for (const NumericMember &member : NumericMembers()) {
    for (const bool fromTop : {false, true}) {
      SCOPED_TRACE(testing::Message() << member.name << (fromTop ? " from the top" : ""));
      const ScriptObject page = AddPageIn(document, member.inside, fromTop);
      for (std::size_t place = 0; place < member.good.size(); ++place) {
        for (const float number : kNotFinite) {
          std::vector<float> numbers = member.good;
          numbers[place] = number;
          Use(page, member, numbers);
          EXPECT_THAT(document.TakeFailures(), ElementsAre(refused)) << number << " in place " << place;
          EXPECT_EQ(document.LastFailure(), refused);
        }
      }
      // The page works on.
      Use(page, member, member.good);
      EXPECT_THAT(document.TakeFailures(), IsEmpty());
      Leave(page, member.inside);
      const bool writesNothing = member.name == std::string_view("Height") || member.name == std::string_view("Width");
      std::size_t operators = member.inside == Inside::kPage ? 0 : 2;
      operators += writesNothing ? 0 : 1;
      if (member.name == std::string_view("Ellipse")) operators += 4;
      if (member.name == std::string_view("Arc")) operators += 1;
      pages.emplace_back(member.name, operators);
    }
  }
  const std::string saved = document.Saved();
  const PdfFile file(saved);
  ASSERT_EQ(file.PageCount(), pages.size());
  for (std::size_t page = 0; page < pages.size(); ++page) {
    EXPECT_EQ(file.Operators(page).size(), pages[page].second) << pages[page].first << '\n' << file.Content(page);
  }
  EXPECT_TRUE(JudgedFlawless(std::string_view(saved)));
}

TEST_F(Numbers, FontSizesThatAreNotFiniteAreRefused) {
  const Document document = NewDocument();
  const ScriptObject font = document.GetFont("Helvetica");
  const ScriptObject page = document.AddPage();
  for (const float size : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
    page.Call("SetFont", font, size);
    EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kInvalidParameter, 0}));
  }
  EXPECT_THAT(document.Operators(), IsEmpty());
}

TEST_F(Numbers, OfAnySizeEndInAFileThatReadersTake) {
  constexpr std::array kExtreme{std::numeric_limits<float>::max(),
                                -std::numeric_limits<float>::max(),
                                1e30F,
                                1e10F,
                                32768.0F,
                                -32769.0F,
                                1e-10F,
                                std::numeric_limits<float>::denorm_min(),
                                -std::numeric_limits<float>::min()};
  const Document document = NewDocument();
  for (const NumericMember &member : NumericMembers()) {
    for (const bool fromTop : {false, true}) {
      const ScriptObject page = AddPageIn(document, member.inside, fromTop);
      for (std::size_t place = 0; place < member.good.size(); ++place) {
        for (const float number : kExtreme) {
          SCOPED_TRACE(testing::Message() << member.name << ' ' << number << " in place " << place);
          std::vector<float> numbers = member.good;
          numbers[place] = number;
          Use(page, member, numbers);
          EXPECT_LE(document.TakeFailures().size(), 1U);
        }
      }
      Leave(page, member.inside);
    }
  }
  const std::string saved = document.Saved();
  const PdfFile file(saved);
  for (std::size_t page = 0; page < file.PageCount(); ++page) {
    for (const ContentOperator &operation : file.Operators(page)) {
      for (const Operand &operand : operation.operands) {
        EXPECT_EQ(operand.kind, Operand::Kind::kNumber) << operation;
        EXPECT_LT(std::fabs(operand.number), 2147483648.0) << operation;
      }
    }
  }
  const TemporaryFolder folder;
  WriteFile(folder / "saved.pdf", saved);
  // Renderers complain of coordinates that they can't place; what counts is the syntax.
  EXPECT_TRUE(Judged(Judge::kQpdf, folder / "saved.pdf"));
}

TEST_F(Numbers, SinglesArriveExactly) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  const float numbers[] = {0.1F, 1.0F / 3, 12345.678F, 0.000123456F, 16777216.0F, -98.7654F, 99999.99F, 3.1415927F};
  for (const float number : numbers) page.Call("MoveTo", number, -number);
  page.Call("EndPath");
  const std::vector<ContentOperator> operators = document.Operators();
  ASSERT_EQ(operators.size(), std::size(numbers) + 1);
  for (std::size_t index = 0; index < std::size(numbers); ++index) {
    EXPECT_THAT(operators[index], Op("m", numbers[index], -numbers[index]));
  }
}

TEST_F(Numbers, DoublesOfTheScriptAreRoundedToSingles) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("MoveTo", 16777217.0, 0.1);
  page.Call("EndPath");
  EXPECT_THAT(document.Operators().at(0), Op("m", 16777216.0F, 0.1F));
}

}  // namespace
}  // namespace quillbar::test
