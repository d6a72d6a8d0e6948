// SPDX-License-Identifier: MIT
// What showing shaped text costs, against the shaper alone on the same text.
#include <fmt/core.h>
#include <hb.h>
#include <hpdf.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "plugin/engine/document/document.h"
#include "plugin/engine/fonts/document_fonts.h"
#include "plugin/engine/pages/page_tree.h"

namespace quillbar::bench {
namespace {

constexpr int kRuns = 9;
constexpr int kLines = 4000;
constexpr int kLinesOnPage = 50;

struct Case {
  const char *name;
  const char *font;
  const char *text;
  hb_script_t script;
  hb_direction_t direction;
};

constexpr Case kCases[] = {
    {"Devanagari", "/usr/share/fonts/truetype/lohit-devanagari/Lohit-Devanagari.ttf",
     "सभी मनुष्यों को गौरव और अधिकारों के मामले में जन्मजात स्वतन्त्रता और समानता प्राप्त है", HB_SCRIPT_DEVANAGARI, HB_DIRECTION_LTR},
    {"Thai", "/usr/share/fonts/truetype/tlwg/Garuda.ttf", "มนุษย์ทั้งหลายเกิดมามีอิสระและเสมอภาคกันในเกียรติศักดิ์และสิทธิ",
     HB_SCRIPT_THAI, HB_DIRECTION_LTR},
    {"Arabic, ordered", "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf",
     "\u200Fيولد جميع الناس أحرارا متساوين في الكرامة والحقوق", HB_SCRIPT_ARABIC, HB_DIRECTION_RTL},
};

template <typename Work>
double Seconds(Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double ShaperAlone(const Case &one) {
  std::ifstream file(one.font, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  hb_blob_t *blob =
      hb_blob_create(bytes.data(), static_cast<unsigned>(bytes.size()), HB_MEMORY_MODE_READONLY, nullptr, nullptr);
  hb_face_t *face = hb_face_create(blob, 0);
  hb_font_t *font = hb_font_create(face);
  hb_buffer_t *buffer = hb_buffer_create();
  const double seconds = Seconds([&] {
    for (int line = 0; line < kLines; ++line) {
      hb_buffer_clear_contents(buffer);
      hb_buffer_add_utf8(buffer, one.text, -1, 0, -1);
      hb_buffer_set_script(buffer, one.script);
      hb_buffer_set_direction(buffer, one.direction);
      hb_shape(font, buffer, nullptr, 0);
    }
  });
  hb_buffer_destroy(buffer);
  hb_font_destroy(font);
  hb_face_destroy(face);
  hb_blob_destroy(blob);
  return seconds;
}

void Fail(HPDF_STATUS code, HPDF_STATUS detail, void *) {
  fmt::print(stderr, "the engine failed with error {}, detail {}\n", code, detail);
  std::exit(1);
}

double Engine(const Case &one) {
  HPDF_Doc document = engine::NewDocument(Fail, nullptr);
  HPDF_UseUTFEncodings(document);
  // Paths are in UTF-16.
  const std::u16string path(one.font, one.font + std::string_view(one.font).size());
  const char *name = engine::LoadTrueTypeFont(document, reinterpret_cast<const char *>(path.c_str()));
  HPDF_Font font = engine::GetFont(document, name, "UTF-8");
  const double seconds = Seconds([&] {
    HPDF_Page page = nullptr;
    for (int line = 0; line < kLines; ++line) {
      if (line % kLinesOnPage == 0) {
        page = engine::AddPage(document);
        HPDF_Page_BeginText(page);
        HPDF_Page_SetFontAndSize(page, font, 10);
      }
      HPDF_Page_ShowText(page, one.text);
    }
  });
  HPDF_Free(document);
  return seconds;
}

}  // namespace
}  // namespace quillbar::bench

int main() {
  using namespace quillbar::bench;
  fmt::print("nanoseconds a byte of UTF-8; the fastest of {} runs of {} lines\n\n", kRuns, kLines);
  fmt::print("{:<20} {:>10} {:>10} {:>7}\n", "", "hb_shape", "ShowText", "ratio");
  for (const Case &one : kCases) {
    if (!std::filesystem::exists(one.font)) {
      fmt::print("{:<20} {} is missing\n", one.name, one.font);
      continue;
    }
    const double perByte = 1e9 / kLines / static_cast<double>(std::string_view(one.text).size());
    // The two take turns, so that a change of the machine's speed affects both.
    double shaper = std::numeric_limits<double>::infinity(), engine = shaper;
    for (int run = 0; run < kRuns; ++run) {
      shaper = std::min(shaper, ShaperAlone(one));
      engine = std::min(engine, Engine(one));
    }
    fmt::print("{:<20} {:>10.1f} {:>10.1f} {:>7.2f}\n", one.name, shaper * perByte, engine * perByte, engine / shaper);
  }
}
