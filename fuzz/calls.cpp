// SPDX-License-Identifier: MIT
// The input is a sequence of calls of the plugins' members (tests/plugin/calls/call_player.h says how bytes are calls).
// Inputs are changed by whole calls as well as inside of them.
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "fuzz/demand.h"
#include "fuzz/loaded_host.h"
#include "tests/plugin/calls/call_player.h"
#include "tests/plugin/calls/file_complaints.h"
#include "tests/support/jpeg_maker.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t maxSize);

namespace {

using namespace quillbar;
using test::CallPlayer;

/// Every file would take most of the time.
[[maybe_unused]] constexpr unsigned kReadsOneOf = 16;

std::filesystem::path folder;
std::uint64_t calls = 0, sequences = 0, files = 0, filesRead = 0;

void RemoveFolder() {
  std::error_code error;
  std::filesystem::remove_all(folder, error);
  std::fprintf(stderr, "%llu calls in %llu sequences; %llu files, of which %llu were read\n",
               static_cast<unsigned long long>(calls), static_cast<unsigned long long>(sequences),
               static_cast<unsigned long long>(files), static_cast<unsigned long long>(filesRead));
}

/// In memory where the system has such a folder: a save waits until the disk has the file.
std::filesystem::path NewFolder() {
  std::error_code error;
  const std::filesystem::path memory = "/dev/shm";
  const std::filesystem::path parent =
      std::filesystem::is_directory(memory, error) ? memory : std::filesystem::temp_directory_path();
  std::string path = (parent / "quillbar-calls-XXXXXX").string();
  fuzz::Demand(mkdtemp(path.data()) != nullptr, "a temporary folder can be made");
  std::atexit(RemoveFolder);
  return path;
}

void Read(std::string_view file, [[maybe_unused]] const std::vector<std::string> &passwords) {
  ++files;
  fuzz::DemandSet(file);
#if !QUILLBAR_WATCHES_VALUES  // which would see nothing of what qpdf's library sets
  static const bool readsAll = std::getenv("QUILLBAR_READ_EVERY_FILE") != nullptr;
  if (files % kReadsOneOf != 0 && !readsAll) return;
  ++filesRead;
  const std::string complaints = test::FileComplaints(file, passwords);
  if (!complaints.empty()) std::fprintf(stderr, "%s\n", complaints.c_str());
  fuzz::Demand(complaints.empty(), "qpdf reads every file without a warning");
#endif
}

CallPlayer &Player() {
  static auto *const player = [] {
    folder = NewFolder();
    auto *made = new CallPlayer(fuzz::HostWithPlugins(),
                                test::WriteFilesForCalls(folder, MakeJpeg({.width = 8, .height = 8})), Read);
    if (std::getenv("QUILLBAR_SHOW_CALLS") != nullptr) made->ShowCalls();
    return made;
  }();
  return *player;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
  // Before the first input, so that the plugins' branches are counted from the start.
  Player();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static const int stringsBefore = fuzz::CountLiveStrings();
  calls += Player().Play({data, size});
  ++sequences;
  fuzz::DemandBalance(stringsBefore);
  return 0;
}

/// Repeats, drops, exchanges or moves whole calls, or leaves the change to libFuzzer.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed) {
  constexpr std::size_t kHead = 1, kRecord = CallPlayer::kRecordSize;
  const std::size_t records = size > kHead ? (size - kHead) / kRecord : 0;
  std::uint8_t *const first = data + kHead;
  const auto next = [&seed](std::size_t below) {
    seed = seed * 1664525U + 1013904223U;
    return static_cast<std::size_t>(seed >> 8) % below;
  };
  const auto at = [&](std::size_t record) { return first + record * kRecord; };
  if (records == 0) return LLVMFuzzerMutate(data, size, maxSize);
  size = kHead + records * kRecord;
  switch (next(8)) {
    case 0:  // one call again elsewhere, or a new one
    case 1: {
      if (size + kRecord > maxSize) return size;
      std::array<std::uint8_t, kRecord> record;
      std::copy_n(at(next(records)), kRecord, record.begin());
      if (next(2) == 0) record[0] = static_cast<std::uint8_t>(next(256));
      std::uint8_t *const place = at(next(records + 1));
      std::memmove(place + kRecord, place, static_cast<std::size_t>(data + size - place));
      std::ranges::copy(record, place);
      return size + kRecord;
    }
    case 2: {
      if (records == 1) return size;
      std::uint8_t *const place = at(next(records));
      std::memmove(place, place + kRecord, static_cast<std::size_t>(data + size - place) - kRecord);
      return size - kRecord;
    }
    case 3: {
      std::uint8_t *const one = at(next(records)), *const other = at(next(records));
      if (one != other) std::swap_ranges(one, one + kRecord, other);
      return size;
    }
    case 4:
      at(next(records))[0] = static_cast<std::uint8_t>(next(256));
      return size;
    case 5: {
      std::uint8_t *const argument = at(next(records)) + 1 + next(kRecord - 1);
      *argument = static_cast<std::uint8_t>(next(256));
      return size;
    }
    case 6:
      LLVMFuzzerMutate(at(next(records)), kRecord, kRecord);
      return size;
    default:
      return LLVMFuzzerMutate(data, size, maxSize);
  }
}
