// SPDX-License-Identifier: MIT
// Compression through the entry points of a CompressorHandle.
#include <zlib.h>

#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/judges.h"
#include "tests/support/stream_record.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

// zlib with a note of every call, which fails where a test wants it to.
struct NotedZlib {
  inline static int inits = 0;
  inline static int ends = 0;
  inline static std::vector<int> flushes;
  inline static std::vector<int> levels;
  inline static std::vector<std::string> versions;
  inline static std::vector<int> recordSizes;
  inline static int initResult = Z_OK;
  inline static int failingDeflate = -1;  // which call of deflate fails, counted from 0
  inline static int deflateResult = Z_OK;

  static void Reset() {
    inits = ends = 0;
    flushes.clear();
    levels.clear();
    versions.clear();
    recordSizes.clear();
    initResult = Z_OK;
    failingDeflate = -1;
  }
  static int Init(z_streamp stream, int level, const char *version, int recordSize) {
    levels.push_back(level);
    versions.emplace_back(version);
    recordSizes.push_back(recordSize);
    if (initResult != Z_OK) return initResult;
    ++inits;
    return deflateInit_(stream, level, version, recordSize);
  }
  static int Deflate(z_streamp stream, int flush) {
    flushes.push_back(flush);
    if (failingDeflate >= 0 && static_cast<std::size_t>(failingDeflate) < flushes.size()) return deflateResult;
    return deflate(stream, flush);
  }
  static int End(z_streamp stream) {
    ++ends;
    return deflateEnd(stream);
  }
};

class CompressorEntries : public PluginTest {
 protected:
  void SetUp() override {
    NotedZlib::Reset();
    StartHost({BARE_COMPRESSOR_FILE, QUILLBAR_PLUGIN_FILE});
  }

  // Words of the data block: the first isn't read, then end, init and deflate.
  ScriptObject NewCompressor(bool hasEnd = true, bool hasInit = true, bool hasDeflate = true) {
    const ScriptObject compressor = NewObject("CompressorHandle");
    auto *words = static_cast<void **>(host().ClassData(compressor.handle(), host().Class("CompressorHandle")));
    words[0] = nullptr;
    words[1] = hasEnd ? reinterpret_cast<void *>(&NotedZlib::End) : nullptr;
    words[2] = hasInit ? reinterpret_cast<void *>(&NotedZlib::Init) : nullptr;
    words[3] = hasDeflate ? reinterpret_cast<void *>(&NotedZlib::Deflate) : nullptr;
    return compressor;
  }
  Document NewDocumentWith(const ScriptObject &compressor) {
    return {host(), host().Create("PDFDocument", {compressor})};
  }
  static void DrawMuch(const Document &document) {
    const ScriptObject page = document.AddPage();
    page.Call("MoveTo", 0, 0);
    for (int line = 0; line < 2000; ++line) page.Call("LineTo", line * 7919 % 595, line * 104729 % 841);
    page.Call("Draw");
  }
};

TEST_F(CompressorEntries, AreCalledAsZlibAsksForIt) {
  const Document document = NewDocumentWith(NewCompressor());
  DrawMuch(document);
  const std::string saved = document.Saved();
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_TRUE(PdfFile(saved).HasFilter("/FlateDecode"));
  EXPECT_GT(NotedZlib::inits, 0);
  EXPECT_EQ(NotedZlib::ends, NotedZlib::inits);
  EXPECT_THAT(NotedZlib::levels, Each(-1));
  EXPECT_THAT(NotedZlib::versions, Each("1.1.3"));
  EXPECT_THAT(NotedZlib::recordSizes, Each(kStreamRecordSize));
  EXPECT_THAT(NotedZlib::flushes, Each(testing::AnyOf(Z_NO_FLUSH, Z_FINISH)));
  EXPECT_EQ(NotedZlib::flushes.back(), Z_FINISH);
  // The content is far longer than one chunk of 4096 bytes.
  EXPECT_GT(std::ranges::count(NotedZlib::flushes, Z_NO_FLUSH), 4);
}

TEST_F(CompressorEntries, MissingOneLeavesTheDocumentUncompressedInSilence) {
  for (int missing = 0; missing < 3; ++missing) {
    SCOPED_TRACE(missing);
    const Document document = NewDocumentWith(NewCompressor(missing != 0, missing != 1, missing != 2));
    DrawMuch(document);
    const std::string saved = document.Saved();
    EXPECT_THAT(document.TakeFailures(), IsEmpty());
    EXPECT_FALSE(PdfFile(saved).HasFilter("/FlateDecode"));
  }
  EXPECT_THAT(NotedZlib::flushes, IsEmpty());
}

TEST_F(CompressorEntries, MissingOneIsClearedForEveryDocument) {
  const Document compressed = NewDocumentWith(NewCompressor());
  DrawMuch(compressed);
  NewDocumentWith(NewCompressor(true, true, false));
  EXPECT_EQ(compressed.Saved(), "");
  const std::vector<Failure> failures = compressed.TakeFailures();
  ASSERT_EQ(failures.size(), 1U);
  EXPECT_EQ(failures[0].number, library_error::kZlibError);
  // A later compressor serves it again.
  NewDocumentWith(NewCompressor());
  EXPECT_TRUE(PdfFile(compressed.Saved()).HasFilter("/FlateDecode"));
  EXPECT_EQ(NotedZlib::ends, NotedZlib::inits);
}

