// SPDX-License-Identifier: MIT
#include "host/runtime/text.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

#include "host/runtime/text_encoding.h"
#include "host/testing/host_fixture.h"
#include "interface/services.h"
#include "tests/host/test_plugins.h"

namespace quillbar::host {
namespace {

StringHandle Utf8(std::string_view text) { return StringHandle::FromUtf8(text); }
constexpr std::int64_t kMany = std::numeric_limits<std::int64_t>::max();

TEST(TextTest, LengthsCountCharactersOrBytes) {
  EXPECT_EQ(text::Length(Utf8("aé世😀")), 4);
  EXPECT_EQ(text::ByteLength(Utf8("aé世😀")), 10);
  EXPECT_EQ(text::Length(StringHandle()), 0);
  EXPECT_EQ(text::Length(StringHandle::FromBytes("\xC3\xA9", TextEncoding::kRawBytes)), 2);
  EXPECT_EQ(text::ByteLength(text::Convert(Utf8("é"), TextEncoding::kUtf16)), 2);
}

TEST(TextTest, MiddleCountsFromOneAndLeavesOutWhatIsOutside) {
  const StringHandle text = Utf8("aé世😀z");
  EXPECT_EQ(text::Middle(text, 1, 1).Utf8(), "a");
  EXPECT_EQ(text::Middle(text, 4, 1).Utf8(), "😀");
  EXPECT_EQ(text::Middle(text, 2, 3).Utf8(), "é世😀");
  EXPECT_EQ(text::Middle(text, 3, kMany).Utf8(), "世😀z");
  EXPECT_EQ(text::Middle(text, 6, 1).Utf8(), "");
  EXPECT_EQ(text::Middle(text, kMany, kMany).Utf8(), "");
  EXPECT_EQ(text::Middle(text, 2, 0).Utf8(), "");
  EXPECT_EQ(text::Middle(text, -7, 2).Utf8(), "aé");
  EXPECT_EQ(text::Left(text, 2).Utf8(), "aé");
  EXPECT_EQ(text::Left(text, -1).Utf8(), "");
  EXPECT_EQ(text::Right(text, 2).Utf8(), "😀z");
  EXPECT_EQ(text::Right(text, 99).Utf8(), "aé世😀z");
}

TEST(TextTest, WalkingBackAndForthFindsEveryCharacter) {
  std::u32string characters;
  for (char32_t c = 0x3B1; c < 0x3B1 + 24; ++c) characters.push_back(c);
  StringHandle text;
  for (const char32_t c : characters) text = text::Concatenate(text, text::Character(static_cast<std::int64_t>(c)));
  for (const std::int64_t position : {1, 24, 12, 13, 2, 24, 1}) {
    EXPECT_EQ(text::CodePoint(text::Middle(text, position, 1)), 0x3B0 + position);
  }
}

TEST(TextTest, AWalkThroughALongTextIsLinear) {
  std::string utf8;
  for (int i = 0; i < 200000; ++i) utf8 += "ж";
  const StringHandle text = Utf8(utf8);
  for (std::int64_t i = 1; i <= 200000; ++i) ASSERT_EQ(text::CodePoint(text::Middle(text, i, 1)), 0x436);
}

TEST(TextTest, CodePointsOfInvalidBytesAreTheBytes) {
  EXPECT_EQ(text::CodePoint(Utf8("😀")), 0x1F600);
  EXPECT_EQ(text::CodePoint(Utf8("\xFF")), 0xFF);
  EXPECT_EQ(text::CodePoint(StringHandle()), 0);
  EXPECT_EQ(text::CodePoint(StringHandle::FromBytes("\x93\xFA", TextEncoding{1056})), 0x65E5);
  EXPECT_TRUE(text::Character(0xD800).IsEmpty());
  EXPECT_TRUE(text::Character(-1).IsEmpty());
}

TEST(TextTest, ComparingIgnoresCaseUnlessAsked) {
  const auto compare = [](std::string_view a, std::string_view b, text::Comparison how) {
    return text::Compare(Utf8(a), Utf8(b), how);
  };
  EXPECT_EQ(compare("HELVÉTICA Ж", "helvética ж", text::Comparison::kIgnoreCase), 0);
  EXPECT_NE(compare("Helvetica", "helvetica", text::Comparison::kCaseSensitive), 0);
  EXPECT_LT(compare("a", "b", text::Comparison::kIgnoreCase), 0);
  EXPECT_GT(compare("ab", "a", text::Comparison::kIgnoreCase), 0);
  EXPECT_LT(compare("", "a", text::Comparison::kCaseSensitive), 0);
  EXPECT_EQ(compare("", "", text::Comparison::kCaseSensitive), 0);
}

TEST(TextTest, ComparingCountsCharactersWhateverTheEncodings) {
  const StringHandle utf8 = Utf8("Ünïted");
  EXPECT_EQ(text::Compare(utf8, text::Convert(utf8, TextEncoding{1280}), text::Comparison::kCaseSensitive), 0);
  EXPECT_EQ(text::Compare(utf8, text::Convert(utf8, TextEncoding::kUtf16), text::Comparison::kCaseSensitive), 0);
  const StringHandle latin = StringHandle::FromBytes("\xE9", TextEncoding{1280});
  const StringHandle cyrillic = StringHandle::FromBytes("\xE9", TextEncoding{1282});
  EXPECT_NE(text::Compare(latin, cyrillic, text::Comparison::kCaseSensitive), 0) << "the same byte, other letters";
}

// A conversion that is known to have lost nothing is not compared character by character.
TEST(TextTest, AConvertedTextEqualsItsOriginalExactlyWhenNothingWasLost) {
  const std::string_view texts[] = {"plain",      "zwölf Boxkämpfer", "żółw",     "いろは", "mixed ж é 世",
                                    "grin 😀 end", "broken \xFF byte", "\xE4\xB8", "�",      "?",
                                    "¥‾",         "text with a nul"};
  for (const std::string_view characters : texts) {
    for (const std::uint32_t from : {0x08000100U, 0x100U, 1280U, 514U, 1056U, 0xFFFFU}) {
      const StringHandle text =
          StringHandle::FromBytes(Transcode(characters, TextEncoding::kUtf8, TextEncoding{from}), TextEncoding{from});
      for (const std::uint32_t to : {0x08000100U, 0x100U, 0x600U, 0xFFFFU, 0U, 1280U, 514U, 1282U, 1056U, 1059U}) {
        const StringHandle converted = text::Convert(text, TextEncoding{to});
        const bool isSame = Decode(converted.Bytes(), converted.Encoding()) == Decode(text.Bytes(), text.Encoding());
        for (const auto comparison : {text::Comparison::kCaseSensitive, text::Comparison::kIgnoreCase}) {
          EXPECT_EQ(text::Compare(converted, text, comparison) == 0, isSame) << characters << from << " " << to;
          EXPECT_EQ(text::Compare(text, converted, comparison) == 0, isSame) << characters << from << " " << to;
        }
      }
    }
  }
}

TEST(TextTest, MemoryOfReleasedStringsIsUsedAgainWithoutATrace) {
  for (int round = 0; round < 3; ++round) {
    for (std::size_t length = 1; length < 3000; ++length) {
      const std::string bytes(length, static_cast<char>('a' + length % 26));
      const StringHandle text = Utf8(bytes);
      ASSERT_EQ(text.Bytes(), bytes);
      ASSERT_EQ(std::string_view(text.Bytes().data() + length, 2), std::string_view("\0\0", 2));
      ASSERT_EQ(text::Length(text), static_cast<std::int64_t>(length));
      const StringHandle wide = text::Convert(Utf8(bytes + "é"), TextEncoding::kUtf16);
      ASSERT_EQ(wide.Bytes().size(), 2 * length + 2);
      ASSERT_EQ(std::string_view(wide.Bytes().data() + 2 * length + 2, 2), std::string_view("\0\0", 2));
    }
  }
}

TEST(TextTest, ConcatenatingKeepsEveryCharacter) {
  const StringHandle latin = StringHandle::FromBytes("\xE9", TextEncoding{1280});
  EXPECT_EQ(text::Concatenate(latin, Utf8("ж")).Utf8(), "éж");
  EXPECT_EQ(text::Concatenate(latin, Utf8("x")).Encoding(), TextEncoding{1280});
  EXPECT_EQ(text::Concatenate(Utf8("x"), latin).Utf8(), "xé");
  EXPECT_EQ(text::Concatenate(text::Convert(Utf8("a"), TextEncoding::kUtf16), Utf8("b")).Utf8(), "ab");
}

TEST(TextTest, CaseIsMappedBeyondAscii) {
  EXPECT_EQ(text::UpperCase(Utf8("straße éж1")).Utf8(), "STRAßE ÉЖ1");
  EXPECT_EQ(text::LowerCase(Utf8("ÉЖΣ")).Utf8(), "éжσ");
}

TEST(TextTest, PartsAreFoundByCharacterPosition) {
  EXPECT_EQ(text::Find(Utf8("éXyx"), Utf8("x"), 1, text::Comparison::kIgnoreCase), 2);
  EXPECT_EQ(text::Find(Utf8("éXyx"), Utf8("x"), 1, text::Comparison::kCaseSensitive), 4);
  EXPECT_EQ(text::Find(Utf8("éXyx"), Utf8("x"), 3, text::Comparison::kIgnoreCase), 4);
  EXPECT_EQ(text::Find(Utf8("éXyx"), Utf8("q"), 1, text::Comparison::kIgnoreCase), 0);
  EXPECT_EQ(text::Find(Utf8("abc"), Utf8(""), 2, text::Comparison::kIgnoreCase), 2);
}

/// The string services, called as a plugin calls them.
class StringServiceTest : public HostFixture {
 protected:
  void SetUp() override { StartHost({}); }

