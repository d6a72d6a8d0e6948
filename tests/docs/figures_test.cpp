// SPDX-License-Identifier: MIT
// The figures of the reference, read from its text and checked on the running plugin.
#include <cmath>

#include "tests/docs/reference_pages.h"
#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/pattern.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The next number above, or below, that a Single can hold.
float Above(double figure) { return std::nextafter(static_cast<float>(figure), INFINITY); }
float Below(double figure) { return std::nextafter(static_cast<float>(figure), -INFINITY); }

class Figures : public PluginTest {
 protected:
  /// The numbers that the expression's groups match in what the reference says of a member. Commas separate thousands.
  static std::vector<double> In(const std::string &member, const std::string &expression) {
    const std::string entry = ReferenceEntry(member);
    const PatternMatch match = FirstMatchIn(entry, expression);
    std::vector<double> figures;
    if (match.empty()) {
      throw std::runtime_error("the reference says nothing of the form " + expression + " of " + member);
    }
    for (std::size_t group = 1; group < match.size(); ++group) {
      figures.push_back(std::stod(WithReplaced(match[group], ",", "")));
    }
    return figures;
  }

  /// The failures of what is done to a page in its page description mode.
  template <class Action>
  std::vector<std::uint32_t> ErrorsOf(Action action) {
    action(page_);
    std::vector<std::uint32_t> errors;
    for (const Failure &failure : document_.TakeFailures()) errors.push_back(failure.number);
    return errors;
  }

  void SetUp() override {
    PluginTest::SetUp();
    document_ = NewDocument();
    page_ = document_.AddPage();
  }
  void TearDown() override {
    page_ = {};
    document_ = {};
    PluginTest::TearDown();
  }

  /// A property accepts both ends of a range and refuses numbers outside of it.
  void ExpectRange(const char *property, double low, double high, double error) {
    const auto refused = ElementsAre(static_cast<std::uint32_t>(error));
    const auto set = [&](float value) {
      return ErrorsOf([=](const ScriptObject &page) { page.Set(property, value); });
    };
    for (const double end : {low, high}) {
      EXPECT_THAT(set(static_cast<float>(end)), IsEmpty()) << property;
      EXPECT_EQ(page_.GetSingle(property), static_cast<float>(end));
    }
    EXPECT_THAT(set(Below(low)), refused) << property;
    EXPECT_THAT(set(Above(high)), refused) << property;
    EXPECT_EQ(page_.GetSingle(property), static_cast<float>(high));
  }

  Document document_;
  ScriptObject page_;
};

TEST_F(Figures, OfANewPage) {
  const auto size = In("PDFDocument.AddPage", "([0-9.]+) × ([0-9.]+) points");
  EXPECT_EQ(page_.GetSingle("Width"), static_cast<float>(size[0]));
  EXPECT_EQ(page_.GetSingle("Height"), static_cast<float>(size[1]));
}

TEST_F(Figures, OfTheNumberOfPages) {
  const double pages = In("PDFDocument.AddPage", "More than ([0-9,]+) pages")[0];
  for (int page = 1; page <= pages; ++page) page_ = document_.AddPage();
  page_.Set("Width", 77.0F);
  EXPECT_EQ(page_.GetSingle("Width"), 77.0F);
  EXPECT_THAT(document_.TakeFailures(), IsEmpty());
}

TEST_F(Figures, OfPageSizes) {
  const auto range = In("Page.Width", "points, from ([0-9,]+) to ([0-9,]+).*error ([0-9]+)");
  ExpectRange("Width", range[0], range[1], range[2]);
  ExpectRange("Height", range[0], range[1], range[2]);
  const auto size = In("Page.SetSize", "size number ([0-9]+).*error ([0-9]+)");
  const auto set = [&](double number) {
    return ErrorsOf([=](const ScriptObject &page) { page.Call("SetSize", static_cast<std::int64_t>(number), 0); });
  };
  EXPECT_THAT(set(size[0] - 1), IsEmpty());
  EXPECT_THAT(set(size[0]), ElementsAre(static_cast<std::uint32_t>(size[1])));
  EXPECT_THAT(set(size[0] + 1), IsEmpty());
}

TEST_F(Figures, OfSavedStates) {
  const auto levels = In("Page.SaveState", "([0-9]+) levels deep gives error ([0-9]+)");
  for (int level = 0; level < levels[0]; ++level) page_.Call("SaveState");
  EXPECT_THAT(document_.TakeFailures(), IsEmpty());
  EXPECT_THAT(ErrorsOf([](const ScriptObject &page) { page.Call("SaveState"); }),
              ElementsAre(static_cast<std::uint32_t>(levels[1])));
}

TEST_F(Figures, OfDashes) {
  const auto range = In("Page.SetDashPattern", "outside of ([0-9]+) to ([0-9]+), with error ([0-9]+)");
  const double most = In("Page.SetDashPattern", "even count up to ([0-9]+)")[0];
  const auto set = [&](double length, double count) {
    host::ArrayHandle dashes = host::ArrayHandle::Create(host::TypeKind::kUInt16, static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) dashes.Set(index, static_cast<int>(length));
    return ErrorsOf([&](const ScriptObject &page) { page.Call("SetDashPattern", dashes, 0); });
  };
  const auto refused = ElementsAre(static_cast<std::uint32_t>(range[2]));
  EXPECT_THAT(set(range[0], most), IsEmpty());
  EXPECT_THAT(set(range[1], 1), IsEmpty());
  EXPECT_THAT(set(range[0] - 1, 1), refused);
  EXPECT_THAT(set(range[1] + 1, 1), refused);
  set(range[0], most + 2);
  const std::string content = PdfFile(document_.Saved()).Content(0);
  EXPECT_NE(content.rfind(content.substr(0, content.find('\n'))), 0U) << "further numbers are dropped";
}

