// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

class DateTimeTest : public ScriptTest {
 protected:
  // What an expression with a DateTime gives, as SQL writes it.
  std::string Moment(const std::string &expression) { return Output("Print(" + expression + ".SQLDateTime)"); }
};

/// Tests of zones with names.
class ZoneTest : public DateTimeTest {
 protected:
  void SetUp() override {
#ifdef _WIN32
    GTEST_SKIP() << "Windows has no database of time zones";
#endif
  }
};

TEST_F(DateTimeTest, PartsAreThoseOfTheDate) {
  ExpectPrinted({{"d.Year", "2024"},
                 {"d.Month", "2"},
                 {"d.Day", "29"},
                 {"d.Hour", "13"},
                 {"d.Minute", "5"},
                 {"d.Second", "7"},
                 {"d.Nanosecond", "250000000"},
                 {"d.DayOfWeek", "5"},
                 {"d.DayOfYear", "60"},
                 {"d.SQLDate", "2024-02-29"},
                 {"d.SQLDateTime", "2024-02-29 13:05:07"},
                 {"d.ToString", "2024-02-29 13:05:07"},
                 {"New DateTime(d) = d", "True"}},
                "Dim d As New DateTime(2024, 2, 29, 13, 5, 7, 250000000)");
}

TEST_F(DateTimeTest, WeeksBeginOnSundaysAndTheFirstHoldsNewYear) {
  // January 1 was a Thursday in 2026 and a Sunday in 2023.
  ExpectPrinted({{"(New DateTime(2026, 1, 3)).WeekOfYear", "1"},
                 {"(New DateTime(2026, 1, 4)).WeekOfYear", "2"},
                 {"(New DateTime(2026, 12, 31)).WeekOfYear", "53"},
                 {"(New DateTime(2023, 1, 7)).WeekOfYear", "1"},
                 {"(New DateTime(2023, 1, 8)).WeekOfYear", "2"}});
}

TEST_F(DateTimeTest, SecondsFrom1970KeepTheirFraction) {
  ExpectPrinted({{"(New DateTime(1.5)).SecondsFrom1970", "1.5"},
                 {"(New DateTime(-0.25)).SecondsFrom1970", "-0.25"},
                 {"(New DateTime(0, New TimeZone(0))).SQLDateTime", "1970-01-01 00:00:00"},
                 {"(New DateTime(-1, New TimeZone(3600))).SQLDateTime", "1970-01-01 00:59:59"},
                 {"(New DateTime(2.9999999999)).SecondsFrom1970", "3"}});
  ExpectErrors({{"Dim d As New DateTime(1e15)", "1:10: InvalidArgumentException: this moment is beyond the calendar"},
                {"Dim d As New DateTime(2000000, 1, 1)",
                 "1:10: InvalidArgumentException: a part of the date is beyond the calendar"}});
}

TEST_F(DateTimeTest, IntervalsAreAddedByTheCalendar) {
  EXPECT_EQ(Moment("(New DateTime(2025, 1, 31) + New DateInterval(0, 1))"), "2025-02-28 00:00:00\n");
  EXPECT_EQ(Moment("(New DateTime(2024, 1, 31) + New DateInterval(0, 1))"), "2024-02-29 00:00:00\n");
  EXPECT_EQ(Moment("(New DateTime(2024, 2, 29) + New DateInterval(1))"), "2025-02-28 00:00:00\n");
  EXPECT_EQ(Moment("(New DateTime(2024, 2, 29) - New DateInterval(4))"), "2020-02-29 00:00:00\n");
  EXPECT_EQ(Moment("(New DateTime(2026, 1, 1) - New DateInterval(0, 0, 1))"), "2025-12-31 00:00:00\n");
  EXPECT_EQ(Moment("(New DateTime(2026, 12, 31, 23, 59, 59)).AddInterval(0, 0, 0, 0, 0, 1)"), "2027-01-01 00:00:00\n");
  EXPECT_EQ(Moment("(New DateTime(2026, 3, 1)).SubtractInterval(0, 0, 0, 1)"), "2026-02-28 23:00:00\n");
  EXPECT_EQ(Moment("(New DateTime(2026, 3, 1)).AddInterval(0, 0, 30).AddInterval(1, 1)"), "2027-04-30 00:00:00\n");
  EXPECT_EQ(Output("Dim d As DateTime = New DateTime(2026, 1, 1) + New DateInterval(0, 0, 0, 0, 0, 0, -1)\n"
                   "Print d.SQLDateTime\nPrint d.Nanosecond"),
            "2025-12-31 23:59:59\n999999999\n");
  ExpectErrors({{"Dim d As DateTime = DateTime.Now + New DateInterval(400000000)",
                 "1:21: InvalidArgumentException: this moment is beyond the calendar"},
                {"Dim i As DateInterval\nDim d As DateTime = DateTime.Now + i",
                 "2:21: NilObjectException: this needs a DateInterval, not Nil"}});
}

