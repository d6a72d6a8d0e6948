// SPDX-License-Identifier: MIT
#include "host/runtime/reference_ledger.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/runtime/handles.h"
#include "host/runtime/string_pool.h"

namespace quillbar::host {
namespace {

StringPool &Pool() { return StringPool::Instance(); }

std::string Describe(String string) { return "the string " + Quote(StringHandle(string).Utf8()); }

}  // namespace

std::string Quote(std::string_view utf8) {
  constexpr std::size_t kLongest = 40;
  if (utf8.size() <= kLongest) return fmt::format("\"{}\"", utf8);
  std::size_t end = kLongest;
  while (end > 0 && (static_cast<unsigned char>(utf8[end]) & 0xC0) == 0x80) --end;
  return fmt::format("\"{}...\" ({} bytes)", utf8.substr(0, end), utf8.size());
}

void AddOutstanding(LedgerReport &report, Resource resource, std::string what, std::string member, std::size_t count) {
  for (Outstanding &entry : report.outstanding) {
    if (entry.resource == resource && entry.what == what && entry.member == member) {
      entry.count += count;
      return;
    }
  }
  report.outstanding.push_back({resource, count, std::move(what), std::move(member)});
}

void ReferenceLedger::Note(ViolationKind kind, std::string message) {
  violations_.push_back({kind, std::move(message), current().Name()});
}

bool ReferenceLedger::MayUse(String string, std::string_view operation) {
  if (!Pool().Owns(string)) {
    Note(ViolationKind::kBadArgument, fmt::format("{} got an address that is not a string of this host", operation));
    return false;
  }
  if (string->state == HostString::State::kLive && string->PluginMayUse()) return true;
  if (string->state == HostString::State::kLive) {
    Note(ViolationKind::kUseAfterRelease,
         fmt::format("{} got {}, to which the plugin no longer has a reference", operation, Describe(string)));
  } else {
    Note(ViolationKind::kUseAfterRelease, fmt::format("{} got a string that has been released", operation));
  }
  return false;
}

String ReferenceLedger::Give(String string) {
  if (string == nullptr) return nullptr;
  ++string->given;
  string->wasGiven = true;
  string->giver = current();
  ++counters.stringsGiven;
  return string;
}

bool ReferenceLedger::TakeBack(String string, std::string_view operation) {
  if (string == nullptr) {
    Note(ViolationKind::kNeverGiven, fmt::format("{} got nil: there is nothing to release", operation));
    return false;
  }
  if (!Pool().Owns(string)) {
    Note(ViolationKind::kNeverGiven, fmt::format("{} got an address that is not a string of this host", operation));
    return false;
  }
  if (string->state != HostString::State::kLive || (string->given == 0 && string->wasGiven)) {
    Note(ViolationKind::kDoubleRelease, fmt::format("{} got a string that the plugin has released before", operation));
    return false;
  }
  if (string->given == 0) {
    Note(ViolationKind::kNeverGiven,
         fmt::format("{} got {}, which the plugin only borrows", operation, Describe(string)));
    return false;
  }
  --string->given;
  ++counters.stringsReturned;
  Pool().ReleaseIfUnused(string);
  return true;
}

void ReferenceLedger::Lend(String string) {
  if (string != nullptr) ++string->loans;
}

void ReferenceLedger::EndLoan(String string) {
  if (string == nullptr) return;
  --string->loans;
  Pool().ReleaseIfUnused(string);
}

std::vector<ReferenceLedger::DataEntry>::iterator ReferenceLedger::FindData(std::uint32_t number) {
  const auto place = std::ranges::lower_bound(data_, number, {}, &DataEntry::number);
  return place != data_.end() && place->number == number ? place : data_.end();
}

void ReferenceLedger::GiveData(String string, StringDataRecord &record) {
  const std::uint32_t number = nextData_++;
  data_.insert(std::ranges::upper_bound(data_, number, {}, &DataEntry::number), {number, string, current()});
  ++string->dataRecords;
  ++counters.stringDataGiven;
  record.data = string->bytes.data();
  record.byteLength = string->View().size();
  record.encoding = static_cast<std::uint32_t>(string->encoding);
  record.hostPointer = string;
  record.hostWord = number;
}

bool ReferenceLedger::TakeBackData(const StringDataRecord &record) {
  const auto found = FindData(record.hostWord);
  if (found == data_.end()) {
    const bool wasOurs = record.hostWord != 0 && record.hostWord < nextData_ && Pool().Owns(record.hostPointer);
    Note(wasOurs ? ViolationKind::kDoubleRelease : ViolationKind::kNeverGiven,
         wasOurs ? "PluginDisposeStringData got a record that has been disposed of before"
                 : "PluginDisposeStringData got a record that the host never filled in");
    return false;
  }
  const String string = found->string;
  if (record.hostPointer != string) {
    Note(ViolationKind::kNeverGiven, "PluginDisposeStringData got a record whose private words were changed");
    return false;
  }
  data_.erase(found);
  --string->dataRecords;
  ++counters.stringDataReturned;
  Pool().ReleaseIfUnused(string);
  return true;
}

void ReferenceLedger::AppendTo(LedgerReport &report) const {
  Pool().ForEachLive([&](const HostString &string) {
    if (string.given == 0) return;
    const StringHandle handle(const_cast<String>(&string));
    AddOutstanding(report, Resource::kString, Quote(handle.Utf8()), string.giver.Name(), string.given);
  });
  for (const DataEntry &entry : data_) {
    AddOutstanding(report, Resource::kStringData, Quote(StringHandle(entry.string).Utf8()), entry.giver.Name());
  }
  report.violations = violations_;
}

void ReferenceLedger::ReleaseEverything() {
  data_.clear();
  std::vector<String> orphans;
  Pool().ForEachLive([&](HostString &string) {
    if (!string.PluginMayUse()) return;
    string.given = string.loans = string.dataRecords = 0;
    orphans.push_back(&string);
  });
  for (const String string : orphans) Pool().ReleaseIfUnused(string);
}

}  // namespace quillbar::host
