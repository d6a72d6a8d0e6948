// SPDX-License-Identifier: MIT
#include "host/language/platform/local_time.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quillbar::language::platform {
namespace {

std::tm Noon(int year, int month, int day) {
  std::tm fields{};
  fields.tm_year = year - 1900;
  fields.tm_mon = month - 1;
  fields.tm_mday = day;
  fields.tm_hour = 12;
  return fields;
}

TEST(LocalTimeTest, DatesOfAllCenturiesComeBack) {
  for (const int year : {-400, 1, 1582, 1600, 1601, 1700, 1900, 1969, 1970, 2000, 2026, 2039, 2400, 9999, 31000}) {
    for (const int month : {1, 2, 7, 12}) {
      const std::optional<std::tm> fields = LocalFields(SecondsOfLocal(Noon(year, month, 28)));
      ASSERT_TRUE(fields.has_value()) << year;
      EXPECT_EQ(fields->tm_year + 1900, year);
      EXPECT_EQ(fields->tm_mon + 1, month) << year;
      EXPECT_EQ(fields->tm_mday, 28) << year;
      EXPECT_EQ(fields->tm_hour, 12) << year;
      EXPECT_EQ(fields->tm_min, 0) << year;
    }
  }
}

TEST(LocalTimeTest, ADayIsAboutTwentyFourHoursWhateverTheYear) {
  for (const int year : {1500, 1969, 2026, 5000}) {
    const double day = SecondsOfLocal(Noon(year, 1, 2)) - SecondsOfLocal(Noon(year, 1, 1));
    EXPECT_EQ(day, 86400) << year;
  }
}

TEST(LocalTimeTest, FieldsBeyondTheirRangeCarryOver) {
  EXPECT_EQ(SecondsOfLocal(Noon(2025, 14, 30)), SecondsOfLocal(Noon(2026, 3, 2)));
  EXPECT_EQ(SecondsOfLocal(Noon(2026, 0, 1)), SecondsOfLocal(Noon(2025, 12, 1)));
  EXPECT_EQ(SecondsOfLocal(Noon(2024, 2, 30)), SecondsOfLocal(Noon(2024, 3, 1)));
}

TEST(LocalTimeTest, TheDayOfTheWeekAndOfTheYearAreThoseOfTheDate) {
  const std::optional<std::tm> leapDay = LocalFields(SecondsOfLocal(Noon(2024, 2, 29)));
  ASSERT_TRUE(leapDay.has_value());
  EXPECT_EQ(leapDay->tm_wday, 4) << "a Thursday";
  EXPECT_EQ(leapDay->tm_yday, 59);
  const std::optional<std::tm> early = LocalFields(SecondsOfLocal(Noon(1815, 6, 18)));
  ASSERT_TRUE(early.has_value());
  EXPECT_EQ(early->tm_wday, 0) << "a Sunday";
}

TEST(LocalTimeTest, FractionsOfSecondsAreDroppedDownwards) {
  const double moment = SecondsOfLocal(Noon(1960, 1, 1));
  EXPECT_EQ(LocalFields(moment + 0.75)->tm_sec, 0);
  EXPECT_EQ(LocalFields(moment - 0.25)->tm_sec, 59);
}

TEST(LocalTimeTest, MomentsWithoutAYearAreNone) {
  EXPECT_FALSE(LocalFields(1e17).has_value());
  EXPECT_FALSE(LocalFields(-1e17).has_value());
}

}  // namespace
}  // namespace quillbar::language::platform
