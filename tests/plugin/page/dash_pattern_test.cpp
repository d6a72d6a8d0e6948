// SPDX-License-Identifier: MIT
// Dash patterns: how a script's array becomes one that the library takes.
#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DashPattern : public PluginTest {
 protected:
  static host::ArrayHandle Dashes(const std::vector<int> &numbers) {
    host::ArrayHandle dashes = host::ArrayHandle::Create(host::TypeKind::kUInt16, numbers.size());
    for (std::size_t index = 0; index < numbers.size(); ++index) {
      dashes.Set(static_cast<std::int64_t>(index), numbers[index]);
    }
    return dashes;
  }
};

TEST_F(DashPattern, ArraysOfOneToNineElementsBecomeOneTwoTwoFourFourSixSixEightEight) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  for (int count = 1; count <= 9; ++count) {
    std::vector<int> numbers;
    for (int number = 1; number <= count; ++number) numbers.push_back(number * 10);
    page.Call("SetDashPattern", Dashes(numbers), 5);
  }
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  const auto first = [](std::size_t count) {
    std::vector<double> numbers;
    for (std::size_t number = 1; number <= count; ++number) numbers.push_back(static_cast<double>(number) * 10);
    return numbers;
  };
  EXPECT_THAT(document.Operators(), ElementsAre(Op("d", first(1), 5), Op("d", first(2), 5), Op("d", first(2), 5),
                                                Op("d", first(4), 5), Op("d", first(4), 5), Op("d", first(6), 5),
                                                Op("d", first(6), 5), Op("d", first(8), 5), Op("d", first(8), 5)));
}

TEST_F(DashPattern, EmptyArrayMakesASolidLineAndDropsThePhase) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetDashPattern", Dashes({}), 7);
  page.Call("SetDashPattern", Dashes({3}), 2);
  page.Call("ResetDashPattern");
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_THAT(document.Operators(), ElementsAre(Op("d", std::vector<double>{}, 0), Op("d", std::vector<double>{3}, 2),
                                                Op("d", std::vector<double>{}, 0)));
}

TEST_F(DashPattern, ElementsOutsideTheLibrarysRangeAreRefused) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  const Failure outOfRange{library_error::kOutOfRange, 0};
  page.Call("SetDashPattern", Dashes({0}), 0);
  page.Call("SetDashPattern", Dashes({3, 0}), 0);
  page.Call("SetDashPattern", Dashes({101}), 0);
  page.Call("SetDashPattern", Dashes({65535}), 0);
  EXPECT_THAT(document.TakeFailures(), ElementsAre(outOfRange, outOfRange, outOfRange, outOfRange));
  EXPECT_EQ(document.LastFailure(), outOfRange);
  page.Call("SetDashPattern", Dashes({100, 1}), 0);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_THAT(document.Operators(), ElementsAre(Op("d", std::vector<double>{100, 1}, 0)));
}

TEST_F(DashPattern, ElementsBeyondTheEighthAndOddLastOnesAreNeverLookedAt) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetDashPattern", Dashes({1, 2, 3, 4, 5, 6, 7, 8, 0, 0}), 0);
  page.Call("SetDashPattern", Dashes({1, 2, 0}), 0);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_EQ(document.Operators().size(), 2U);
}

TEST_F(DashPattern, PhaseIsAWholeNumberOf32Bits) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  for (const std::int64_t phase : {std::int64_t{0}, std::int64_t{1}, std::int64_t{65536}, std::int64_t{2147483647}}) {
    page.Call("SetDashPattern", Dashes({3, 1}), phase);
  }
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  const std::vector<ContentOperator> operators = document.Operators();
  ASSERT_EQ(operators.size(), 4U);
  EXPECT_EQ(operators[1].operands[1].number, 1);
  EXPECT_EQ(operators[2].operands[1].number, 65536);
  EXPECT_EQ(operators[3].operands[1].number, 2147483647);
}

TEST_F(DashPattern, PhaseThatNoReaderTakesIsRefused) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetDashPattern", Dashes({3, 1}), std::int64_t{4294967295});
  const std::vector<Failure> failures = document.TakeFailures();
  ASSERT_EQ(failures.size(), 1U);
  EXPECT_EQ(failures[0].number, library_error::kOutOfRange);
  EXPECT_THAT(document.Operators(), IsEmpty());
}

TEST_F(DashPattern, ThatTheHostDoesNotLetReadIsLeftOut) {
  host::HostOptions options;
  options.missing = {"PluginUInt16ArrayGetProc", "RuntimeArrayDirectGetGetProc"};
  StartHost({QUILLBAR_COMPANION_FILE, QUILLBAR_PLUGIN_FILE}, options);
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetDashPattern", Dashes({3, 1}), 0);
  page.Call("SetDashPattern", Dashes({}), 0);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_THAT(document.Operators(), ElementsAre(Op("d", std::vector<double>{}, 0)));
}

}  // namespace
}  // namespace quillbar::test
