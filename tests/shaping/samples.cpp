// SPDX-License-Identifier: MIT
#include "tests/shaping/samples.h"

#include <algorithm>
#include <string_view>

#include "tests/support/real_fonts.h"

namespace quillbar::test {
namespace {

#define NOTO(name) "/usr/share/fonts/truetype/noto/" name "-Regular.ttf"
#define LOHIT(folder, name) "/usr/share/fonts/truetype/lohit-" folder "/Lohit-" name ".ttf"

const WritingSystem kLatin{"Latin", {{'A', 'Z'}, {'a', 'z'}, {0xC0, 0x24F}, {0x1E00, 0x1EFF}}};
const WritingSystem kAccents{
    "Accents", {{0x300, 0x34E}, {0x350, 0x36F}}, false, {{'A', 'Z'}, {'a', 'z'}, {0xC0, 0x2FF}, {0x1E00, 0x1EFF}}};
const WritingSystem kGreek{"Greek", {{0x370, 0x3FF}, {0x1F00, 0x1FFF}}};
const WritingSystem kCyrillic{"Cyrillic", {{0x400, 0x52F}}};
const WritingSystem kArmenian{"Armenian", {{0x530, 0x58F}}};
const WritingSystem kGeorgian{"Georgian", {{0x10A0, 0x10FF}, {0x1C90, 0x1CBF}}};
const WritingSystem kEthiopic{"Ethiopic", {{0x1200, 0x139F}}};
const WritingSystem kCherokee{"Cherokee", {{0x13A0, 0x13FF}, {0xAB70, 0xABBF}}};
const WritingSystem kHan{"Han", {{0x3000, 0x30FF}, {0x4E00, 0x9FFF}}};
const WritingSystem kHangul{"Hangul", {{0xAC00, 0xD7AF}}};

const WritingSystem kDevanagari{"Devanagari", {{0x900, 0x97F}, {0xA8E0, 0xA8FF}}};
const WritingSystem kBengali{"Bengali", {{0x980, 0x9FF}}};
const WritingSystem kGurmukhi{"Gurmukhi", {{0xA00, 0xA7F}}};
const WritingSystem kGujarati{"Gujarati", {{0xA80, 0xAFF}}};
const WritingSystem kOriya{"Oriya", {{0xB00, 0xB7F}}};
const WritingSystem kTamil{"Tamil", {{0xB80, 0xBFF}}};
const WritingSystem kTelugu{"Telugu", {{0xC00, 0xC7F}}};
const WritingSystem kKannada{"Kannada", {{0xC80, 0xCFF}}};
const WritingSystem kMalayalam{"Malayalam", {{0xD00, 0xD7F}}};
const WritingSystem kSinhala{"Sinhala", {{0xD80, 0xDFF}}};
const WritingSystem kThai{"Thai", {{0xE00, 0xE7F}}};
const WritingSystem kLao{"Lao", {{0xE80, 0xEFF}}};
const WritingSystem kTibetan{"Tibetan", {{0xF00, 0xFFF}}};
const WritingSystem kMyanmar{"Myanmar", {{0x1000, 0x109F}, {0xA9E0, 0xA9FF}, {0xAA60, 0xAA7F}}};
const WritingSystem kKhmer{"Khmer", {{0x1780, 0x17FF}, {0x19E0, 0x19FF}}};
const WritingSystem kHebrew{"Hebrew", {{0x590, 0x5FF}, {0xFB1D, 0xFB4F}}, true};
const WritingSystem kArabic{
    "Arabic", {{0x600, 0x65F}, {0x66A, 0x6EF}, {0x6FA, 0x6FF}, {0x750, 0x77F}, {0x8A0, 0x8FF}}, true};
const WritingSystem kThaana{"Thaana", {{0x780, 0x7BF}, {0x60C, 0x60C}, {0x61B, 0x61B}, {0x61F, 0x61F}}, true};

}  // namespace

const std::vector<Sample> &Samples() {
  using enum Shaping;
  static const std::vector<Sample> samples{
      {kLatin, kNoChoices, "DejaVuSans", "fonts-dejavu-core", kDejaVuSans},
      {kAccents, kMarks, "DejaVuSans", "fonts-dejavu-core", kDejaVuSans},
      {kAccents, kMarks, "NotoSans", "fonts-noto-core", NOTO("NotoSans")},
      {kAccents, kMarks, "EbGaramond", "fonts-ebgaramond", kEbGaramond},
      {kAccents, kMarks, "InterVariable", "fonts-inter-variable", kInterVariable},
      {kLatin, kNoChoices, "EbGaramond", "fonts-ebgaramond", kEbGaramond},
      {kLatin, kNoChoices, "InterVariable", "fonts-inter-variable", kInterVariable},
      {kHan, kNoChoices, "WqyMicroHei", "fonts-wqy-microhei", kMicroHei},
      {kGreek, kNoChoices, "DejaVuSans", "fonts-dejavu-core", kDejaVuSans},
      {kCyrillic, kNoChoices, "DejaVuSans", "fonts-dejavu-core", kDejaVuSans},
      {kCyrillic, kNoChoices, "NotoSans", "fonts-noto-core", NOTO("NotoSans")},
      {kArmenian, kNoChoices, "NotoSans", "fonts-noto-core", NOTO("NotoSansArmenian")},
      {kGeorgian, kNoChoices, "NotoSans", "fonts-noto-core", NOTO("NotoSansGeorgian")},
      {kEthiopic, kNoChoices, "NotoSans", "fonts-noto-core", NOTO("NotoSansEthiopic")},
      {kCherokee, kNoChoices, "NotoSans", "fonts-noto-core", NOTO("NotoSansCherokee")},
      {kHan, kNoChoices, "IpaMincho", "fonts-ipafont-mincho", kIpaMincho},
      {kDevanagari, kFull, "NotoSans", "fonts-noto-core", NOTO("NotoSansDevanagari")},
      {kDevanagari, kFull, "NotoSerif", "fonts-noto-core", NOTO("NotoSerifDevanagari")},
      {kDevanagari, kFull, "Lohit", "fonts-lohit-deva", LOHIT("devanagari", "Devanagari")},
      {kBengali, kFull, "NotoSans", "fonts-noto-core", NOTO("NotoSansBengali")},
      {kBengali, kFull, "Lohit", "fonts-lohit-beng-bengali", LOHIT("bengali", "Bengali")},
      {kGurmukhi, kFull, "NotoSans", "fonts-noto-core", NOTO("NotoSansGurmukhi")},
      {kGurmukhi, kFull, "Lohit", "fonts-lohit-guru", LOHIT("punjabi", "Gurmukhi")},
      {kGujarati, kFull, "NotoSans", "fonts-noto-core", NOTO("NotoSansGujarati")},
      {kGujarati, kFull, "Lohit", "fonts-lohit-gujr", LOHIT("gujarati", "Gujarati")},
      {kOriya, kFull, "NotoSans", "fonts-noto-core", NOTO("NotoSansOriya")},
      {kOriya, kFull, "Lohit", "fonts-lohit-orya", LOHIT("oriya", "Odia")},
      {kTamil, kFull, "NotoSans", "fonts-noto-core", NOTO("NotoSansTamil")},
      {kTamil, kFull, "Lohit", "fonts-lohit-taml", LOHIT("tamil", "Tamil")},
      {kTelugu, kFull, "NotoSans", "fonts-noto-core", NOTO("NotoSansTelugu")},
      {kTelugu, kFull, "Lohit", "fonts-lohit-telu", LOHIT("telugu", "Telugu")},
      {kKannada, kFull, "NotoSans", "fonts-noto-core", NOTO("NotoSansKannada")},
      {kKannada, kFull, "Lohit", "fonts-lohit-knda", LOHIT("kannada", "Kannada")},
      {kMalayalam, kFull, "NotoSans", "fonts-noto-core", NOTO("NotoSansMalayalam")},
      {kMalayalam, kFull, "Lohit", "fonts-lohit-mlym", LOHIT("malayalam", "Malayalam")},
      {kSinhala, kFull, "NotoSans", "fonts-noto-core", NOTO("NotoSansSinhala")},
      {kThai, kFull, "NotoSans", "fonts-noto-core", NOTO("NotoSansThai")},
      {kThai, kFull, "Garuda", "fonts-tlwg-garuda-ttf", kGaruda},
      {kThai, kFull, "Norasi", "fonts-tlwg-norasi-ttf", "/usr/share/fonts/truetype/tlwg/Norasi.ttf"},
      {kLao, kFull, "NotoSans", "fonts-noto-core", NOTO("NotoSansLao")},
      {kLao, kFull, "DejaVuSans", "fonts-dejavu-core", kDejaVuSans},
      {kTibetan, kFull, "NotoSerif", "fonts-noto-core", NOTO("NotoSerifTibetan")},
      {kMyanmar, kFull, "NotoSans", "fonts-noto-core", NOTO("NotoSansMyanmar")},
      {kKhmer, kFull, "NotoSans", "fonts-noto-core", NOTO("NotoSansKhmer")},
      {kKhmer, kFull, "NotoSerif", "fonts-noto-core", NOTO("NotoSerifKhmer")},
      {kHebrew, kFull, "NotoSans", "fonts-noto-core", NOTO("NotoSansHebrew")},
      {kHebrew, kFull, "EzraSil", "fonts-sil-ezra", kEzra},
      {kArabic, kFull, "NotoSans", "fonts-noto-core", NOTO("NotoSansArabic")},
      {kArabic, kFull, "NotoNaskh", "fonts-noto-core", NOTO("NotoNaskhArabic")},
      {kArabic, kFull, "NotoNastaliq", "fonts-noto-core", NOTO("NotoNastaliqUrdu")},
      {kArabic, kFull, "Amiri", "fonts-hosny-amiri", kAmiri},
      {kArabic, kFull, "DejaVuSans", "fonts-dejavu-core", kDejaVuSans},
      {kThaana, kFull, "NotoSans", "fonts-noto-core", NOTO("NotoSansThaana")},
      {kHangul, kNoChoices, "NanumGothic", "fonts-nanum", "/usr/share/fonts/truetype/nanum/NanumGothic.ttf"},
  };
  return samples;
}

std::vector<Sample> ShapedSamples() {
  std::vector<Sample> samples;
  for (const Sample &sample : Samples()) {
    const bool isKnown = std::ranges::any_of(
        samples, [&](const Sample &other) { return std::string_view(other.system.name) == sample.system.name; });
    if (sample.shaping == Shaping::kFull && !isKnown) samples.push_back(sample);
  }
  return samples;
}

void PrintTo(const Sample &sample, std::ostream *out) { *out << sample.system.name << " in " << sample.fontName; }

std::string NameOf(const Sample &sample) { return std::string(sample.system.name) + "_" + sample.fontName; }

std::string AsGiven(const Sample &sample, const std::string &text) {
  return sample.system.isRightToLeft ? "\u200F" + text : text;
}

}  // namespace quillbar::test