TEST_F(DateTimeTest, DifferencesAreIntervalsInUnitsOfTheCalendar) {
  const std::string show =
      "Sub Show(i As DateInterval)\nPrint Str(i.Years) + \" \" + Str(i.Months) + \" \" + Str(i.Days) + \" \" + "
      "Str(i.Hours) + \" \" + Str(i.Minutes) + \" \" + Str(i.Seconds) + \" \" + Str(i.NanoSeconds)\nEnd Sub\n";
  const auto difference = [&](const std::string &to, const std::string &from) {
    return Output(show + "Show(New DateTime(" + to + ") - New DateTime(" + from + "))");
  };
  EXPECT_EQ(difference("2026, 3, 1", "2026, 3, 1"), "0 0 0 0 0 0 0\n");
  EXPECT_EQ(difference("2026, 3, 15, 10", "2025, 1, 10, 8, 30"), "1 2 5 1 30 0 0\n");
  EXPECT_EQ(difference("2025, 3, 1", "2025, 1, 31"), "0 1 1 0 0 0 0\n");
  EXPECT_EQ(difference("2024, 3, 1", "2024, 2, 29"), "0 0 1 0 0 0 0\n");
  EXPECT_EQ(difference("2025, 1, 10, 8, 30", "2026, 3, 15, 10"), "-1 -2 -5 -1 -30 0 0\n");
  EXPECT_EQ(difference("2026, 1, 1, 0, 0, 1, 0", "2026, 1, 1, 0, 0, 0, 1"), "0 0 0 0 0 0 999999999\n");
}

TEST_F(DateTimeTest, ADifferenceLeadsBack) {
  EXPECT_EQ(Output(R"(
Dim random As New Random
random.Seed = 7
Dim wrong As Integer
For i As Integer = 1 To 2000
  Dim a As New DateTime((random.Number - 0.5) * 6000000000)
  Dim b As New DateTime((random.Number - 0.5) * 6000000000)
  If a + (b - a) <> b Then wrong = wrong + 1
Next
Print wrong
)"),
            "0\n");
}

TEST_F(DateTimeTest, MomentsAreCompared) {
  ExpectPrinted({{"a < b", "True"},
                 {"a <= b", "True"},
                 {"a > b", "False"},
                 {"a = New DateTime(2026, 1, 1)", "True"},
                 {"a <> b", "True"},
                 {"a Is a", "True"},
                 {"a Is New DateTime(2026, 1, 1)", "False"},
                 {"a = Nil", "False"},
                 {"New DateTime(0, New TimeZone(0)) = New DateTime(0, New TimeZone(7200))", "True"}},
                "Dim a As New DateTime(2026, 1, 1)\nDim b As New DateTime(2026, 1, 1, 0, 0, 0, 1)");
}

TEST_F(DateTimeTest, TextsAreRead) {
  EXPECT_EQ(Moment("DateTime.FromString(\"2024-02-29\")"), "2024-02-29 00:00:00\n");
  EXPECT_EQ(Moment("DateTime.FromString(\"2026-03-01 14:30\")"), "2026-03-01 14:30:00\n");
  EXPECT_EQ(Moment("DateTime.FromString(\"2026-03-01T14:30:15\")"), "2026-03-01 14:30:15\n");
  ExpectPrinted({{"DateTime.FromString(\"2026-03-01 14:30:15.25\").Nanosecond", "250000000"},
                 {"DateTime.FromString(\"1970-01-01T00:00:10Z\").SecondsFrom1970", "10"},
                 {"DateTime.FromString(\"1970-01-01 02:00:00+02:00\").SecondsFrom1970", "0"},
                 {"DateTime.FromString(\"1970-01-01 00:00-0130\").SecondsFrom1970", "5400"},
                 {"DateTime.FromString(\"1970-01-02\", New TimeZone(3600)).SecondsFrom1970", "82800"}});
  for (const char *text : {"", "2026", "2026-3-1", "2026-02-29", "2026-13-01", "2026-00-10", "2026-01-00", "2026-01-32",
                           "2026-01-01 24:00", "2026-01-01 10", "2026-01-01 10:60", "2026-01-01 10:00:60", "01/02/2026",
                           "2026-01-01x", "2026-01-01 10:00:00.", "-026-01-01", "2026--1-01", "2026-01-01 "}) {
    EXPECT_EQ(FirstError("Dim d As DateTime = DateTime.FromString(\"" + std::string(text) + "\")"),
              "1:21: InvalidArgumentException: \"" + std::string(text) +
                  "\" is not a date; it is written as 2026-03-01 or 2026-03-01 14:30:00");
  }
}