  template <class Service>
  typename Service::Function Get() {
    return reinterpret_cast<typename Service::Function>(host().Resolve(Service::kName.CString()));
  }
  template <class Method>
  typename Method::Function Global() {
    return reinterpret_cast<typename Method::Function>(
        Get<service::LoadGlobalMethod>()(nullptr, Method::kDeclaration.CString()));
  }
};

TEST_F(StringServiceTest, StringDataIsConvertedAndEndsWithNuls) {
  const StringHandle text = StringHandle::FromUtf8("é");
  const Host::Loan loan(host(), text);
  StringDataRecord data{};
  ASSERT_EQ(Get<service::GetStringData>()(text.Get(), 0x100, &data), 1);
  EXPECT_EQ(data.byteLength, 2U);
  EXPECT_EQ(data.encoding, 0x100U);
  EXPECT_EQ(std::string_view(data.data, 4), std::string_view("\xE9\0\0\0", 4));
  Get<service::DisposeStringData>()(&data);
  ASSERT_EQ(Get<service::GetStringData>()(text.Get(), 0x08000100, &data), 1);
  EXPECT_STREQ(data.data, "é");
  Get<service::DisposeStringData>()(&data);
}

TEST_F(StringServiceTest, DataIsGivenBackInAnyOrder) {
  const StringHandle text = StringHandle::FromUtf8("żółw");
  const Host::Loan loan(host(), text);
  std::array<StringDataRecord, 5> data{};
  for (StringDataRecord &record : data) ASSERT_EQ(Get<service::GetStringData>()(text.Get(), 514, &record), 1);
  for (const std::size_t place : {3, 0, 4, 1, 2}) {
    EXPECT_STREQ(data[place].data, "\xBF\xF3\xB3w");
    Get<service::DisposeStringData>()(&data[place]);
  }
  EXPECT_TRUE(host().InspectLedger().IsBalanced());
  Get<service::DisposeStringData>()(&data[1]);
  ASSERT_EQ(host().InspectLedger().violations.size(), 1U);
  EXPECT_EQ(host().InspectLedger().violations[0].kind, ViolationKind::kDoubleRelease);
  IgnoreLedger();
}

TEST_F(StringServiceTest, AReleasedTextIsKnownAfterHugeOnesHaveBeenReleased) {
  const String text = Get<service::BuildStringWithEncoding>()("released", 8, 0x08000100);
  Get<service::UnlockString>()(text);
  const std::string huge(std::size_t{20} << 20, 'x');
  for (int i = 0; i < 3; ++i) StringHandle::FromUtf8(huge);
  for (int i = 0; i < 1000; ++i) {
    const String other = Get<service::BuildStringWithEncoding>()("other", 5, 0x08000100);
    ASSERT_NE(other, text);
    Get<service::UnlockString>()(other);
  }
  EXPECT_EQ(Get<service::ConvertString>()(text, 1280), nullptr);
  ASSERT_EQ(host().InspectLedger().violations.size(), 1U);
  EXPECT_EQ(host().InspectLedger().violations[0].kind, ViolationKind::kUseAfterRelease);
  IgnoreLedger();
}

TEST_F(StringServiceTest, NilHasNoDataAndNoBytes) {
  StringDataRecord data{};
  data.byteLength = 77;
  EXPECT_EQ(Get<service::GetStringData>()(nullptr, 0x100, &data), 0);
  EXPECT_EQ(data.byteLength, 77U) << "the record stays as it was";
  EXPECT_EQ(Get<service::StringGetCString>()(nullptr), nullptr);
  EXPECT_EQ(Global<global_method::Len>()(nullptr), 0);
  EXPECT_EQ(Global<global_method::LenB>()(nullptr), 0);
  EXPECT_EQ(Global<global_method::Asc>()(nullptr), 0);
  EXPECT_EQ(Global<global_method::Mid>()(nullptr, 1, 1), nullptr);
  EXPECT_EQ(Get<service::ConvertString>()(nullptr, 0x100), nullptr);
  EXPECT_EQ(Get<service::StringCompare>()(nullptr, nullptr), 0);
}

TEST_F(StringServiceTest, ResultsBelongToTheReceiver) {
  const StringHandle text = StringHandle::FromUtf8("Helvetica-Bold");
  const Host::Loan loan(host(), text);
  const String left = Global<global_method::Left>()(text.Get(), 9);
  EXPECT_STREQ(Get<service::StringGetCString>()(left), "Helvetica");
  const String built = Get<service::BuildStringWithEncoding>()("HELVETICA", 9, 0x600);
  EXPECT_EQ(Get<service::StringCompare>()(left, built), 0) << "letter case doesn't count";
  EXPECT_NE(Global<global_method::StrComp>()(left, built, 1), 0) << "in mode 1 it does";
  EXPECT_EQ(Global<global_method::StrComp>()(left, built, 0), 0);
  EXPECT_EQ(host().InspectLedger().outstanding.size(), 2U);
  Get<service::UnlockString>()(left);
  Get<service::UnlockString>()(built);
}

TEST_F(StringServiceTest, ConvertingToTheSameEncodingStillGivesAReference) {
  const StringHandle text = StringHandle::FromUtf8("same");
  const Host::Loan loan(host(), text);
  const String converted = Get<service::ConvertString>()(text.Get(), 0x08000100);
  ASSERT_NE(converted, nullptr);
  Get<service::UnlockString>()(converted);
}

TEST_F(StringServiceTest, BinaryStringsKeepTheirZeroBytes) {
  const String built = Get<service::BuildStringWithEncoding>()("a\0b", 3, 0xFFFF);
  EXPECT_EQ(Global<global_method::LenB>()(built), 3);
  EXPECT_EQ(host().TakeResult(built).Bytes(), std::string_view("a\0b", 3));
  EXPECT_EQ(Get<service::BuildStringWithEncoding>()("", 0, 0xFFFF), nullptr) << "an empty string is nil";
}

}  // namespace
}  // namespace quillbar::host
