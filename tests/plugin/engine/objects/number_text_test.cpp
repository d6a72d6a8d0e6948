// SPDX-License-Identifier: MIT
// How numbers are printed into a file.
#include <gtest/gtest.h>
#include <hpdf.h>
#include <hpdf_utils.h>

#include <algorithm>
#include <bit>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <sstream>
#include <string>

#include "plugin/engine/pages/page_tree.h"
#include "tests/plugin/engine/driver/library_document.h"

namespace quillbar {
namespace {

std::string Text(float value) {
  char buffer[64];
  char *end = HPDF_FToA(buffer, value, buffer + sizeof buffer - 1);
  EXPECT_EQ(*end, '\0');
  return {buffer, end};
}

TEST(NumberText, WholeNumbersHaveNoPoint) {
  EXPECT_EQ(Text(0.0F), "0");
  EXPECT_EQ(Text(1.0F), "1");
  EXPECT_EQ(Text(-42.0F), "-42");
  EXPECT_EQ(Text(14400.0F), "14400");
}

TEST(NumberText, DecimalsEndWithTheirLastDigit) {
  EXPECT_EQ(Text(0.5F), "0.5");
  EXPECT_EQ(Text(-0.25F), "-0.25");
  EXPECT_EQ(Text(595.276F), "595.276");
  EXPECT_EQ(Text(0.1F), "0.1");
  EXPECT_EQ(Text(10.02F), "10.02");
}

TEST(NumberText, IsTheShortestThatIsReadBackAsTheSameSingle) {
  EXPECT_EQ(Text(130.656F), "130.656");
  EXPECT_EQ(Text(841.89F), "841.89");
  EXPECT_EQ(Text(-12345.678F), "-12345.678");
  EXPECT_EQ(Text(99999.99F), "99999.99");
  EXPECT_EQ(Text(131071.9921875F), "131071.99");
  EXPECT_EQ(Text(8388607.5F), "8388607.5");
}

TEST(NumberText, KeepsItsFivePlacesWhereFewerAreAnotherSingle) {
  EXPECT_EQ(Text(100.00001F), "100.00001");
  EXPECT_EQ(Text(12.345678F), "12.34568");
  EXPECT_EQ(Text(0.12345678F), "0.12346");
}

TEST(NumberText, RoundingCarriesIntoTheWholeNumber) {
  EXPECT_EQ(Text(0.999999F), "1");
  EXPECT_EQ(Text(9.999999F), "10");
  EXPECT_EQ(Text(-99.999999F), "-100");
  EXPECT_EQ(Text(32767.99999F), "32768");
  EXPECT_EQ(Text(0.0999999F), "0.1");
}

TEST(NumberText, ZeroHasNoSign) {
  EXPECT_EQ(Text(-0.0F), "0");
  EXPECT_EQ(Text(-1e-12F), "0");
  EXPECT_EQ(Text(1e-30F), "0");
}

TEST(NumberText, SmallNumbersKeepTheirDigits) {
  EXPECT_EQ(Text(1e-7F), "0.0000001");
  EXPECT_EQ(Text(-1e-7F), "-0.0000001");
  EXPECT_EQ(Text(0.000123456F), "0.00012346");
  EXPECT_EQ(Text(0.00001F), "0.00001");
}

TEST(NumberText, LargeNumbersAreNotCut) {
  EXPECT_EQ(Text(32767.5F), "32767.5");
  EXPECT_EQ(Text(40000.0F), "40000");
  EXPECT_EQ(Text(-65535.0039F), "-65535.004");
  EXPECT_EQ(Text(16777216.0F), "16777216");
}

TEST(NumberText, MagnitudesEndWhereReadersHaveNoIntegers) {
  EXPECT_EQ(Text(2147483520.0F), "2147483520");
  EXPECT_EQ(Text(2147483648.0F), "2147483520");
  EXPECT_EQ(Text(-std::numeric_limits<float>::max()), "-2147483520");
  EXPECT_EQ(Text(std::numeric_limits<float>::infinity()), "2147483520");
}

TEST(NumberText, NotANumberPrintsNothingButANumber) {
  EXPECT_EQ(Text(std::numeric_limits<float>::quiet_NaN()), "0");
  EXPECT_EQ(Text(-std::numeric_limits<float>::quiet_NaN()), "0");
}

// A single holds any six digits, so what a user writes with no more of them stands in the file as written.
TEST(NumberText, DecimalsOfUpToSixDigitsComeBackAsTheyWereWritten) {
  for (const int scale : {1, 10, 100, 1000, 10'000, 100'000}) {
    for (int number = 0; number < 1'000'000; number += 37) {
      std::ostringstream expected;
      expected << number / scale;
      if (number % scale != 0) {
        std::string places = std::to_string(scale + number % scale).substr(1);
        while (places.back() == '0') places.pop_back();
        expected << '.' << places;
      }
      ASSERT_EQ(Text(static_cast<float>(static_cast<double>(number) / scale)), expected.str());
    }
  }
}

// What five places say of a positive number, with the zeros at their end. The product is exact, and halves
// are rounded up.
std::string FivePlaces(float value) {
  const auto number = static_cast<std::uint64_t>(static_cast<double>(value) * 100'000 + 0.5);
  return std::to_string(number / 100'000) + '.' + std::to_string(100'000 + number % 100'000).substr(1);
}

// Either the nearest number with five places, as long as it needs to be, or a shorter one that is read back
// as the same single, so that five places say the same of both. Nothing shorter does.
TEST(NumberText, IsNeverLongerThanFivePlacesAndSaysTheSame) {
  std::mt19937 random(20240301);
  std::size_t shorter = 0;
  for (int i = 0; i < 100'000; ++i) {
    const float value = std::ldexp(static_cast<float>(1 + random() % 0x1000000), static_cast<int>(random() % 29) - 24);
    if (value < 0.1F) continue;
    const std::string text = Text(value);
    std::string places = FivePlaces(value);
    while (places.back() == '0') places.pop_back();
    if (places.back() == '.') places.pop_back();
    if (text == places) continue;
    ++shorter;
    ASSERT_LT(text.size(), places.size()) << places;
    ASSERT_EQ(std::strtof(text.c_str(), nullptr), value) << places;
    ASSERT_EQ(FivePlaces(std::strtof(text.c_str(), nullptr)), FivePlaces(value));
    const std::size_t placesOfText = text.size() - text.find('.') - 1;
    char evenShorter[64];
    std::snprintf(evenShorter, sizeof evenShorter, "%.*f", static_cast<int>(placesOfText) - 1,
                  static_cast<double>(value));
    ASSERT_NE(std::strtof(evenShorter, nullptr), value) << text;
  }
  EXPECT_GT(shorter, 1000U);
}

// The text has the form that a PDF reader expects, and its value is the nearest one with that many places, or
// one that is read back as the same single.
TEST(NumberText, EverySingleIsReadBackAsItselfOrWithinHalfAPlace) {
  std::mt19937 random(20240229);
  for (int i = 0; i < 300'000; ++i) {
    const float value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
    if (!std::isfinite(value) || std::fabs(value) > 2147483520.0F) continue;
    const std::string text = Text(value);
    ASSERT_EQ(text.find_first_not_of("-.0123456789"), std::string::npos) << value;
    ASSERT_LE(text.size(), 15U);
    ASSERT_NE(text, "-0");
    const double magnitude = std::fabs(static_cast<double>(value));
    const double place = magnitude >= 0.1 ? 1e-5 : std::max(1e-10, magnitude * 1e-4);
    if (std::strtof(text.c_str(), nullptr) == value) continue;
    ASSERT_NEAR(std::strtod(text.c_str(), nullptr), static_cast<double>(value), place * 0.50001) << text;
  }
}

TEST(NumberText, NeverWritesBehindTheLastPlace) {
  for (std::size_t room = 1; room < 40; ++room) {
    std::string buffer(room + 8, '#');
    char *end = HPDF_FToA(buffer.data(), -131071.98F, buffer.data() + room - 1);
    EXPECT_LE(end, buffer.data() + room);
    EXPECT_EQ(buffer.substr(room), "########") << room;
  }
}

TEST(NumberText, WritesNothingWithoutRoom) {
  char buffer[] = "##";
  EXPECT_EQ(HPDF_FToA(buffer + 1, 1.5F, buffer), buffer + 1);
  EXPECT_STREQ(buffer, "##");
}

TEST(NumberText, DoesNotDependOnTheLocale) {
  const char *const names[] = {"de_DE.UTF-8", "fr_FR.UTF-8", "nl_NL.UTF-8"};
  bool found = false;
  for (const char *name : names) found = found || std::setlocale(LC_NUMERIC, name) != nullptr;
  if (!found) GTEST_SKIP() << "no locale with a decimal comma is installed";
  EXPECT_EQ(Text(0.5F), "0.5");
  std::setlocale(LC_NUMERIC, "C");
}

TEST(NumberText, NotANumberLeavesTheContentStreamReadable) {
  LibraryDocument document;
  HPDF_Page page = engine::AddPage(document.document);
  HPDF_Page_MoveTo(page, std::numeric_limits<float>::quiet_NaN(), 7);
  EXPECT_EQ(ContentOf(page), "0 7 m\n");
}

TEST(NumberText, TheLongestNumberFitsWhereverOneIsWritten) {
  LibraryDocument document;
  HPDF_Page page = Call<engine::AddPage>(document.document);
  EXPECT_EQ(Call<HPDF_Page_SetTextRise>(page, -0.00012345F), HPDF_OK);
  EXPECT_EQ(ContentOf(page), "-0.00012345 Ts\n");
}

TEST(NumberText, RealObjectsHoldEveryNumberThatCanBePrinted) {
  LibraryDocument document;
  HPDF_MMgr memory = document.document->mmgr;
  HPDF_Real real = HPDF_Real_New(memory, 40000.5F);
  ASSERT_NE(real, nullptr);
  EXPECT_EQ(real->value, 40000.5F);
  HPDF_FreeMem(memory, real);
  EXPECT_EQ(HPDF_Real_New(memory, std::numeric_limits<float>::quiet_NaN()), nullptr);
  EXPECT_EQ(HPDF_Real_New(memory, 3e9F), nullptr);
  EXPECT_EQ(document.document->error.error_no, HPDF_STATUS{HPDF_REAL_OUT_OF_RANGE});
}

}  // namespace
}  // namespace quillbar
