// SPDX-License-Identifier: MIT
// Documents of many pages, outline entries, annotations, images and fonts, written by the engine: what one of them
// takes among a thousand and among as many as there are.
#include <fmt/core.h>
#include <hpdf.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "bench/measured_run.h"
#include "plugin/engine/document/document.h"
#include "plugin/engine/fonts/document_fonts.h"
#include "plugin/engine/images/image.h"
#include "plugin/engine/pages/page_tree.h"
#include "tests/support/synthetic_font.h"

namespace quillbar::bench {
namespace {

void Fail(HPDF_STATUS code, HPDF_STATUS detail, void *) {
  fmt::print(stderr, "The library failed with error {}, detail {}.\n", code, detail);
  std::_Exit(1);
}

/// A document that many of one thing are added to, and is then saved into memory.
class Document {
 public:
  Document() : document_(engine::NewDocument(&Fail, nullptr)) {
    font_ = engine::GetFont(document_, "Helvetica", "WinAnsiEncoding");
  }
  ~Document() { HPDF_Free(document_); }
  Document(const Document &) = delete;
  Document &operator=(const Document &) = delete;

  void AddPage() {
    page_ = engine::AddPage(document_);
    ShowIn(font_);
  }

  // All below one entry.
  void AddOutlineEntry(int number) {
    if (number == 0) root_ = HPDF_CreateOutline(document_, nullptr, "All", nullptr);
    HPDF_CreateOutline(document_, root_, fmt::format("Entry {}", number).c_str(), nullptr);
  }

  void AddAnnotation(int number) {
    if (number % 1000 == 0) AddPage();
    HPDF_Page_CreateURILinkAnnot(page_, {0, 0, 10, 10}, "https://example.com/");
  }

  void AddImage(int number) {
    if (number % 1000 == 0) AddPage();
    const HPDF_BYTE pixel = 128;
    const HPDF_Image image = engine::NewImage(
        document_, {{"ColorSpace", "DeviceGray"}, {"Width", 1}, {"Height", 1}, {"BitsPerComponent", 8}});
    HPDF_Stream_Write(image->stream, &pixel, 1);
    HPDF_Page_DrawImage(page_, image, 10, 10, 5, 5);
  }

  // Each from metrics of its own.
  void AddFont(int number) {
    if (number % 100 == 0) AddPage();
    const std::string name = fmt::format("Face{}", number);
    ShowIn(LoadAndRemove(name + ".afm",
                         "StartFontMetrics 4.1\nFontName " + name +
                             "\nEncodingScheme AdobeStandardEncoding\nFontBBox 0 -200 1000 800\nAscender 700\n"
                             "Descender -200\nStartCharMetrics 2\nC 32 ; WX 250 ; N space ; B 0 0 0 0 ;\n"
                             "C 65 ; WX 700 ; N A ; B 0 0 700 700 ;\nEndCharMetrics\nEndFontMetrics\n",
                         [&](const char *path) { return engine::LoadType1Font(document_, path, nullptr); }));
  }

  // Each from a file of its own, all of one name.
  void AddTrueTypeFont(int number) {
    if (number % 100 == 0) AddPage();
    test::SyntheticFont font(2);
    font.SetOutline(1, test::SyntheticFont::Square(static_cast<unsigned>(number) + 1));
    const test::FontBytes bytes = font.Build();
    ShowIn(LoadAndRemove("font.ttf", {reinterpret_cast<const char *>(bytes.data()), bytes.size()},
                         [&](const char *path) { return engine::LoadTrueTypeFont(document_, path); }));
  }

  void Save() { engine::SaveToMemory(document_); }

