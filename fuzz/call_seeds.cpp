// SPDX-License-Identifier: MIT
#include "fuzz/call_seeds.h"

#include <initializer_list>
#include <map>

#include "host/runtime/host.h"
#include "tests/plugin/calls/call_player.h"
#include "tests/support/jpeg_maker.h"

namespace quillbar::fuzz {

namespace {

using test::CallPlayer;

/// A call whose arguments are made from threes, which is neither nothing nor much of anything.
std::string RecordOf(std::size_t operation, char kind, char value) {
  std::string record(CallPlayer::kRecordSize, kind);
  record[0] = static_cast<char>(operation);
  record[1] = 0;
  for (std::size_t i = 3; i < record.size(); i += 2) record[i] = value;
  return record;
}

}  // namespace

void ForEachCallSeed(const std::function<void(const std::string &name, std::string_view sequence)> &take) {
  host::Host host;
  host.LoadPlugin(QUILLBAR_COMPANION_FILE);
  host.LoadPlugin(QUILLBAR_PLUGIN_FILE);
  const CallPlayer player(host, {{}, MakeJpeg({.width = 8, .height = 8})}, {});
  const auto sequence = [&](std::initializer_list<std::string_view> operations) {
    std::string calls;
    for (const std::string_view operation : operations) calls += RecordOf(player.NumberOf(operation).value(), 0, 3);
    return calls;
  };
  const std::string saves = sequence({"PDFDocument.SaveToString", "PDFDocument.SaveToMemoryBlock"}) +
                            RecordOf(*player.NumberOf("PDFDocument.Save"), 0, 0);
  const std::map<std::string, std::string> inOrder = {
      {"text", sequence({"Page.BeginText", "Page.SetFont", "Page.MoveTextPosition", "Page.ShowText",
                         "Page.ShowTextNextLine", "Page.TextRect", "Page.EndText"})},
      {"automatic", sequence({"handle PDFDocument.ResolveFont"}) +
                        RecordOf(*player.NumberOf("PDFDocument.GetFont"), 0, 24) +
                        sequence({"Page.BeginText", "Page.SetFont"}) +
                        RecordOf(*player.NumberOf("Page.ShowText"), 0, 7) + sequence({"Page.EndText"})},
      {"font", RecordOf(*player.NumberOf("PDFDocument.LoadTrueTypeFont"), 0, 1) +
                   sequence({"Page.BeginText", "Page.SetFont"}) + RecordOf(*player.NumberOf("Page.ShowText"), 0, 8)},
      {"path", sequence({"Page.SaveState", "Page.MoveTo", "Page.LineTo", "Page.CurveTo", "Page.Clip", "Page.EndPath",
                         "Page.Arc", "Page.FillAndDraw", "Page.RestoreState"})},
      {"picture", sequence({"PDFDocument.LoadImage", "Page.DrawImage", "PDFDocument.SetPassword",
                            "PDFDocument.SetEncryptionMode"})},
      {"events", sequence({"handle PDFDocument.ErrorLog", "Page.Draw", "PDFDocument.AddPage"})},
      {"owners", sequence({"New Page", "Page.LineTo", "PDFDocument.AddPage", "release PDFDocument", "Page.LineTo"})},
  };
  for (const char head : {'\0', static_cast<char>(CallPlayer::kHostile)}) {
    const std::string kind = head == 0 ? "careful-" : "hostile-";
    for (const auto &[name, calls] : inOrder) take(kind + name, head + calls + saves);
    // Every operation, a few in each sequence.
    constexpr std::size_t kTogether = 8;
    std::string calls;
    for (std::size_t i = 0; i < player.OperationCount(); ++i) {
      calls += RecordOf(i, head == 0 ? 0 : static_cast<char>(201), 3);
      if (i % kTogether != kTogether - 1 && i + 1 != player.OperationCount()) continue;
      take(kind + std::to_string(i / kTogether), head + calls + saves);
      calls.clear();
    }
  }
}

}  // namespace quillbar::fuzz
