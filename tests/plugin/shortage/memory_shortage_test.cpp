// SPDX-License-Identifier: MIT
// Memory that runs out at every point of a script: once, and then there is some again; or from there on, until the
// script's end; and where something is made that stays for the life of the plugin. Nothing crashes and no exception
// leaves a plugin, nothing that it was lent or that it allocated is kept, and scripts are told: by error 4117, or by a Nil
// or an empty text where there is nobody to tell.
//
// A run of the suite takes samples; QUILLBAR_EVERY_SHORTAGE=1 takes every point, 20 every twentieth.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>

#include "host/runtime/class_model.h"
#include "tests/plugin/driver/plugin_test.h"
#include "tests/plugin/shortage/every_member.h"
#include "tests/plugin/shortage/watched_memory.h"
#include "tests/support/jpeg_maker.h"
#include "tests/support/real_fonts.h"
#include "tests/support/sample.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kOutOfMemory = 0x1015;
/// In a compressed stream: the compressor's own number for it, or the number above, behind the library's for a compressor
/// that failed.
constexpr Failure kInCompressor{library_error::kZlibError, static_cast<std::uint32_t>(-4)};
constexpr Failure kBehindCompressor{library_error::kZlibError, kOutOfMemory};

class MemoryShortage : public PluginTest, public testing::WithParamInterface<bool> {
 protected:
  void SetUp() override {
    PluginTest::SetUp();
    if (!watched_memory::IsPossible()) GTEST_SKIP() << "the C library's functions can't be replaced here";
    watched_memory::Watch({"QuillbarPDFWriter.so", "QuillbarCompanion.so"});
  }

  /// Runs `script` with memory that runs out after ever more allocations, `step` by `step`, until it needs no more than
  /// it gets. `script` tells whether memory did run out, if it granted memory again itself.
  template <class Script>
  void AtEachPoint(const Script &script, long step) {
    const char *const wanted = std::getenv("QUILLBAR_EVERY_SHORTAGE");
    if (wanted != nullptr) step = std::clamp(std::atol(wanted), 1L, step);
    script();  // what is kept for the life of the plugin is made now
    const std::size_t blocks = watched_memory::BlockCount();
    bool hasFailed = true;
    for (long point = 0; hasFailed && !HasFatalFailure(); point += step) {
      ASSERT_LT(point, 1'000'000) << "the script never gets all the memory that it needs";
      SCOPED_TRACE(testing::Message() << "allocation " << point << " failed");
      watched_memory::RefuseAfter(point, GetParam());
      hasFailed = script();
      if (watched_memory::GrantAll()) hasFailed = true;
      EXPECT_EQ(watched_memory::BlockCount(), blocks) << "memory was not given back";
      const host::LedgerReport ledger = host().InspectLedger();
      EXPECT_TRUE(ledger.IsBalanced()) << ledger.Text();
      if (HasFailure() && wanted == nullptr) return;
    }
  }
};

TEST_P(MemoryShortage, InADocument) {
  QUILLBAR_NEEDS_FONT(kDejaVuSans, "fonts-dejavu-core");
  QUILLBAR_NEEDS_FONT(kRomanMetrics, "fonts-urw-base35");
  watched_memory::Watch({"QuillbarPDFWriter.so"});
  std::size_t wholeSize = 0;
  AtEachPoint(
      [&] {
        const TemporaryFolder folder;
        static bool hasFailed;
        hasFailed = false;
        const ScriptResult result = UseDocument(host(), folder.path(), [] { hasFailed = watched_memory::GrantAll(); });
        if (!hasFailed) {
          EXPECT_THAT(result.failures, IsEmpty());
          wholeSize = result.file.size();
        } else if (!result.file.empty() && result.failures.empty()) {
          // Where nothing was made at all there is nobody to tell, and no file. Nor is there anything to tell where the
          // second try to get memory succeeded.
          EXPECT_EQ(result.file.size(), wholeSize);
        }
        if (!result.failures.empty()) {
          EXPECT_THAT(result.failures.front(), AnyOf(Failure{kOutOfMemory, 0}, kInCompressor, kBehindCompressor));
        }
        if (!result.file.empty()) {
          EXPECT_TRUE(PdfFile(result.file).IsOpen());
        }
        for (const auto &file : std::filesystem::directory_iterator(folder.path())) {
          EXPECT_EQ(file.path().filename(), "saved.pdf");
          EXPECT_TRUE(PdfFile(ReadFile(file.path())).IsOpen());
        }
        return hasFailed;
      },
      TakesSamples() ? 613 : 311);
}