 private:
  // The font of a file with these contents, which `load` loads by its path in UTF-16.
  template <class Load>
  HPDF_Font LoadAndRemove(const std::string &name, const std::string &contents, Load load) {
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / fmt::format("quillbar-scale-{}-{}", getpid(), name);
    std::ofstream(file, std::ios::binary) << contents;
    const std::u16string path = file.u16string();
    const char *const loaded = load(reinterpret_cast<const char *>(path.c_str()));
    std::filesystem::remove(file);
    return engine::GetFont(document_, loaded, "WinAnsiEncoding");
  }
  void ShowIn(HPDF_Font font) {
    HPDF_Page_BeginText(page_);
    HPDF_Page_SetFontAndSize(page_, font, 11);
    HPDF_Page_MoveTextPos(page_, 56, 780);
    HPDF_Page_ShowText(page_, "A page with one line of text.");
    HPDF_Page_EndText(page_);
  }
  HPDF_Doc document_;
  HPDF_Font font_ = nullptr;
  HPDF_Page page_ = nullptr;
  HPDF_Outline root_ = nullptr;
};

struct Kind {
  const char *name;
  int few, many;
  void (*add)(Document &, int number);
};

constexpr Kind kKinds[] = {
    {"pages", 1000, 100'000, [](Document &document, int) { document.AddPage(); }},
    {"outline entries", 1000, 100'000, [](Document &document, int number) { document.AddOutlineEntry(number); }},
    {"annotations", 1000, 100'000, [](Document &document, int number) { document.AddAnnotation(number); }},
    {"images", 1000, 10'000, [](Document &document, int number) { document.AddImage(number); }},
    {"fonts", 500, 5000, [](Document &document, int number) { document.AddFont(number); }},
    {"TrueType fonts of one name", 500, 5000, [](Document &document, int number) { document.AddTrueTypeFont(number); }},
};

// A document with `count` of a kind, written and freed, or freed only.
void Write(const Kind &kind, int count, bool isSaved = true) {
  Document document;
  document.AddPage();
  for (int number = 0; number < count; ++number) kind.add(document, number);
  if (isSaved) document.Save();
}

// In a process of its own, so that few don't profit from the memory that others have fetched.
Measurement MeasureWriting(const Kind &kind, int count, bool isSaved = true) {
  return MeasureInOwnProcess([&] {
    return [&] {
      Write(kind, count, isSaved);
      return std::int64_t{0};
    };
  });
}

// Microseconds of each of `count`, from the first one added to the freed document: the processor's time, which other
// programs add little to.
double Measure(const Kind &kind, int count) { return MeasureWriting(kind, count).processorSeconds / count * 1e6; }

// Lines for a plot: how many pages, seconds of the processor's time, MiB that the process's memory rose at its peak.
void PrintSeries() {
  for (const int count : {1000, 2000, 5000, 10'000, 20'000, 40'000, 60'000, 80'000, 100'000}) {
    Measurement least = MeasureWriting(kKinds[0], count);
    for (int run = 1; run < 5; ++run) {
      const Measurement other = MeasureWriting(kKinds[0], count);
      least.processorSeconds = std::min(least.processorSeconds, other.processorSeconds);
      least.growthBytes = std::min(least.growthBytes, other.growthBytes);
    }
    fmt::print("{} {:.4f} {:.1f}\n", count, least.processorSeconds, static_cast<double>(least.growthBytes) / 1048576.0);
    std::fflush(stdout);
  }
}

// By how many bytes the process's memory rises for each of `count` before a document is saved.
std::int64_t MeasureBytes(const Kind &kind, int count) {
  return MeasureWriting(kind, count, false).growthBytes / count;
}

// The least of some runs: whatever else the machine does only makes a run slower.
void Compare(const Kind &kind, bool isShort) {
  const int many = isShort ? kind.many / 100 : kind.many, few = isShort ? kind.few / 100 : kind.few;
  double ofFew = Measure(kind, few), ofMany = Measure(kind, many);
  for (int run = 1; run < (isShort ? 1 : 15); ++run) ofFew = std::min(ofFew, Measure(kind, few));
  for (int run = 1; run < (isShort ? 1 : 3); ++run) ofMany = std::min(ofMany, Measure(kind, many));
  fmt::print("{:<26} {:>7} {:>8} {:>10.2f} {:>10.2f} {:>6.2f} {:>8}\n", kind.name, few, many, ofFew, ofMany,
             ofMany / ofFew, MeasureBytes(kind, many));
  std::fflush(stdout);
}

}  // namespace
}  // namespace quillbar::bench

int main(int argumentCount, char **arguments) {
  namespace bench = quillbar::bench;
  CLI::App program{"What a page, an outline entry, an annotation, an image and a font take among few and among many."};
  bool isShort = false;
  std::string only;
  int count = 0;
  bool isSeries = false;
  program.add_flag("--short", isShort, "Writes a hundredth of each once, to see that it works");
  program.add_option("--only", only, "Only the kinds whose names contain this");
  program.add_option("--count", count, "Writes this many of each once, in this process, for a profiler");
  program.add_flag("--series", isSeries, "Prints time and memory of 1,000 to 100,000 pages, for a plot");
  CLI11_PARSE(program, argumentCount, arguments);
  try {
    if (count > 0) {
      for (const bench::Kind &kind : bench::kKinds) {
        if (std::string_view(kind.name).find(only) != std::string_view::npos) bench::Write(kind, count);
      }
      return 0;
    }
    if (isSeries) {
      bench::PrintSeries();
      return 0;
    }
    fmt::print(
        "Processor time of one in microseconds, with its part of saving, and its memory until then in bytes.\n\n");
    fmt::print("{:<26} {:>7} {:>8} {:>10} {:>10} {:>6} {:>8}\n", "", "few", "many", "of few", "of many", "ratio",
               "bytes");
    for (const bench::Kind &kind : bench::kKinds) {
      if (std::string_view(kind.name).find(only) != std::string_view::npos) bench::Compare(kind, isShort);
    }
  } catch (const std::exception &problem) {
    fmt::print(stderr, "{}\n", problem.what());
    return 1;
  }
  return 0;
}
