// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/runtime/ledger_report.h"
#include "host/runtime/running_member.h"
#include "interface/records.h"

namespace quillbar::host {

/// Enters what plugins were given, with the member in progress, strikes out what they give back, and notes their
/// mistakes.
class ReferenceLedger {
 public:
  /// Marks a member as running while the frame lives.
  class Frame {
   public:
    Frame(ReferenceLedger &ledger, RunningMember member) : ledger_(ledger) { ledger_.running_.push_back(member); }
    Frame(const Frame &) = delete;
    Frame &operator=(const Frame &) = delete;
    ~Frame() { ledger_.running_.pop_back(); }

   private:
    ReferenceLedger &ledger_;
  };

  /// The member in progress, innermost first; kOutside when none is.
  RunningMember current() const { return running_.empty() ? RunningMember{} : running_.back(); }
  /// Notes a plugin's mistake, with the member in progress.
  void Note(ViolationKind kind, std::string message);

  // -- Strings. Each names the operation for messages and returns whether it was right.

  /// Whether a plugin may pass this string as an argument; notes a violation if not.
  bool MayUse(String string, std::string_view operation);
  /// Gives the plugin a reference, which it must release. Null stays null.
  String Give(String string);
  /// Strikes out a reference that the plugin releases or returns. The string may be released by this, unless the host
  /// holds a reference.
  bool TakeBack(String string, std::string_view operation);
  void Lend(String string);
  void EndLoan(String string);

  // -- String data.

  /// Fills in `record` with the string's data and enters it. The plugin must dispose of it.
  void GiveData(String string, StringDataRecord &record);
  /// Strikes out the string data that `record` describes; returns whether that was right.
  bool TakeBackData(const StringDataRecord &record);

  /// Appends plugins' strings and string data to `report`.
  void AppendTo(LedgerReport &report) const;
  void ClearViolations() { violations_.clear(); }
  /// Frees what plugins never gave back.
  void ReleaseEverything();

  LedgerReport counters;  // only its numbers are kept here

 private:
  struct DataEntry {
    std::uint32_t number;
    String string;
    RunningMember giver;
  };

  std::vector<DataEntry>::iterator FindData(std::uint32_t number);

  std::vector<RunningMember> running_;
  std::vector<Violation> violations_;
  std::vector<DataEntry> data_;  // in the order of their numbers; as a rule, what was given last is returned first
  std::uint32_t nextData_ = 1;
};

/// A short form of a text for messages, in quotation marks: at most 40 bytes of it, then the number of bytes.
std::string Quote(std::string_view utf8);

/// Adds `count` to the entry of the same resource, thing and member, or makes a new entry.
void AddOutstanding(LedgerReport &report, Resource resource, std::string what, std::string member,
                    std::size_t count = 1);

}  // namespace quillbar::host
