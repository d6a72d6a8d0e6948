// SPDX-License-Identifier: MIT
// How failures of the library reach scripts.
#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ErrorReporting : public PluginTest {
 protected:
  static constexpr Failure kNegativeWidth{library_error::kOutOfRange, 0};
  static constexpr Failure kWrongCap{library_error::kOutOfRange, 3};

  static void Fail(const ScriptObject &page) { page.Set("LineWidth", -1); }

  template <class Handler>
  void OnError(const Document &document, Handler handler) {
    host().SetEventHandler(document.handle(), "ErrorLog",
                           [handler](const host::ObjectHandle &, std::span<host::Value> arguments) {
                             handler(Failure{static_cast<std::uint32_t>(arguments[0].AsInteger()),
                                             static_cast<std::uint32_t>(arguments[1].AsInteger())});
                             return host::Value();
                           });
  }
  // Handlers that refer to objects must go before them.
  void OffError(const Document &document) { host().SetEventHandler(document.handle(), "ErrorLog", {}); }
};

TEST_F(ErrorReporting, NewDocumentHasNoError) {
  const Document document = NewDocument();
  EXPECT_EQ(document.LastFailure(), Failure{});
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(ErrorReporting, FailureRaisesTheEventOnceAndIsRecorded) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("LineCapType", 3);
  EXPECT_THAT(document.TakeFailures(), ElementsAre(kWrongCap));
  EXPECT_EQ(document.LastFailure(), kWrongCap);
}

TEST_F(ErrorReporting, FieldsStillHoldThePreviousFailureWhileTheEventRuns) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  std::vector<Failure> told;
  std::vector<Failure> recorded;
  OnError(document, [&](Failure failure) {
    told.push_back(failure);
    recorded.push_back(document.LastFailure());
  });
  Fail(page);
  page.Set("LineCapType", 3);
  page.Call("RestoreState");
  const Failure cannotRestore{library_error::kCannotRestoreGState, 0};
  EXPECT_THAT(told, ElementsAre(kNegativeWidth, kWrongCap, cannotRestore));
  EXPECT_THAT(recorded, ElementsAre(Failure{}, kNegativeWidth, kWrongCap));
  EXPECT_EQ(document.LastFailure(), cannotRestore);
  OffError(document);
}

TEST_F(ErrorReporting, FailuresAreRecordedWithoutAHandler) {
  const Document document = NewDocument();
  OffError(document);
  const ScriptObject page = document.AddPage();
  page.Set("LineCapType", 3);
  EXPECT_EQ(document.LastFailure(), kWrongCap);
  Fail(page);
  EXPECT_EQ(document.LastFailure(), kNegativeWidth);
}

TEST_F(ErrorReporting, ClearErrorSetsBothFieldsToZero) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("LineCapType", 3);
  document.Call("ClearError");
  EXPECT_EQ(document.LastFailure(), Failure{});
  document.Call("ClearError");
  EXPECT_EQ(document.LastFailure(), Failure{});
  EXPECT_EQ(document.TakeFailures().size(), 1U);
}

TEST_F(ErrorReporting, SuccessDoesNotClearTheLastFailure) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("LineCapType", 3);
  page.Set("LineCapType", 2);
  document.Saved();
  EXPECT_EQ(document.LastFailure(), kWrongCap);
}

TEST_F(ErrorReporting, PropertiesAreReadOnly) {
  const Document document = NewDocument();
  EXPECT_THROW(document.Set("LastErrorNumber", 1), host::HostError);
  EXPECT_THROW(document.Set("LastErrorDetailNumber", 1), host::HostError);
}

TEST_F(ErrorReporting, DocumentsReportTheirOwnFailuresOnly) {
  const Document first = NewDocument();
  const Document second = NewDocument();
  Fail(first.AddPage());
  EXPECT_EQ(first.TakeFailures().size(), 1U);
  EXPECT_THAT(second.TakeFailures(), IsEmpty());
  EXPECT_EQ(second.LastFailure(), Failure{});
}

