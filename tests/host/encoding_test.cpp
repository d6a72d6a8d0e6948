// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "host/runtime/text.h"
#include "host/runtime/text_encoding.h"

namespace quillbar::host {
namespace {

/// Samples from the published tables of each set: bytes and the characters that they stand for.
struct Sample {
  std::uint32_t code;
  std::string_view bytes;
  std::u32string_view text;
};

constexpr Sample kSamples[] = {
    {0, "\x80\xA5\xC6\xCA\xDB\xDE\xF0", U"Ä•∆\u00A0€ﬁ\uF8FF"},
    {1280, "\x80\x93\x99\xE9", U"€“™é"},
    {513, "\xA4\xE9", U"¤é"},
    {514, "\xA1\xB1\xF5", U"Ąąő"},
    {515, "\xA1\xB1\xFE", U"Ħħŝ"},
    {516, "\xA2\xBF\xE7", U"ĸŋį"},
    {517, "\xD0\xF0\xB6", U"а№Ж"},
    {518, "\xC7\xE4", U"ال"},
    {519, "\xC1\xF9\xFE", U"Αωώ"},
    {520, "\xE0\xFA", U"את"},
    {521, "\xD0\xFD\xFE", U"Ğış"},
    {522, "\xA1\xBD\xF0", U"Ą―ð"},
    {523, "\xA1\xDF\xFB", U"ก฿๛"},
    {525, "\xA1\xC0\xFF", U"”Ą’"},
    {526, "\xA1\xFE", U"Ḃŷ"},
    {527, "\xA4\xBD", U"€œ"},
    {1281, "\x8A\x9F\xB9", U"Šźą"},
    {1282, "\xC0\xFF\xA8", U"АяЁ"},
    {1283, "\xA2\xE1\xFE", U"Άαώ"},
    {1284, "\xD0\xFD\xFE", U"Ğış"},
    {1285, "\xE0\xA4", U"א₪"},
    {1286, "\xC7\x8D\x80", U"اچ€"},
    {1287, "\xC0\xF8", U"Ąų"},
    {1288, "\xD0\xFE\xC3", U"Đ₫Ă"},
    {2562, "\xC1\xFA\xB3", U"аЗЁ"},
    {1056, "\x93\xFA\x96\x7B\x81\x60\x87\x40\xB1", U"日本～①ｱ"},
    {1057, "\xD6\xD0\xCE\xC4\x81\x40", U"中文丂"},
    {1058, "\xC7\xD1\xB1\xDB\x81\x41", U"한글갂"},
    {1059, "\xA4\xA4\xA4\xE5\xA1\xE3", U"中文～"},
};

TextEncoding Code(std::uint32_t code) { return TextEncoding{code}; }

TEST(EncodingTest, SamplesOfEverySetDecodeAndEncode) {
  for (const Sample &sample : kSamples) {
    const std::string name(EncodingName(Code(sample.code)));
    EXPECT_TRUE(IsKnownEncoding(Code(sample.code))) << sample.code;
    EXPECT_EQ(Decode(sample.bytes, Code(sample.code)), sample.text) << name;
    EXPECT_EQ(Encode(sample.text, Code(sample.code)), sample.bytes) << name;
  }
}

TEST(EncodingTest, AsciiHasTheSameBytesInEverySetButUtf16) {
  std::string ascii;
  for (char c = 1; c < 127; ++c) ascii.push_back(c);
  for (const Sample &sample : kSamples) {
    EXPECT_EQ(Transcode(ascii, TextEncoding::kUtf8, Code(sample.code)), ascii) << sample.code;
    EXPECT_EQ(Transcode(ascii, Code(sample.code), TextEncoding::kUtf8), ascii) << sample.code;
  }
}

TEST(EncodingTest, EveryCharacterOfEverySetComesBack) {
  for (const Sample &sample : kSamples) {
    std::size_t characters = 0;
    for (char32_t character = 0; character < 0x10000; ++character) {
      if (character >= 0xD800 && character < 0xE000) continue;
      const std::string bytes = Encode({&character, 1}, Code(sample.code));
      if (bytes == "?" && character != U'?') continue;
      ++characters;
      ASSERT_EQ(Decode(bytes, Code(sample.code)), std::u32string(1, character))
          << EncodingName(Code(sample.code)) << " U+" << std::hex << static_cast<std::uint32_t>(character);
    }
    const bool isDouble = sample.code >= 1056 && sample.code <= 1059;
    EXPECT_GT(characters, isDouble ? 7000U : 180U) << EncodingName(Code(sample.code));
    EXPECT_LE(characters, isDouble ? 30000U : 256U) << EncodingName(Code(sample.code));
  }
}

TEST(EncodingTest, EveryByteOfEverySingleByteSetDecodesAndInvalidOnesAreMarked) {
  for (const Sample &sample : kSamples) {
    if (sample.code >= 1056 && sample.code <= 1059) continue;
    for (int byte = 0; byte < 256; ++byte) {
      const char c = static_cast<char>(byte);
      const std::u32string text = Decode({&c, 1}, Code(sample.code));
      ASSERT_EQ(text.size(), 1U);
      if (IsInvalid(text[0])) {
        EXPECT_EQ(text[0], kInvalidUnit + static_cast<char32_t>(byte));
      } else {
        EXPECT_EQ(Encode(text, Code(sample.code)), std::string(1, c)) << EncodingName(Code(sample.code)) << byte;
      }
    }
  }
}

TEST(EncodingTest, LackingCharactersBecomeOneQuestionMarkEach) {
  EXPECT_EQ(Transcode("aж😀é世b", TextEncoding::kUtf8, Code(1280)), "a??\xE9?b");
  EXPECT_EQ(Transcode("é", TextEncoding::kUtf8, TextEncoding::kAscii), "?");
  EXPECT_EQ(Transcode("😀", TextEncoding::kUtf8, Code(1056)), "?");
}

TEST(EncodingTest, CharactersThatWouldComeBackAsOthersAreLacking) {
  // Some converters write a backslash for the yen sign in Shift-JIS, which reads back as a backslash.
  EXPECT_EQ(Transcode("¥‾", TextEncoding::kUtf8, Code(1056)), "??");
}

TEST(EncodingTest, Utf16IsInTheMachinesOrderWithSurrogates) {
  const char16_t units[] = {u'A', 0xD83D, 0xDE00, u'é'};
  const std::string_view bytes(reinterpret_cast<const char *>(units), sizeof units);
  EXPECT_EQ(Transcode("A😀é", TextEncoding::kUtf8, TextEncoding::kUtf16), bytes);
  EXPECT_EQ(Transcode(bytes, TextEncoding::kUtf16, TextEncoding::kUtf8), "A😀é");
}

TEST(EncodingTest, InvalidInputIsReplacedAndNeverReadBeyond) {
  constexpr TextEncoding kUtf8 = TextEncoding::kUtf8;
  const auto utf8 = [](std::string_view bytes, TextEncoding from) {
    return Transcode(bytes, from, TextEncoding::kUtf16);
  };
  EXPECT_EQ(Decode("a\xFFz", kUtf8), (std::u32string{U'a', kInvalidUnit + 0xFF, U'z'}));
  EXPECT_EQ(Decode("\xE4\xB8", kUtf8).size(), 2U) << "a sequence cut short: one marker a byte";
  EXPECT_EQ(Decode("\xC0\xAF", kUtf8).size(), 2U) << "overlong";
  EXPECT_EQ(Decode("\xED\xA0\x80", kUtf8).size(), 3U) << "a surrogate";
  EXPECT_EQ(Decode("\xF5\x80\x80\x80", kUtf8).size(), 4U) << "beyond Unicode";
  EXPECT_EQ(Transcode("a\xFF", kUtf8, TextEncoding::kAscii), "a?");
  EXPECT_EQ(utf8("\xFF", kUtf8), std::string("\xFD\xFF", 2));
  EXPECT_EQ(Decode("\x93", Code(1056)), std::u32string(1, kInvalidUnit + 0x93)) << "half a character";
  EXPECT_EQ(Decode("\x93 ", Code(1056)), (std::u32string{kInvalidUnit + 0x93, U' '})) << "a wrong second byte";
  const char16_t lone[] = {0xDC00, u'x', 0xD800};
  const std::string_view bytes(reinterpret_cast<const char *>(lone), sizeof lone);
  EXPECT_EQ(Decode(bytes, TextEncoding::kUtf16), (std::u32string{kInvalidUnit + 0xDC00, U'x', kInvalidUnit + 0xD800}));
  EXPECT_EQ(Decode("abc", TextEncoding::kUtf16).size(), 2U) << "half a unit at the end";
}

TEST(EncodingTest, RawBytesAreCharactersOfTheirNumber) {
  EXPECT_EQ(Decode("\x41\xE9\xFF", TextEncoding::kRawBytes), U"Aéÿ");
  EXPECT_EQ(Transcode("é", TextEncoding::kUtf8, TextEncoding::kRawBytes), "é") << "bytes stay as they are";
}

TEST(EncodingTest, UnknownCodesAreKnownToBeUnknown) {
  for (const std::uint32_t code : {1U, 512U, 524U, 528U, 1289U, 1055U, 1060U, 0xFFFFFFFFU}) {
    EXPECT_FALSE(IsKnownEncoding(Code(code))) << code;
  }
}

/// What font fallback relies on: a conversion equals its original exactly when nothing was lost.
TEST(EncodingTest, AConvertedTextEqualsItsOriginalExactlyWhenNothingWasLost) {
  const auto fits = [](std::string_view utf8, std::uint32_t code) {
    const StringHandle original = StringHandle::FromUtf8(utf8);
    return text::Compare(text::Convert(original, Code(code)), original, text::Comparison::kCaseSensitive) == 0;
  };
  EXPECT_TRUE(fits("plain", 1280));
  EXPECT_TRUE(fits("naïve €", 1280));
  EXPECT_TRUE(fits("Что?", 1282)) << "a real question mark is no loss";
  EXPECT_FALSE(fits("Что?", 1280));
  EXPECT_TRUE(fits("日本", 1056));
  EXPECT_FALSE(fits("日本", 2562));
  EXPECT_FALSE(fits("\xFF", 1280)) << "invalid bytes are lost";
  EXPECT_FALSE(fits("\xFF", 0x100));
  EXPECT_TRUE(fits("😀", 0x100));
}

// ASCII is copied in blocks; other bytes may be anywhere in one.
TEST(EncodingTest, CharactersAreConvertedWhereverTheyStandInAText) {
  for (const std::uint32_t code : {1280U, 514U, 1056U, 0x100U, 0x600U, 0xFFFFU}) {
    for (const std::string_view odd : {"é", "ż", "世", "😀", "\xFF", "\xE4\xB8"}) {
      for (std::size_t length = 0; length < 20; ++length) {
        for (std::size_t place = 0; place <= length; ++place) {
          std::string text(length, 'x');
          text.insert(place, odd);
          const std::string expected = TextEncoding{code} == TextEncoding::kRawBytes
                                           ? text
                                           : Encode(Decode(text, TextEncoding::kUtf8), Code(code));
          ASSERT_EQ(Transcode(text, TextEncoding::kUtf8, Code(code)), expected) << code << " " << text;
          ASSERT_EQ(Transcode(expected, Code(code), TextEncoding::kUtf8),
                    Encode(Decode(expected, Code(code)), TextEncoding::kUtf8));
        }
      }
    }
  }
}

TEST(EncodingTest, Utf8IsCheckedWhereverItsCharactersStand) {
  for (std::size_t length = 0; length < 20; ++length) {
    for (std::size_t place = 0; place <= length; ++place) {
      const auto with = [=](std::string_view odd) { return std::string(length, 'x').insert(place, odd); };
      for (const std::string_view valid : {"", "é", "世界", "😀é"}) EXPECT_TRUE(IsValidUtf8(with(valid)));
      for (const std::string_view invalid :
           {"\xFF", "\xE4\xB8", "é\xA9", "\xC0\xAF", "\xED\xA0\x80", "\xF5\x80\x80\x80"})
        EXPECT_FALSE(IsValidUtf8(with(invalid)));
    }
  }
}

TEST(EncodingTest, NoConversionNeedsMoreRoomThanItAsksFor) {
  std::vector<TextEncoding> encodings{TextEncoding::kUtf8, TextEncoding::kUtf16, TextEncoding::kAscii,
                                      TextEncoding::kRawBytes};
  for (const Sample &sample : kSamples) encodings.push_back(Code(sample.code));
  for (const TextEncoding from : encodings) {
    for (const std::string_view pattern : {"\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\xFF", "\x93\xFA", "\xA4", "a"}) {
      std::string bytes;
      while (bytes.size() < 60) bytes += pattern;
      for (const TextEncoding to : encodings) {
        EXPECT_LE(Encode(Decode(bytes, from), to).size(), TranscodeRoom(bytes.size(), from, to))
            << EncodingName(from) << " to " << EncodingName(to);
      }
    }
  }
}

}  // namespace
}  // namespace quillbar::host
