// SPDX-License-Identifier: MIT
#include "host/language/library/time/calendar.h"

#include <gtest/gtest.h>

#include "host/language/platform/time_zone.h"

namespace quillbar::language {
namespace {

std::int64_t Noon(std::int64_t year, std::int64_t month, std::int64_t day) {
  return CountSeconds(year, month, day, 12, 0, 0);
}

TEST(CalendarTest, DatesOfAllCenturiesComeBack) {
  for (const int year : {-400, 1, 1582, 1600, 1601, 1700, 1900, 1969, 1970, 2000, 2026, 2039, 2400, 9999, 31000}) {
    for (const int month : {1, 2, 7, 12}) {
      const CalendarTime time = CalendarTimeOf(Noon(year, month, 28));
      EXPECT_EQ(time.year, year);
      EXPECT_EQ(time.month, month) << year;
      EXPECT_EQ(time.day, 28) << year;
      EXPECT_EQ(time.hour, 12) << year;
      EXPECT_EQ(time.minute, 0) << year;
    }
  }
  EXPECT_EQ(CountSeconds(1970, 1, 1, 0, 0, 0), 0);
  EXPECT_EQ(CountSeconds(2001, 9, 9, 1, 46, 40), 1'000'000'000);
}

TEST(CalendarTest, PartsBeyondTheirRangeCarryOver) {
  EXPECT_EQ(Noon(2025, 14, 30), Noon(2026, 3, 2));
  EXPECT_EQ(Noon(2026, 0, 1), Noon(2025, 12, 1));
  EXPECT_EQ(Noon(2026, -11, 1), Noon(2025, 1, 1));
  EXPECT_EQ(Noon(2024, 2, 30), Noon(2024, 3, 1));
  EXPECT_EQ(CountSeconds(2026, 1, 1, 25, -60, 86400), CountSeconds(2026, 1, 3, 0, 0, 0));
}

TEST(CalendarTest, TheDayOfTheWeekAndOfTheYearAreThoseOfTheDate) {
  const CalendarTime leapDay = CalendarTimeOf(Noon(2024, 2, 29));
  EXPECT_EQ(leapDay.weekday, 4) << "a Thursday";
  EXPECT_EQ(leapDay.dayOfYear, 60);
  EXPECT_EQ(CalendarTimeOf(Noon(1815, 6, 18)).weekday, 0) << "a Sunday";
}

TEST(CalendarTest, MonthsEndOnTheirLastDay) {
  EXPECT_EQ(AddMonths(Noon(2024, 1, 31), 1), Noon(2024, 2, 29));
  EXPECT_EQ(AddMonths(Noon(2025, 1, 31), 1), Noon(2025, 2, 28));
  EXPECT_EQ(AddMonths(Noon(2025, 3, 31), -1), Noon(2025, 2, 28));
  EXPECT_EQ(AddMonths(Noon(2024, 2, 29), 12), Noon(2025, 2, 28));
  EXPECT_EQ(AddMonths(Noon(2024, 2, 29), 48), Noon(2028, 2, 29));
  EXPECT_EQ(AddMonths(Noon(2024, 1, 15), -1), Noon(2023, 12, 15));
  EXPECT_EQ(DaysInMonth(1900, 2), 28);
  EXPECT_EQ(DaysInMonth(2000, 2), 29);
  EXPECT_EQ(DaysInMonth(2026, 12), 31);
}

TEST(TimeZoneTest, TheMachinesClocksShowWhatTheyAreAskedFor) {
  const platform::TimeZonePointer zone = platform::CurrentTimeZone();
  for (const int year : {1500, 1969, 2026, 2040, 5000}) {
    const std::int64_t noon = Noon(year, 1, 1);
    const std::int64_t moment = zone->MomentOf(noon);
    EXPECT_EQ(moment + zone->OffsetAt(moment).seconds, noon) << year;
    EXPECT_EQ(zone->MomentOf(Noon(year, 1, 2)) - moment, 86400) << year;
  }
}

}  // namespace
}  // namespace quillbar::language
