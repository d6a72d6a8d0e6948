// SPDX-License-Identifier: MIT
// A stream that takes no more: whatever is being written fails, and nothing is written behind the gap.
#include <gmock/gmock.h>
#include <hpdf_objects.h>

#include <functional>
#include <memory>

#include "plugin/engine/document/document_writer.h"
#include "plugin/engine/pages/page_tree.h"
#include "plugin/engine/streams/stream.h"
#include "tests/plugin/engine/driver/deflate_scope.h"
#include "tests/plugin/engine/driver/library_document.h"
#include "tests/plugin/engine/driver/small_image.h"

namespace quillbar {
namespace {

using testing::StartsWith;

struct FreeStream {
  void operator()(HPDF_Stream stream) const { HPDF_Stream_Free(stream); }
};
using OwnedStream = std::unique_ptr<HPDF_Stream_Rec, FreeStream>;

// What a stream took, and how many more writes it takes; negative: all.
struct Taken {
  long granted = -1;
  std::string bytes{};
  bool hasRefused = false;
};

OwnedStream NewLimitedStream(HPDF_Doc document, Taken &taken) {
  OwnedStream stream(engine::NewStream(document->mmgr, HPDF_STREAM_CALLBACK));
  stream->attr = &taken;
  stream->write_fn = [](HPDF_Stream own, const HPDF_BYTE *bytes, HPDF_UINT size) -> HPDF_STATUS {
    Taken &content = *static_cast<Taken *>(own->attr);
    EXPECT_FALSE(content.hasRefused) << "written behind the gap";
    if (content.granted == 0) {
      content.hasRefused = true;
      return HPDF_SetError(own->error, HPDF_FILE_IO_ERROR, 28);
    }
    if (content.granted > 0) --content.granted;
    content.bytes.append(reinterpret_cast<const char *>(bytes), size);
    return HPDF_OK;
  };
  return stream;
}

class RefusedWrite : public testing::Test {
 protected:
  using Write = std::function<HPDF_STATUS(HPDF_Stream)>;

  // Refuses each write of `write` in turn. Gives the whole of what it writes.
  std::string RefuseEachOf(const Write &write, long most = 100'000) {
    Taken whole;
    EXPECT_EQ(write(NewLimitedStream(document_.document, whole).get()), HPDF_OK);
    for (long granted = 0; granted < most; ++granted) {
      Taken taken{granted};
      const HPDF_STATUS status = write(NewLimitedStream(document_.document, taken).get());
      HPDF_ResetError(document_.document);
      if (!taken.hasRefused) {
        EXPECT_GT(granted, 0);
        EXPECT_EQ(taken.bytes.size(), whole.bytes.size());
        return whole.bytes;
      }
      EXPECT_NE(status, HPDF_OK) << "write " << granted;
      EXPECT_LT(taken.bytes.size(), whole.bytes.size());
    }
    ADD_FAILURE() << "more writes than expected";
    return whole.bytes;
  }

  std::string RefuseEachOfObject(void *object) {
    const std::string bytes =
        RefuseEachOf([object](HPDF_Stream stream) { return HPDF_Obj_WriteValue(object, stream, nullptr); });
    HPDF_Obj_ForceFree(document_.document->mmgr, object);
    return bytes;
  }

