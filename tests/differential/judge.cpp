// SPDX-License-Identifier: MIT
#include "tests/differential/judge.h"

#include <fmt/format.h>

#include <algorithm>
#include <exception>

#include "tests/differential/call_generator.h"
#include "tests/differential/content_comparison.h"
#include "tests/differential/plugin_page.h"
#include "tests/support/pdf_file.h"

namespace quillbar::differential {

/// One sequence on both sides.
class Judge::Trial {
 public:
  Trial(Judge &judge, const Sequence &sequence)
      : differences_(judge.differences_),
        reference_(sequence, judge.differences_,
                   [&judge](const FontChoice &font) -> const Widths & { return judge.WidthsOf(font); }),
        plugin_(judge.host_, sequence) {}

  unsigned Mode() const { return reference_.Mode(); }
  bool CanJudge(const Call &call) const { return reference_.CanJudge(call); }
  bool HasParted() const { return reference_.HasParted(); }

  std::optional<Finding> Make(const Call &call) {
    const std::size_t number = calls_++;
    return Reading(number, [&]() -> std::optional<Finding> {
      const std::uint32_t encoding = reference_.TextEncoding();
      const Observation expected = reference_.Make(call);
      if (auto difference = Difference(plugin_.Make(call, encoding), expected))
        return Finding{number, std::move(*difference)};
      return std::nullopt;
    });
  }

  std::optional<Finding> Finish() {
    return Reading(calls_, [this] { return CompareFiles(); });
  }

 private:
  // Content that can't be parsed is a finding too.
  template <class Action>
  static std::optional<Finding> Reading(std::size_t call, Action action) {
    try {
      return action();
    } catch (const std::exception &problem) {
      return Finding{call, problem.what()};
    }
  }

  std::optional<Finding> CompareFiles() {
    if (!reference_.WrongWidths().empty()) return Finding{0, "widths: " + reference_.WrongWidths().front()};
    reference_.Finish();
    const test::PdfFile file(plugin_.Saved());
    if (auto difference = CompareContent(file.Operators(0), reference_.Content(), reference_.Parts(), differences_))
      return Finding{difference->call, std::move(difference->text)};
    return std::nullopt;
  }

  const IntendedDifferences &differences_;
  LibraryPage reference_;
  PluginPage plugin_;
  std::size_t calls_ = 0;
};

const Widths &Judge::WidthsOf(const FontChoice &font) {
  const std::pair<std::string, std::int32_t> key{font.name, font.encoding};
  const auto found = widths_.find(key);
  if (found != widths_.end()) return found->second;
  return widths_.emplace(key, MeasureWidths(host_, font)).first->second;
}

std::optional<Finding> Judge::JudgeRandomCalls(std::uint64_t seed, Sequence &sequence) {
  CallGenerator generator(seed);
  sequence = generator.Begin();
  Trial trial(*this, sequence);
  do {
    Call call = generator.Next(trial.Mode());
    if (!trial.CanJudge(call)) continue;
    sequence.calls.push_back(std::move(call));
    if (auto finding = trial.Make(sequence.calls.back())) return finding;
  } while (!trial.HasParted() && generator.Continues());
  return trial.Finish();
}

std::optional<Finding> Judge::JudgeCalls(const Sequence &sequence) {
  Trial trial(*this, sequence);
  for (const Call &call : sequence.calls) {
    if (!trial.CanJudge(call)) continue;
    if (auto finding = trial.Make(call)) return finding;
    if (trial.HasParted()) break;
  }
  return trial.Finish();
}

Sequence Judge::Shrunk(Sequence sequence) {
  for (std::size_t size = std::max<std::size_t>(1, sequence.calls.size() / 2);; size /= 2) {
    for (std::size_t begin = 0; begin < sequence.calls.size();) {
      Sequence shorter = sequence;
      const auto first = shorter.calls.begin() + static_cast<std::ptrdiff_t>(begin);
      const std::size_t count = std::min(size, sequence.calls.size() - begin);
      shorter.calls.erase(first, first + static_cast<std::ptrdiff_t>(count));
      if (JudgeCalls(shorter).has_value()) {
        sequence = std::move(shorter);
      } else {
        begin += size;
      }
    }
    if (size <= 1) return sequence;
  }
}

std::string Judge::Report(std::uint64_t seed, const Sequence &sequence, const Finding &finding) {
  constexpr std::size_t kLastCalls = 8;
  std::string report = fmt::format("seed {}, call {} of {}: {}\nthe calls up to it:\n", seed, finding.call,
                                   sequence.calls.size(), finding.text);
  const std::size_t end = std::min(finding.call + 1, sequence.calls.size());
  for (std::size_t index = end > kLastCalls ? end - kLastCalls : 0; index < end; ++index)
    report += fmt::format("  {}: {}\n", index, Describe(sequence.calls[index], sequence));
  const Sequence shrunk = Shrunk(sequence);
  const auto again = JudgeCalls(shrunk);
  report += fmt::format("the shortest sequence that differs ({}):\n", again ? again->text : "but not again");
  for (const Call &call : shrunk.calls) report += "  " + Describe(call, shrunk) + "\n";
  return report;
}

}  // namespace quillbar::differential