TEST_F(ErrorReporting, HandlerMayUseTheDocument) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  std::string saved;
  OnError(document, [&](Failure) {
    page.Call("MoveTo", 1, 2);
    page.Call("LineTo", 3, 4);
    page.Call("Draw");
    document.AddPage();
    saved = document.Saved();
  });
  Fail(page);
  OffError(document);
  EXPECT_EQ(document.LastFailure(), kNegativeWidth);
  EXPECT_EQ(PdfFile(saved).PageCount(), 2U);
  EXPECT_THAT(document.Operators(), ElementsAre(Op("m", 1, 2), Op("l", 3, 4), Op("S")));
}

TEST_F(ErrorReporting, HandlerMayClearTheErrorAndTheFailureIsStillRecorded) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  OnError(document, [&](Failure) { document.Call("ClearError"); });
  Fail(page);
  OffError(document);
  EXPECT_EQ(document.LastFailure(), kNegativeWidth);
}

TEST_F(ErrorReporting, FailureInsideTheHandlerRaisesAnEventOfItsOwn) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  std::vector<Failure> told;
  std::vector<Failure> recorded;
  OnError(document, [&](Failure failure) {
    told.push_back(failure);
    recorded.push_back(document.LastFailure());
    if (told.size() == 1) page.Set("LineCapType", 3);
    recorded.push_back(document.LastFailure());
  });
  Fail(page);
  OffError(document);
  EXPECT_THAT(told, ElementsAre(kNegativeWidth, kWrongCap));
  // Before and after in the outer event, with those of the inner one between them.
  EXPECT_THAT(recorded, ElementsAre(Failure{}, Failure{}, Failure{}, kWrongCap));
  EXPECT_EQ(document.LastFailure(), kNegativeWidth);
}

TEST_F(ErrorReporting, HandlerThatAlwaysFailsRunsSixteenDeepAndIsNotedBeyond) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  int raised = 0;
  std::vector<Failure> afterInner;
  OnError(document, [&](Failure) {
    const auto level = static_cast<std::uint32_t>(++raised);
    ASSERT_LE(level, 16U);
    page.Set("LineCapType", 100 + level);
    afterInner.push_back(document.LastFailure());
  });
  Fail(page);
  EXPECT_EQ(raised, 16);
  ASSERT_EQ(afterInner.size(), 16U);
  for (std::uint32_t left = 0; left < 16; ++left) {
    EXPECT_EQ(afterInner[left], (Failure{library_error::kOutOfRange, 100 + 16 - left}));
  }
  EXPECT_EQ(document.LastFailure(), kNegativeWidth);
  // Afterwards the event is raised again, as deep as before.
  raised = 0;
  Fail(page);
  OffError(document);
  EXPECT_EQ(raised, 16);
}

TEST_F(ErrorReporting, HandlersOfTwoDocumentsMayFailInEachOther) {
  const Document first = NewDocument();
  const Document second = NewDocument();
  const ScriptObject firstPage = first.AddPage();
  const ScriptObject secondPage = second.AddPage();
  int raised = 0;
  OnError(first, [&](Failure) {
    if (++raised < 100) Fail(secondPage);
  });
  OnError(second, [&](Failure) {
    if (++raised < 100) Fail(firstPage);
  });
  Fail(firstPage);
  OffError(first);
  OffError(second);
  EXPECT_LT(raised, 100);
  EXPECT_EQ(first.LastFailure(), kNegativeWidth);
  EXPECT_EQ(second.LastFailure(), kNegativeWidth);
}

TEST_F(ErrorReporting, HandlerMayDropTheLastReferenceToThePage) {
  const Document document = NewDocument();
  ScriptObject page = document.AddPage();
  OnError(document, [&](Failure) { page = {}; });
  {
    const ScriptObject caller = page;
    Fail(caller);
  }
  OffError(document);
  EXPECT_EQ(document.LastFailure(), kNegativeWidth);
}

}  // namespace
}  // namespace quillbar::test