TEST_F(Figures, OfLinesAndWords) {
  const double error = In("Page.LineWidth", "negative widths, with error ([0-9]+)")[0];
  const auto refused = ElementsAre(static_cast<std::uint32_t>(error));
  const double least = In("Page.LineWidth", "points, ([0-9]+) or more")[0];
  EXPECT_THAT(ErrorsOf([=](auto &page) { page.Set("LineWidth", static_cast<float>(least)); }), IsEmpty());
  EXPECT_THAT(ErrorsOf([=](auto &page) { page.Set("LineWidth", Below(least)); }), refused);
  EXPECT_THAT(ErrorsOf([](auto &page) { page.Set("LineCapType", 3); }), refused);
  EXPECT_THAT(ErrorsOf([](auto &page) { page.Set("LineJoinType", 3); }), refused);
  const auto words = In("Page.WordSpace", "outside of (-[0-9]+) to ([0-9]+), with error ([0-9]+)");
  ExpectRange("WordSpace", words[0], words[1], words[2]);
}

TEST_F(Figures, OfFontSizes) {
  const auto size = In("Page.SetFont", "above ([0-9]+) and up to ([0-9]+) points.*error ([0-9]+)");
  const ScriptObject font = document_.GetFont("Helvetica");
  const auto set = [&](float value) {
    return ErrorsOf([&](const ScriptObject &page) { page.Call("SetFont", font, value); });
  };
  EXPECT_THAT(set(Above(size[0])), IsEmpty());
  EXPECT_THAT(set(static_cast<float>(size[1])), IsEmpty());
  EXPECT_THAT(set(static_cast<float>(size[0])), ElementsAre(static_cast<std::uint32_t>(size[2])));
  EXPECT_THAT(set(Above(size[1])), ElementsAre(static_cast<std::uint32_t>(size[2])));
}

TEST_F(Figures, OfZoom) {
  const auto zoom = In("Destination.SetLocation", "above ([0-9.]+) and up to ([0-9]+).*with error ([0-9]+): the view");
  const ScriptObject destination = page_.CallObject("CreateDestination");
  const auto set = [&](float x, float value) {
    return ErrorsOf([&](const ScriptObject &) { destination.Call("SetLocation", x, 0.0F, value); });
  };
  const auto refused = ElementsAre(static_cast<std::uint32_t>(zoom[2]));
  EXPECT_THAT(set(0, Above(zoom[0])), IsEmpty());
  EXPECT_THAT(set(0, static_cast<float>(zoom[1])), IsEmpty());
  EXPECT_THAT(set(0, static_cast<float>(zoom[0])), refused);
  EXPECT_THAT(set(0, 0), refused);
  EXPECT_THAT(set(0, Above(zoom[1])), refused);
  EXPECT_THAT(set(-1, 1), refused);
}

TEST_F(Figures, OfTitles) {
  const auto title = In("PDFDocument.CreateOutline", "more than ([0-9,]+) bytes.*error ([0-9]+)");
  const auto make = [&](std::size_t size) {
    return ErrorsOf([&](const ScriptObject &) {
      document_.CallObject("CreateOutline", host::Value::Nil(), std::string(size, 'x'));
    });
  };
  const auto most = static_cast<std::size_t>(title[0]);
  EXPECT_THAT(make(most), IsEmpty());
  EXPECT_THAT(make(most + 1), ElementsAre(static_cast<std::uint32_t>(title[1])));
}

TEST_F(Figures, OfEncryption) {
  const auto length = In("PDFDocument.SetEncryptionMode",
                         "from ([0-9]+) to ([0-9]+), or ([0-9]+) for ([0-9]+);.*other lengths, with error ([0-9]+)");
  const auto revision = In("PDFDocument.SetEncryptionMode",
                           "other than ([0-9]+) and ([0-9]+), which no viewer opens, with error ([0-9]+)");
  const std::string owner(50, 'o');
  document_.Call("SetPassword", owner, "");
  const auto set = [&](double number, double bytes) {
    return ErrorsOf([&](const ScriptObject &) {
      document_.Call("SetEncryptionMode", static_cast<std::int64_t>(number), static_cast<std::int64_t>(bytes));
    });
  };
  const auto keyBits = [&] {
    return PdfFile(document_.Saved(), "").qpdf().getTrailer().getKey("/Encrypt").getKey("/Length");
  };
  const double last = revision[1];
  for (const double bytes : {length[0], length[1]}) {
    EXPECT_THAT(set(last, bytes), IsEmpty());
    EXPECT_EQ(keyBits().getIntValue(), 8 * bytes);
  }
  EXPECT_THAT(set(last, length[2]), IsEmpty());
  EXPECT_EQ(keyBits().getIntValue(), 8 * length[3]);
  EXPECT_THAT(set(last, length[0] - 1), ElementsAre(static_cast<std::uint32_t>(length[4])));
  EXPECT_THAT(set(last, length[1] + 1), ElementsAre(static_cast<std::uint32_t>(length[4])));
  EXPECT_THAT(set(revision[0] - 1, 5), ElementsAre(static_cast<std::uint32_t>(revision[2])));
  EXPECT_THAT(set(last + 1, 5), ElementsAre(static_cast<std::uint32_t>(revision[2])));
  const auto used = static_cast<std::size_t>(In("PDFDocument.SetPassword", "takes the first ([0-9]+)")[0]);
  EXPECT_TRUE(PdfFile(document_.Saved(), std::string(used, 'o').c_str()).IsOpen());
}

}  // namespace
}  // namespace quillbar::test
