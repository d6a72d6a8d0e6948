// SPDX-License-Identifier: MIT
// Random calls of any members in any order, from fixed seeds: nothing crashes, everything is given back, and each file
// that comes of it is flawless. For more of them than a run of the suite makes, or others:
//
//     export QUILLBAR_RANDOM_SEQUENCES=100000 QUILLBAR_RANDOM_SEED=1000
//     build/linux-x86-64/tests/plugin_document_test --gtest_filter='*RandomCalls*'
#include <cstdlib>
#include <random>

#include "tests/plugin/calls/call_player.h"
#include "tests/plugin/calls/file_complaints.h"
#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/jpeg_maker.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

constexpr unsigned kSequences = 100, kCallsInEach = 40;
/// Files are read when they have a chance to be others than those before.
constexpr unsigned kReadsOneOf = 4;

unsigned NumberFrom(const char *variable, unsigned otherwise) {
  const char *const text = std::getenv(variable);
  return text == nullptr ? otherwise : static_cast<unsigned>(std::strtoul(text, nullptr, 10));
}

class RandomCalls : public PluginTest, public testing::WithParamInterface<std::uint8_t> {
 protected:
  static std::vector<std::uint8_t> SequenceOf(unsigned seed, std::uint8_t head) {
    std::mt19937 random(seed);
    std::vector<std::uint8_t> sequence{head};
    for (unsigned i = 0; i < kCallsInEach * CallPlayer::kRecordSize; ++i) {
      sequence.push_back(static_cast<std::uint8_t>(random() >> 24));
    }
    return sequence;
  }
};

TEST_P(RandomCalls, LeaveNothingBehindAndFilesWithoutFault) {
  const TemporaryFolder folder;
  std::size_t calls = 0, files = 0;
  CallPlayer player(host(), WriteFilesForCalls(folder.path(), MakeJpeg({.width = 8, .height = 8})),
                    [&](std::string_view file, const std::vector<std::string> &passwords) {
                      if (files++ % kReadsOneOf == 0) {
                        EXPECT_EQ(FileComplaints(file, passwords), "");
                      }
                    });
  if (std::getenv("QUILLBAR_SHOW_CALLS") != nullptr) player.ShowCalls();
  const unsigned first = NumberFrom("QUILLBAR_RANDOM_SEED", 1),
                 count = NumberFrom("QUILLBAR_RANDOM_SEQUENCES", kSequences);
  for (unsigned seed = first; seed < first + count && !HasFailure(); ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    calls += player.Play(SequenceOf(seed, GetParam()));
    ExpectBalancedLedger();
  }
  // A sequence is no test if its operations find nothing to work on.
  EXPECT_GT(calls, std::size_t{20} * count);
  EXPECT_GT(files, count / 4);
  if (!HasFailure()) RecordProperty("calls", std::to_string(calls));
}

INSTANTIATE_TEST_SUITE_P(Careful, RandomCalls, testing::Values(std::uint8_t{0}));
INSTANTIATE_TEST_SUITE_P(Hostile, RandomCalls, testing::Values(CallPlayer::kHostile));

}  // namespace
}  // namespace quillbar::test