TEST_P(MemoryShortage, InRasters) {
  const TemporaryFolder folder;
  const std::filesystem::path picture = folder / "picture.jpg";
  WriteFile(picture, MakeJpeg({}));
  AtEachPoint(
      [&] {
        UseRasters(host(), picture);
        return false;
      },
      3);
}

// What HarfBuzz makes once and keeps for all fonts must not be made by halves: no later font would be shaped.
TEST_P(MemoryShortage, WhenTextIsShapedForTheFirstTime) {
  QUILLBAR_NEEDS_FONT(kDejaVuSans, "fonts-dejavu-core");
  const auto widthOf = [this](const ScriptObject &page, const char *text) {
    std::vector<host::Value> arguments{text, 1000, false, 0.0F};
    host().CallByRef(page.handle(), "MeasureText", arguments);
    return arguments[3].AsSingle();
  };
  // Shows text whose letters join and whose marks are placed. Gives how wide joined letters are.
  const auto show = [&](const Document &document, long granted = -1) {
    const ScriptObject page = document.AddPage();
    watched_memory::RefuseAfter(granted, GetParam());
    const ScriptObject font = document.CallObject("LoadTrueTypeFont", NewFolderItem(kDejaVuSans));
    page.Call("SetFont", font, 20.0F);
    page.Call("BeginText");
    page.Call("ShowText", "\u200Fالسلام ههه e\u0323\u0301");
    page.Call("EndText");
    return widthOf(page, "\u200Fههه");
  };
  std::string expected;
  float joined = 0;
  bool hasFailed = true;
  int refused = 0;
  // HarfBuzz begins once the file has been read; the sample is where it makes what it keeps.
  const bool takesAll = std::getenv("QUILLBAR_EVERY_SHORTAGE") != nullptr;
  const long beforeEnd = takesAll ? 400 : 270;
  const long step = !takesAll && TakesSamples() ? 3 : 1;
  long pointsLeft = takesAll ? 10'000 : 30 / step;
  for (long point = -1; hasFailed && pointsLeft-- > 0 && !HasFatalFailure(); point += step) {
    SCOPED_TRACE(testing::Message() << "allocation " << point << " failed");
    // The plugin is loaded anew, as in a process that has shaped nothing yet.
    StartHost({QUILLBAR_COMPANION_FILE, QUILLBAR_PLUGIN_FILE});
    watched_memory::Watch({"QuillbarPDFWriter.so"});
    {
      const Document first = NewDocument();
      show(first, point);
      const long count = watched_memory::AskedCount();
      hasFailed = watched_memory::GrantAll() || point < 0;
      const std::vector<Failure> failures = first.TakeFailures();
      for (const Failure &failure : failures) EXPECT_EQ(failure, (Failure{kOutOfMemory, 0}));
      if (!failures.empty()) ++refused;
      // There is memory again.
      const Document second = NewDocument();
      const float width = show(second);
      EXPECT_THAT(second.TakeFailures(), IsEmpty());
      if (point < 0) {
        expected = second.Saved();
        point = count - beforeEnd;
        joined = width;
        const ScriptObject page = second.AddPage();
        page.Call("SetFont", second.CallObject("LoadTrueTypeFont", NewFolderItem(kDejaVuSans)), 20.0F);
        EXPECT_LT(joined, widthOf(page, "ههه"));
      } else {
        EXPECT_EQ(width, joined) << "shaped otherwise, or not at all";
        EXPECT_TRUE(second.Saved() == expected);
        EXPECT_TRUE(PdfFile(first.Saved()).IsOpen());
      }
    }
    ExpectBalancedLedger();
  }
  EXPECT_GT(refused, 1);
}

