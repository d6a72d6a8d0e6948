// SPDX-License-Identifier: MIT
// What a character of text costs: through the plugin, and with libharu alone, which gets bytes that were converted
// before.
#include <fmt/core.h>
#include <hpdf.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "bench/measured_run.h"
#include "bench/member_address.h"
#include "host/runtime/host.h"
#include "host/runtime/text_encoding.h"

namespace quillbar::bench {
namespace {

constexpr char kTrueTypeFile[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr int kLinesOnPage = 50;

enum class Action { kShow, kBox, kMeasure };

// A text and how it reaches libharu.
struct Text {
  const char *utf8;
  std::uint32_t hostEncoding;
  const char *font;  // libharu's; null for the TrueType file
  const char *encoder;
};

struct Case {
  const char *name;
  Action action;
  bool isAutomatic;
  std::vector<Text> texts;  // in turn
};

const char *const kLatin = "The quick brown fox jumps over the lazy dog, and zwölf Boxkämpfer";
const char *const kParagraph =
    "The quick brown fox jumps over the lazy dog while twelve boxers chase one of their own across the great "
    "dyke, and "
    "nobody who watches from the harbour wall can say whether the fox, the dog or the boxers have the better "
    "of it, for "
    "the light is going and the fog comes in from the sea. By the time the lamps are lit the dyke is empty.";

const std::vector<Case> kCases{
    {"ShowText, Windows Latin 1", Action::kShow, false, {{kLatin, 1280, "Helvetica", "WinAnsiEncoding"}}},
    {"ShowText, UTF-8, TrueType", Action::kShow, false, {{kLatin, 0x08000100, nullptr, "UTF-8"}}},
    {"ShowText, AUTOMATIC, text that fits", Action::kShow, true, {{kLatin, 1280, "Helvetica", "WinAnsiEncoding"}}},
    {"ShowText, AUTOMATIC, a switch on each line",
     Action::kShow,
     true,
     {{"Zażółć gęślą jaźń, powiedział dzięcioł do żółwia w gęstwinie", 514, "Helvetica", "ISO8859-2"},
      {"Ħarsien ta’ ġonna żgħar u ħelwin f’Għawdex", 515, "Helvetica", "ISO8859-3"}}},
    {"ShowText, AUTOMATIC, Japanese",
     Action::kShow,
     true,
     {{"いろはにほへと散りぬるを我が世誰ぞ常ならむ有為の奥山今日越えて浅き夢見じ酔ひもせず", 1056, "MS-Mincho",
       "90msp-RKSJ-H"}}},
    {"TextRect, justified", Action::kBox, false, {{kParagraph, 1280, "Helvetica", "WinAnsiEncoding"}}},
    {"TextRect, UTF-8, TrueType", Action::kBox, false, {{kParagraph, 0x08000100, nullptr, "UTF-8"}}},
    {"MeasureText", Action::kMeasure, false, {{kParagraph, 1280, "Helvetica", "WinAnsiEncoding"}}},
};

// The same calls in the same order for both writers.
template <class Writer>
void WriteLines(Writer &writer, const Case &one, int lines) {
  for (int line = 0; line < lines; ++line) {
    if (line % kLinesOnPage == 0) writer.BeginPage();
    writer.Act(one.action, static_cast<std::size_t>(line) % one.texts.size());
  }
}

class LibraryWriter {
 public:
  explicit LibraryWriter(const Case &one) : switches_(one.isAutomatic && one.texts.size() > 1) {
    document_ = HPDF_New(&LibraryWriter::Fail, nullptr);
    HPDF_UseUTFEncodings(document_);
    HPDF_UseJPFonts(document_);
    HPDF_UseJPEncodings(document_);
    for (const Text &text : one.texts) {
      bytes_.push_back(host::Transcode(text.utf8, TextEncoding::kUtf8, static_cast<TextEncoding>(text.hostEncoding)));
      const char *name = text.font ? text.font : HPDF_LoadTTFontFromFile(document_, kTrueTypeFile, HPDF_TRUE);
      fonts_.push_back(HPDF_GetFont(document_, name, text.encoder));
    }
  }
  ~LibraryWriter() { HPDF_Free(document_); }
  LibraryWriter(const LibraryWriter &) = delete;
  LibraryWriter &operator=(const LibraryWriter &) = delete;

  void BeginPage() {
    page_ = HPDF_AddPage(document_);
    HPDF_Page_BeginText(page_);
    HPDF_Page_SetFontAndSize(page_, fonts_[0], 10);
    HPDF_Page_SetTextLeading(page_, 12);
  }

  void Act(Action action, std::size_t text) {
    const char *bytes = bytes_[text].c_str();
    HPDF_UINT length = 0;
    switch (action) {
      case Action::kShow:
        if (switches_) HPDF_Page_SetFontAndSize(page_, fonts_[text], 10);
        HPDF_Page_ShowText(page_, bytes);
        break;
      case Action::kBox:
        HPDF_Page_TextRect(page_, 50, 800, 300, 50, bytes, HPDF_TALIGN_JUSTIFY, &length);
        break;
      case Action::kMeasure:
        HPDF_Page_MeasureText(page_, bytes, 300, HPDF_TRUE, nullptr);
        break;
    }
  }

 private:
  static void Fail(HPDF_STATUS code, HPDF_STATUS detail, void *) {
    fmt::print(stderr, "libharu failed with error {}, detail {}\n", code, detail);
    std::_Exit(1);
  }

  bool switches_;
  HPDF_Doc document_ = nullptr;
  HPDF_Page page_ = nullptr;
  std::vector<std::string> bytes_;
  std::vector<HPDF_Font> fonts_;
};

class PluginWriter {
 public:
  explicit PluginWriter(const Case &one) {
    host_.LoadPlugin(QUILLBAR_COMPANION_FILE);
    host_.LoadPlugin(QUILLBAR_PLUGIN_FILE);
    FindMember(addPage_, host_, "PDFDocument", "AddPage");
    FindMember(beginText_, host_, "Page", "BeginText");
    FindMember(setFont_, host_, "Page", "SetFont");
    FindMember(showText_, host_, "Page", "ShowText");
    FindMember(textRect_, host_, "Page", "TextRect");
    FindMember(measureText_, host_, "Page", "MeasureText", 3);
    document_ = host_.Create("PDFDocument");
    if (one.texts[0].font == nullptr) {
      font_ = host_.Call(document_, "LoadTrueTypeFont", {host_.Create("FolderItem", {kTrueTypeFile})}).AsObject();
    } else {
      const char *encoding = one.isAutomatic ? "Font.FontEncodingEnum.AUTOMATIC" : "Font.FontEncodingEnum.WINDOWS_ANSI";
      font_ = host_.Call(document_, "GetFont", {"Helvetica", host_.Constant(encoding)}).AsObject();
    }
    if (font_.IsNil()) throw std::runtime_error("the plugin has no font for this text");
    for (const Text &text : one.texts) texts_.push_back(host::StringHandle::FromUtf8(text.utf8));
    for (const host::StringHandle &text : texts_) Lend(text);
    Lend(document_);
    Lend(font_);
  }

  void BeginPage() {
    pages_.push_back(host_.TakeResult(addPage_(document_.Get())));
    Lend(pages_.back());
    page_ = pages_.back().Get();
    beginText_(page_);
    setFont_(page_, font_.Get(), 10);
    host_.Set(pages_.back(), "TextLeading", 12);
  }

  void Act(Action action, std::size_t text) {
    constexpr Integer kJustify = 3;
    Integer length = 0;
    switch (action) {
      case Action::kShow:
        showText_(page_, texts_[text].Get());
        break;
      case Action::kBox:
        textRect_(page_, texts_[text].Get(), 50, 800, 300, 50, kJustify, &length);
        break;
      case Action::kMeasure:
        measureText_(page_, texts_[text].Get(), 300, 1);
        break;
    }
  }

 private:
  template <class Handle>
  void Lend(const Handle &handle) {
    loans_.push_back(std::make_unique<host::Host::Loan>(host_, handle));
  }

  host::Host host_;
  Object (*addPage_)(Object);
  void (*beginText_)(Object);
  void (*setFont_)(Object, Object, float);
  void (*showText_)(Object, String);
  void (*textRect_)(Object, String, float, float, float, float, Integer, Integer *);
  Integer (*measureText_)(Object, String, float, Boolean);
  host::ObjectHandle document_, font_;
  std::vector<host::ObjectHandle> pages_;
  std::vector<host::StringHandle> texts_;
  std::vector<std::unique_ptr<host::Host::Loan>> loans_;
  Object page_ = nullptr;
};

template <class Writer>
Run RunOf(const Case &one, int lines) {
  return [&one, lines]() -> MeasuredPart {
    const auto writer = std::make_shared<Writer>(one);
    return [writer, &one, lines]() -> std::int64_t {
      WriteLines(*writer, one, lines);
      return 0;
    };
  };
}

void Compare(const Case &one, int runs, int lines) {
  // Whatever else the machine does makes a run slower, never faster.
  double library = std::numeric_limits<double>::infinity(), plugin = library;
  for (int run = 0; run < runs; ++run) {
    library = std::min(library, MeasureInOwnProcess(RunOf<LibraryWriter>(one, lines)).seconds);
    plugin = std::min(plugin, MeasureInOwnProcess(RunOf<PluginWriter>(one, lines)).seconds);
  }
  std::size_t characters = 0;
  for (const Text &text : one.texts) characters += host::Decode(text.utf8, TextEncoding::kUtf8).size();
  const double perCharacter = 1e9 / (static_cast<double>(characters) / static_cast<double>(one.texts.size()) * lines);
  fmt::print("{:<44} {:>9.1f} {:>9.1f} {:>7.2f}\n", one.name, library * perCharacter, plugin * perCharacter,
             plugin / library);
  std::fflush(stdout);
}

}  // namespace
}  // namespace quillbar::bench

int main(int argumentCount, char **arguments) {
  CLI::App program{"What showing, setting and measuring text costs a character, against libharu alone."};
  int runs = 7;
  program.add_option("--runs", runs, "Runs of each case and writer; the fastest counts")
      ->check(CLI::Range(1, 1000))
      ->capture_default_str();
  int lines = 20'000;
  program.add_option("--lines", lines, "Lines that each run writes")
      ->check(CLI::Range(50, 10'000'000))
      ->capture_default_str();
  std::string only;
  program.add_option("--only", only, "Only the cases whose name contains this");
  CLI11_PARSE(program, argumentCount, arguments);

  if (!std::filesystem::exists(quillbar::bench::kTrueTypeFile)) {
    fmt::print(stderr, "{} is missing: install fonts-dejavu-core.\n", quillbar::bench::kTrueTypeFile);
    return 1;
  }
  fmt::print("Fastest of {} runs of {} lines, each run in its own process; nanoseconds a character.\n\n", runs, lines);
  fmt::print("{:<44} {:>9} {:>9} {:>7}\n", "", "libharu", "plugin", "ratio");
  try {
    for (const auto &one : quillbar::bench::kCases) {
      if (std::string_view(one.name).find(only) != std::string_view::npos) quillbar::bench::Compare(one, runs, lines);
    }
  } catch (const std::exception &problem) {
    fmt::print(stderr, "{}\n", problem.what());
    return 1;
  }
  return 0;
}