TEST_F(DateTimeTest, PatternsShowParts) {
  ExpectPrinted({{"d.ToString(\"yyyy-MM-dd HH:mm:ss\")", "2026-03-01 14:05:09"},
                 {"d.ToString(\"d. MMMM y\")", "1. March 2026"},
                 {"d.ToString(\"d.M.yy\")", "1.3.26"},
                 {"d.ToString(\"EEE, EEEE, EEEEE, EEEEEE\")", "Sun, Sunday, S, Su"},
                 {"d.ToString(\"MMM MMMMM LLLL\")", "Mar M March"},
                 {"d.ToString(\"h:mm a, hh, K, k\")", "2:05 PM, 02, 2, 14"},
                 {"d.ToString(\"S SSS SSSSSS\")", "2 250 250000"},
                 {"d.ToString(\"D e w Q QQQ QQQQ\")", "60 1 10 1 Q1 1st quarter"},
                 {"d.ToString(\"G y u\")", "AD 2026 2026"},
                 {"d.ToString(\"Z ZZZZ ZZZZZ X XX XXX O\")", "+0530 GMT+05:30 +05:30 +0530 +0530 +05:30 GMT+5:30"},
                 {"d.ToString(\"'week' w 'o''clock' ''\")", "week 10 o'clock '"},
                 {"d.ToString(\"'open\")", "open"},
                 {"d.ToString(\"\")", ""},
                 {"(New DateTime(2026, 1, 1, 0)).ToString(\"h a k K\")", "12 AM 24 0"},
                 {"(New DateTime(0, New TimeZone(0))).ToString(\"X xx z ZZZZZ\")", "Z +0000 UTC Z"},
                 {"(New DateTime(-43, 3, 15)).ToString(\"y G\")", "44 BC"}},
                "Dim d As New DateTime(2026, 3, 1, 14, 5, 9, 250000000, New TimeZone(19800))");
  ExpectErrors({{"Print DateTime.Now.ToString(\"yyyy b\")",
                 "1:7: InvalidArgumentException: \"b\" stands for no part of a date; put text into apostrophes"}});
}

TEST_F(DateTimeTest, StylesAreThoseOfEnglish) {
  ExpectPrinted({{"d.ToString(DateTime.FormatStyles.Short, DateTime.FormatStyles.None)", "3/1/26"},
                 {"d.ToString(DateTime.FormatStyles.Medium)", "Mar 1, 2026, 2:05:09 PM"},
                 {"d.ToString(DateTime.FormatStyles.Medium, DateTime.FormatStyles.Short)", "Mar 1, 2026, 2:05 PM"},
                 {"d.ToString(DateTime.FormatStyles.Long, DateTime.FormatStyles.Short)", "March 1, 2026 at 2:05 PM"},
                 {"d.ToString(DateTime.FormatStyles.Full, DateTime.FormatStyles.None)", "Sunday, March 1, 2026"},
                 {"d.ToString(DateTime.FormatStyles.None, DateTime.FormatStyles.Full)", "2:05:09 PM GMT+01:00"}},
                "Dim d As New DateTime(2026, 3, 1, 14, 5, 9, 0, New TimeZone(3600))");
}

TEST_F(DateTimeTest, IntervalsHaveTheirParts) {
  EXPECT_EQ(Output("Dim i As New DateInterval\ni.Days = 3\ni.NanoSeconds = i.Days * 2\nPrint i.Days\n"
                   "Print i.NanoSeconds\nPrint i.Years"),
            "3\n6\n0\n");
}

TEST_F(DateTimeTest, NowIsNow) {
  EXPECT_EQ(Output("Dim a As DateTime = DateTime.Now\nDim b As DateTime = DateTime.Now(New TimeZone(0))\n"
                   "Print b >= a And b.SecondsFrom1970 - a.SecondsFrom1970 < 60 And a.Year > 2000"),
            "True\n");
}