  LibraryDocument document_;
  HPDF_MMgr memory_ = document_.document->mmgr;
};

TEST_F(RefusedWrite, FailsTheObjectThatIsWritten) {
  ASSERT_EQ(HPDF_UseUTFEncodings(document_.document), HPDF_OK);
  const HPDF_Encoder utf8 = HPDF_GetEncoder(document_.document, "UTF-8");
  EXPECT_EQ(RefuseEachOfObject(HPDF_Null_New(memory_)), "null");
  EXPECT_EQ(RefuseEachOfObject(HPDF_Boolean_New(memory_, HPDF_TRUE)), "true");
  EXPECT_EQ(RefuseEachOfObject(HPDF_String_New(memory_, "\xD0\x96", utf8)), "<FEFF0416>");
  EXPECT_EQ(RefuseEachOfObject(HPDF_String_New(memory_, std::string(1000, 'x').c_str(), nullptr)),
            "(" + std::string(1000, 'x') + ")");
  const HPDF_BYTE bytes[] = {1, 0xAB};
  EXPECT_EQ(RefuseEachOfObject(HPDF_Binary_New(memory_, const_cast<HPDF_BYTE *>(bytes), 2)), "<01AB>");
  const HPDF_Array array = HPDF_Array_New(memory_);
  for (const HPDF_INT32 number : {1, 2}) HPDF_Array_AddNumber(array, number);
  const HPDF_Dict dictionary = HPDF_Dict_New(memory_);
  HPDF_Dict_AddName(dictionary, "Type", "Test");
  HPDF_Dict_Add(dictionary, "Kids", array);
  EXPECT_THAT(RefuseEachOfObject(dictionary), StartsWith("<<"));
}

TEST_F(RefusedWrite, FailsTheStreamThatIsCopiedOrDeflated) {
  const DeflateScope scope;
  const OwnedStream source(HPDF_MemStream_New(memory_, 0));
  unsigned number = 1;
  for (int i = 0; i < 20'000; ++i) {
    number = number * 1664525 + 1013904223;
    ASSERT_EQ(HPDF_Stream_WriteChar(source.get(), static_cast<char>(number >> 24)), HPDF_OK);
  }
  for (const HPDF_UINT filter : {HPDF_STREAM_FILTER_NONE, HPDF_STREAM_FILTER_FLATE_DECODE}) {
    const std::string bytes = RefuseEachOf(
        [&](HPDF_Stream stream) { return HPDF_Stream_WriteToStream(source.get(), stream, filter, nullptr); });
    EXPECT_GE(bytes.size(), 20'000U) << "these bytes can't be compressed";
  }
}

TEST_F(RefusedWrite, FailsTheDocumentThatIsSaved) {
  const HPDF_Page page = Call<engine::AddPage>(document_.document);
  Call<HPDF_SetInfoAttr>(document_.document, HPDF_INFO_TITLE, "title");
  Call<HPDF_Page_DrawImage>(page, SmallImage(document_.document), 0.0F, 0.0F, 1.0F, 1.0F);
  Call<HPDF_CreateOutline>(document_.document, nullptr, "chapter", nullptr);
  const std::string bytes = RefuseEachOf(
      [&](HPDF_Stream stream) { return engine::WriteDocument(document_.document, stream, nullptr); }, 2'000);
  EXPECT_THAT(bytes, StartsWith("%PDF-"));
}

// What failed before, and nobody reset, stays a failure.
TEST_F(RefusedWrite, OfACopyIsToldWhereSomethingFailedBefore) {
  LibraryDocument other;
  const OwnedStream source(HPDF_MemStream_New(memory_, 0));
  const OwnedStream destination(HPDF_MemStream_New(other.document->mmgr, 0));
  ASSERT_EQ(HPDF_Stream_WriteStr(source.get(), "text"), HPDF_OK);
  HPDF_SetError(&other.document->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  EXPECT_EQ(HPDF_Stream_WriteToStream(source.get(), destination.get(), HPDF_STREAM_FILTER_NONE, nullptr),
            HPDF_STATUS{HPDF_THIS_FUNC_WAS_SKIPPED});
  EXPECT_EQ(destination->size, 0U);
  HPDF_ResetError(other.document);
  EXPECT_EQ(HPDF_Stream_WriteToStream(source.get(), destination.get(), HPDF_STREAM_FILTER_NONE, nullptr), HPDF_OK);
  EXPECT_EQ(ContentOf(destination.get()), "text");
}

TEST_F(RefusedWrite, OfMoreThanAStreamCountsLeavesItAsItWas) {
  const OwnedStream stream(HPDF_MemStream_New(memory_, 0));
  ASSERT_EQ(HPDF_Stream_WriteStr(stream.get(), "text"), HPDF_OK);
  EXPECT_EQ(HPDF_Stream_Write(stream.get(), reinterpret_cast<const HPDF_BYTE *>("x"), 0xFFFFFFFF),
            HPDF_STATUS{HPDF_FAILD_TO_ALLOC_MEM});
  HPDF_ResetError(document_.document);
  EXPECT_EQ(ContentOf(stream.get()), "text");
}

}  // namespace
}  // namespace quillbar
