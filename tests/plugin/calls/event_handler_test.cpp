// SPDX-License-Identifier: MIT
// Handlers of events that do what they should not: raise an exception, call back into the document that reports to them,
// save it, close it, or drop the last reference to it. Each member is made to fail under each of them.
//
// A run of the suite takes samples; QUILLBAR_EVERY_SHORTAGE=1 takes every member under every handler.
#include <cstdlib>
#include <optional>
#include <ostream>

#include "tests/plugin/calls/call_player.h"
#include "tests/plugin/calls/file_complaints.h"
#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/jpeg_maker.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

struct HandlerCase {
  const char *name;
  CallPlayer::Handler kind;
  const char *call = nullptr;  ///< what a handler that calls back calls; null: the member that is running
};

void PrintTo(const HandlerCase &handler, std::ostream *out) { *out << handler.name; }

class EventHandlerThat : public PluginTest, public testing::WithParamInterface<HandlerCase> {
 protected:
  std::string Record(std::string_view operation, char kind = 0, char value = 3) const {
    return Record(player_->NumberOf(operation).value(), kind, value);
  }
  static std::string Record(std::size_t operation, char kind, char value) {
    std::string record(CallPlayer::kRecordSize, kind);
    record[0] = static_cast<char>(operation);
    record[1] = 0;
    for (std::size_t i = 3; i < record.size(); i += 2) record[i] = value;
    return record;
  }
  void Play(const std::string &sequence) {
    player_->Play({reinterpret_cast<const std::uint8_t *>(sequence.data()), sequence.size()});
    ExpectBalancedLedger();
  }

  void SetUp() override {
    PluginTest::SetUp();
    player_.emplace(host(), WriteFilesForCalls(folder_.path(), MakeJpeg({.width = 8, .height = 8})),
                    [this](std::string_view file, const std::vector<std::string> &passwords) {
                      ++files_;
                      EXPECT_EQ(FileComplaints(file, passwords), "");
                    });
  }

  TemporaryFolder folder_;
  std::size_t files_ = 0;
  std::optional<CallPlayer> player_;
};

TEST_P(EventHandlerThat, HarmsNothing) {
  const bool takesAll = std::getenv("QUILLBAR_EVERY_SHORTAGE") != nullptr;
  constexpr std::size_t kSamplesOneOf = 9;
  const char kind = static_cast<char>(GetParam().kind);
  const std::string handlers =
      Record("handle PDFDocument.ErrorLog", kind) + Record("handle PDFDocument.ResolveFont", kind);
  const std::string usesFonts = Record("PDFDocument.GetFont", 0, 24) + Record("Page.BeginText") +
                                Record("Page.SetFont") + Record("Page.ShowText", 0, 7);
  for (std::size_t member = 0; member < player_->OperationCount() && !HasFailure(); ++member) {
    if (!takesAll && member % kSamplesOneOf != static_cast<std::size_t>(kind)) continue;
    SCOPED_TRACE(testing::Message() << "operation " << member);
    const std::string back =
        GetParam().call == nullptr ? Record(member, static_cast<char>(201), 2) : Record(GetParam().call, 0, 0);
    for (const char *before : {"Page.BeginText", "Page.MoveTo", "PDFDocument.AddPage"}) {
      Play(static_cast<char>(CallPlayer::kHostile) + handlers + Record(before) +
           Record(member, static_cast<char>(201), 2) + back + back + back + usesFonts + back +
           Record("PDFDocument.SaveToString"));
    }
  }
  EXPECT_GT(files_, 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Each, EventHandlerThat,
    testing::Values(HandlerCase{"Raises", CallPlayer::kRaises}, HandlerCase{"ReleasesAll", CallPlayer::kReleasesAll},
                    HandlerCase{"CallsAgain", CallPlayer::kCallsBack},
                    HandlerCase{"Saves", CallPlayer::kCallsBack, "PDFDocument.SaveToString"},
                    HandlerCase{"SavesToAFile", CallPlayer::kCallsBack, "PDFDocument.Save"},
                    HandlerCase{"Closes", CallPlayer::kCallsBack, "release PDFDocument"},
                    HandlerCase{"ClearsTheError", CallPlayer::kCallsBack, "PDFDocument.ClearError"},
                    HandlerCase{"ReleasesThePage", CallPlayer::kCallsBack, "release Page"}),
    [](const auto &test) { return std::string(test.param.name); });

}  // namespace
}  // namespace quillbar::test