TEST_P(MemoryShortage, WhenADocumentIsMade) {
  AtEachPoint(
      [&] {
        const Document document = NewDocument();
        if (!watched_memory::GrantAll()) {
          EXPECT_EQ(document.LastFailure(), Failure{});
          EXPECT_FALSE(document.AddPage().IsNil());
          return false;
        }
        // A second try to get memory may have succeeded.
        if (document.LastFailure() == Failure{}) return true;
        EXPECT_EQ(document.LastFailure(), (Failure{kOutOfMemory, 0}));
        EXPECT_EQ(document.Saved(), "");
        return true;
      },
      1);
}

// What a save does besides writing objects: it ends what is open, counts outlines and encodes texts.
TEST_P(MemoryShortage, WhenASmallDocumentIsSaved) {
  for (const bool intoBlock : {false, true}) {
    const char *const method = intoBlock ? "SaveToMemoryBlock" : "SaveToString";
    bool hasFailed = true;
    long point = 0;
    for (; hasFailed && !HasFailure(); ++point) {
      SCOPED_TRACE(testing::Message() << method << ", allocation " << point << " failed");
      const Document document = NewDocument();
      document.Set("Title", "Größe Ж");
      document.Call("CreateOutline", host::Value::Nil(), "Überschrift");
      const ScriptObject page = document.AddPage();
      page.Call("SaveState");
      page.Call("SaveState");
      page.Call("MoveTo", 1, 2);
      watched_memory::RefuseAfter(point, GetParam());
      const host::Value saved = document.Call(method);
      const bool isNothing = intoBlock ? saved.IsNil() : saved.AsString().Bytes().empty();
      hasFailed = watched_memory::GrantAll();
      const std::vector<Failure> failures = document.TakeFailures();
      if (isNothing) {
        EXPECT_TRUE(hasFailed);
        EXPECT_THAT(failures, ElementsAre(Failure{kOutOfMemory, 0}));
      } else {
        EXPECT_THAT(failures, IsEmpty());
      }
      const PdfFile file(document.Saved());
      ASSERT_TRUE(file.IsOpen());
      EXPECT_EQ(file.Content(0), "q\nq\n1 2 m\nn\nQ\nQ\n");
    }
    EXPECT_GT(point, 5) << method;
  }
}