TEST_F(CompressorEntries, FailureToBeginEndsTheWriteWithZlibsError) {
  const Document document = NewDocumentWith(NewCompressor());
  DrawMuch(document);
  NotedZlib::initResult = Z_MEM_ERROR;
  EXPECT_EQ(document.Saved(), "");
  const Failure failure{library_error::kZlibError, static_cast<std::uint32_t>(Z_MEM_ERROR)};
  EXPECT_THAT(document.TakeFailures(), ElementsAre(failure));
  EXPECT_EQ(document.LastFailure(), failure);
  EXPECT_TRUE(document.Call("SaveToMemoryBlock").AsObject().IsNil());
  EXPECT_THAT(document.TakeFailures(), ElementsAre(failure));
  NotedZlib::initResult = Z_OK;
  EXPECT_TRUE(PdfFile(document.Saved()).HasFilter("/FlateDecode"));
  EXPECT_EQ(NotedZlib::ends, NotedZlib::inits);
}

TEST_F(CompressorEntries, FailureOfAnyDeflateEndsTheWriteAndTheStreamIsClosed) {
  const Document document = NewDocumentWith(NewCompressor());
  DrawMuch(document);
  const std::string expected = document.Saved();
  const int calls = static_cast<int>(NotedZlib::flushes.size());
  ASSERT_GT(calls, 5);
  for (int failing = 0; failing < calls; ++failing) {
    SCOPED_TRACE(failing);
    NotedZlib::Reset();
    NotedZlib::failingDeflate = failing;
    NotedZlib::deflateResult = Z_DATA_ERROR;
    EXPECT_EQ(document.Saved(), "");
    EXPECT_THAT(document.TakeFailures(),
                ElementsAre(Failure{library_error::kZlibError, static_cast<std::uint32_t>(Z_DATA_ERROR)}));
    EXPECT_EQ(NotedZlib::ends, NotedZlib::inits);
  }
  NotedZlib::Reset();
  EXPECT_EQ(document.Saved(), expected);
}

TEST_F(CompressorEntries, FailureLeavesNoPartOfAFile) {
  const TemporaryFolder folder;
  const Document document = NewDocumentWith(NewCompressor());
  DrawMuch(document);
  NotedZlib::failingDeflate = 3;
  NotedZlib::deflateResult = Z_STREAM_ERROR;
  document.Call("Save", NewFolderItem(folder / "broken.pdf"));
  EXPECT_EQ(document.TakeFailures().size(), 1U);
  EXPECT_FALSE(std::filesystem::exists(folder / "broken.pdf"));
  NotedZlib::failingDeflate = -1;
  NotedZlib::flushes.clear();
  document.Call("Save", NewFolderItem(folder / "broken.pdf"));
  EXPECT_TRUE(JudgedFlawless(folder / "broken.pdf"));
}

TEST_F(CompressorEntries, CompressorMayGoBeforeItsDocument) {
  const Document document = [&] {
    const ScriptObject compressor = NewCompressor();
    return NewDocumentWith(compressor);
  }();
  DrawMuch(document);
  EXPECT_TRUE(PdfFile(document.Saved()).HasFilter("/FlateDecode"));
}

class Compressor : public PluginTest {};

TEST_F(Compressor, MakesFilesSmallerThatReadTheSame) {
  const auto write = [](const Document &document) {
    const ScriptObject font = document.GetFont("Helvetica");
    for (int page = 0; page < 3; ++page) {
      const ScriptObject added = document.AddPage();
      added.Call("BeginText");
      added.Call("SetFont", font, 12);
      added.Call("MoveTextPosition", 50, 800);
      for (int line = 0; line < 50; ++line) {
        added.Call("ShowText", "The quick brown fox jumps over the lazy dog");
        added.Call("MoveTextPosition", 0, -14);
      }
      added.Call("EndText");
    }
    return document.Saved();
  };
  const std::string plain = write(NewDocument());
  const std::string compressed = write(NewCompressedDocument());
  EXPECT_LT(compressed.size() * 3, plain.size());
  const PdfFile plainFile(plain);
  const PdfFile compressedFile(compressed);
  EXPECT_FALSE(plainFile.HasFilter("/FlateDecode"));
  EXPECT_TRUE(compressedFile.HasFilter("/FlateDecode"));
  ASSERT_EQ(compressedFile.PageCount(), 3U);
  for (std::size_t page = 0; page < 3; ++page) EXPECT_EQ(plainFile.Content(page), compressedFile.Content(page));
  EXPECT_TRUE(JudgedFlawless(std::string_view(compressed)));
  EXPECT_TRUE(JudgedFlawless(std::string_view(plain)));
}

TEST_F(Compressor, NilLeavesTheDocumentUncompressed) {
  const ScriptObject nil(host(), host::ObjectHandle());
  const Document document(
      host(), host().Create("PDFDocument", {host::Value::Zero(host::Type::Class(host().Class("CompressorHandle")))}));
  document.AddPage().Call("ResetDashPattern");
  EXPECT_FALSE(PdfFile(document.Saved()).HasFilter("/FlateDecode"));
}

TEST_F(Compressor, EmptyContentIsCompressedToo) {
  const Document document = NewCompressedDocument();
  document.AddPage();
  const std::string saved = document.Saved();
  EXPECT_EQ(PdfFile(saved).Content(0), "");
  EXPECT_TRUE(JudgedFlawless(std::string_view(saved)));
}

}  // namespace
}  // namespace quillbar::test