TEST_F(ZoneTest, ZonesOfTheDatabaseChangeTheirClocks) {
  ExpectPrinted({{"(New DateTime(2026, 1, 15, 12, 0, 0, 0, berlin)).SecondsFrom1970 = 1768474800", "True"},
                 {"(New DateTime(2026, 7, 15, 12, 0, 0, 0, berlin)).SecondsFrom1970 = 1784109600", "True"},
                 {"(New DateTime(1784109600, New TimeZone(\"America/New_York\"))).SQLDateTime", "2026-07-15 06:00:00"},
                 {"(New DateTime(2026, 7, 15, 12, 0, 0, 0, berlin)).ToString(\"z Z\")", "CEST +0200"},
                 {"(New DateTime(2026, 1, 15, 12, 0, 0, 0, berlin)).ToString(\"z Z\")", "CET +0100"},
                 {"(New DateTime(2060, 7, 15, 12, 0, 0, 0, berlin)).ToString(\"Z\")", "+0200"},
                 {"berlin.Name", "Europe/Berlin"},
                 {"(New DateTime(0, berlin)).Timezone.Name", "Europe/Berlin"}},
                "Dim berlin As New TimeZone(\"Europe/Berlin\")");
}

TEST_F(ZoneTest, AGapIsLeftForwardsAndAnOverlapIsTheFirstHour) {
  // On 2026-03-29 two o'clock became three, on 2026-10-25 three became two.
  ExpectPrinted(
      {{"(New DateTime(2026, 3, 29, 2, 30, 0, 0, berlin)).SQLDateTime", "2026-03-29 03:30:00"},
       {"(New DateTime(2026, 10, 25, 2, 30, 0, 0, berlin)).ToString(\"HH:mm Z\")", "02:30 +0200"},
       {"(New DateTime(2026, 10, 25, 2, 30, 0, 0, berlin)).AddInterval(0, 0, 0, 1).ToString(\"HH:mm Z\")",
        "02:30 +0100"},
       {"(New DateTime(2026, 10, 25, 2, 30, 0, 0, berlin)).AddInterval(0, 0, 0, 1).AddInterval(0, 0, 0, 0, 0, "
        "0, 1).ToString(\"HH:mm Z\")",
        "02:30 +0100"}},
      "Dim berlin As New TimeZone(\"Europe/Berlin\")");
}

TEST_F(ZoneTest, DaysKeepTheTimeOfDayAndHoursPass) {
  ExpectPrinted({{"d.AddInterval(0, 0, 1).SQLDateTime", "2026-03-29 12:00:00"},
                 {"d.AddInterval(0, 0, 0, 24).SQLDateTime", "2026-03-29 13:00:00"},
                 {"(d.AddInterval(0, 0, 1) - d).Days", "1"},
                 {"(d.AddInterval(0, 0, 1) - d).Hours", "0"},
                 {"d.AddInterval(0, 0, 1).SecondsFrom1970 - d.SecondsFrom1970", "82800"}},
                "Dim d As New DateTime(2026, 3, 28, 12, 0, 0, 0, New TimeZone(\"Europe/Berlin\"))");
}

TEST_F(ZoneTest, UnknownZonesAreNamed) {
  for (const char *name : {"Europe/Berlyn", "", "/etc/passwd", "../zoneinfo/Europe/Berlin", "Fixed/UTC+01:00:00"}) {
    EXPECT_EQ(FirstError("Dim z As New TimeZone(\"" + std::string(name) + "\")"),
              "1:10: InvalidArgumentException: the system has no time zone \"" + std::string(name) +
                  "\"; names are like \"Europe/Berlin\", from the package tzdata");
  }
}

TEST_F(DateTimeTest, FixedZonesAreAsFarFromUtcAsTheyAreMade) {
  ExpectPrinted({{"(New TimeZone(19800)).SecondsFromGMT", "19800"},
                 {"(New TimeZone(-3600)).Abbreviation", "UTC-01:00"},
                 {"(New TimeZone(0)).Name", "UTC"},
                 {"(New TimeZone(\"UTC\")).SecondsFromGMT", "0"},
                 {"TimeZone.Current.SecondsFromGMT = DateTime.Now.Timezone.SecondsFromGMT", "True"}});
  ExpectErrors({{"Dim z As New TimeZone(100000)",
                 "1:10: InvalidArgumentException: a time zone is at most 18 hours ahead of UTC, or behind it"}});
}

}  // namespace
}  // namespace quillbar::language::testing