TEST_P(MemoryShortage, WhenAnOutputIntentIsAppended) {
  const std::string profile(10'000, 'p');
  bool hasFailed = true;
  long point = 0;
  for (; hasFailed && !HasFailure(); ++point) {
    SCOPED_TRACE(testing::Message() << "allocation " << point << " failed");
    const Document document = NewDocument();
    document.AddPage();
    using Append =
        void (*)(Object document, const char *name, Integer componentCount, const void *profile, Integer byteCount);
    const auto append = *static_cast<Append *>(host().ClassData(document.handle(), host().Class("PDFDocument")));
    watched_memory::RefuseAfter(point, GetParam());
    append(document.handle().Get(), "sRGB", 3, profile.data(), static_cast<Integer>(profile.size()));
    hasFailed = watched_memory::GrantAll();
    for (const Failure &failure : document.TakeFailures()) EXPECT_EQ(failure, (Failure{kOutOfMemory, 0}));
    PdfFile file(document.Saved());
    ASSERT_TRUE(file.IsOpen());
    if (!hasFailed) {
      EXPECT_EQ(file.qpdf().getRoot().getKey("/OutputIntents").getArrayNItems(), 1);
    }
  }
  EXPECT_GT(point, 3);
  // It doesn't know of calls that another plugin makes.
  IgnoreLedger();
}

TEST_P(MemoryShortage, WhenOutlinesOfGlyphsAreRead) {
  QUILLBAR_NEEDS_FONT(kEbGaramond, "fonts-ebgaramond");
  bool hasFailed = true;
  long point = 0;
  const long step = std::getenv("QUILLBAR_EVERY_SHORTAGE") != nullptr ? 1 : 5;
  for (; hasFailed && !HasFailure(); point += step) {
    SCOPED_TRACE(testing::Message() << "allocation " << point << " failed");
    const Document document = NewDocument();
    const ScriptObject page = document.AddPage();
    page.Call("SetFont", document.CallObject("LoadTrueTypeFont", NewFolderItem(kEbGaramond)), 20.0F);
    page.Call("BeginText");
    page.Call("ShowText", "Wg\u2E3B");
    page.Call("EndText");
    watched_memory::RefuseAfter(point, GetParam());
    const std::string refused = document.Saved();
    hasFailed = watched_memory::GrantAll();
    const std::vector<Failure> failures = document.TakeFailures();
    EXPECT_EQ(refused.empty(), !failures.empty());
    for (const Failure &failure : failures) EXPECT_EQ(failure, (Failure{kOutOfMemory, 0}));
    const std::string whole = document.Saved();
    EXPECT_TRUE(PdfFile(whole).IsOpen());
    if (!refused.empty()) {
      EXPECT_EQ(refused.size(), whole.size());
    }
  }
  EXPECT_GT(point, 20);
}

// Rows that are copied one by one, and converted ones with and without a mask: larger than what is left of a block.
TEST_P(MemoryShortage, WhenTheRowsOfARasterAreTaken) {
  watched_memory::Watch({"QuillbarPDFWriter.so"});
  for (const std::int64_t channels : {3, 4}) {
    for (const std::int64_t width : {5000, 5001}) {
      AtEachPoint(
          [&] {
            const ScriptObject raster = NewObject("PixelRaster", {width, std::int64_t{6}, channels});
            raster.Call("Fill", 0x80336699);
            const Document document = NewDocument();
            const ScriptObject image = document.CallObject("LoadImage", raster);
            const bool hasFailed = watched_memory::GrantAll();
            if (!hasFailed) {
              EXPECT_FALSE(image.IsNil());
              EXPECT_EQ(image.GetInteger("Width"), width);
            }
            const std::vector<Failure> failures = document.TakeFailures();
            for (const Failure &failure : failures) EXPECT_EQ(failure, (Failure{kOutOfMemory, 0}));
            document.AddPage();
            if (document.LastFailure() == Failure{}) {
              EXPECT_TRUE(PdfFile(document.Saved()).IsOpen());
            }
            return hasFailed;
          },
          1);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Once, MemoryShortage, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(ForGood, MemoryShortage, testing::Values(true));

using EveryMember = PluginTest;

TEST_F(EveryMember, IsUsedByTheScripts) {
  QUILLBAR_NEEDS_FONT(kDejaVuSans, "fonts-dejavu-core");
  const TemporaryFolder folder;
  WriteFile(folder / "picture.jpg", MakeJpeg({}));
  const ScriptResult result = UseDocument(host(), folder.path(), [] {});
  EXPECT_THAT(result.failures, IsEmpty());
  EXPECT_TRUE(result.hasDocument);
  UseRasters(host(), folder / "picture.jpg");
  const std::set<std::string> used = UsedMembers();
  int count = 0;
  for (const host::ClassInfo *info : host().registry().Classes()) {
    if (info->isBuiltIn) continue;
    const auto expect = [&](const std::string &member) {
      ++count;
      EXPECT_THAT(used, Contains(info->name + "." + member));
    };
    for (const host::PropertyInfo &property : info->properties) expect(property.name);
    for (const host::MethodInfo &method : info->methods) {
      if (!method.IsPrivate()) expect(method.name);
    }
  }
  EXPECT_GT(count, 120);
}

}  // namespace
}  // namespace quillbar::test
