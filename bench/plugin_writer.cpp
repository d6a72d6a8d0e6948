// SPDX-License-Identifier: MIT
#include "bench/plugin_writer.h"

#include "bench/member_address.h"

#include <stdexcept>

namespace quillbar::bench {
PluginWriter::PluginWriter(const Lines &lines) {
  host_.LoadPlugin(QUILLBAR_COMPANION_FILE);
  host_.LoadPlugin(QUILLBAR_PLUGIN_FILE);
  FindMember(members_.addPage, host_, "PDFDocument", "AddPage");
  FindMember(members_.setSize, host_, "Page", "SetSize");
  FindMember(members_.beginText, host_, "Page", "BeginText");
  FindMember(members_.setFont, host_, "Page", "SetFont");
  FindMember(members_.moveTextPosition, host_, "Page", "MoveTextPosition");
  FindMember(members_.showText, host_, "Page", "ShowText");
  FindMember(members_.endText, host_, "Page", "EndText");
  FindMember(members_.setRGBStroke, host_, "Page", "SetRGBStroke");
  FindMember(members_.moveTo, host_, "Page", "MoveTo");
  FindMember(members_.lineTo, host_, "Page", "LineTo");
  FindMember(members_.curveTo, host_, "Page", "CurveTo");
  FindMember(members_.rectangle, host_, "Page", "Rectangle");
  FindMember(members_.draw, host_, "Page", "Draw");
  members_.setLineWidth =
      reinterpret_cast<decltype(members_.setLineWidth)>(host_.Class("Page").FindProperty("LineWidth")->setter);
  // The host keeps the strings released last, to catch their use after release. In an application that has run for a
  // while that store is full; here it is filled before anything is measured.
  constexpr std::size_t kReleasedStrings = 20'000;
  for (std::size_t count = 0; count < kReleasedStrings; ++count) {
    host::StringHandle::FromUtf8(lines[count % lines.size()]);
  }
  for (const std::string &line : lines) {
    lines_.push_back(host::StringHandle::FromUtf8(line));
    loans_.push_back(std::make_unique<host::Host::Loan>(host_, lines_.back()));
  }
}

void PluginWriter::BeginDocument(bool isCompressed, const std::string &trueTypeFile) {
  if (isCompressed) {
    document_ = host_.Create("PDFDocument", {host_.Create("CompressorHandle")});
  } else {
    document_ = host_.Create("PDFDocument");
  }
  if (trueTypeFile.empty()) {
    const auto encoding = host_.Constant("Font.FontEncodingEnum.WINDOWS_ANSI");
    font_ = host_.Call(document_, "GetFont", {"Helvetica", encoding}).AsObject();
  } else {
    font_ = host_.Call(document_, "LoadTrueTypeFont", {host_.Create("FolderItem", {trueTypeFile})}).AsObject();
  }
  loans_.push_back(std::make_unique<host::Host::Loan>(host_, document_));
  loans_.push_back(std::make_unique<host::Host::Loan>(host_, font_));
}

void PluginWriter::EndDocument(const std::string &file) {
  host_.Call(document_, "Save", {host_.Create("FolderItem", {file})});
  const std::int64_t error = host_.Get(document_, "LastErrorNumber").AsInteger();
  if (error != 0) throw std::runtime_error("the plugin noted error " + std::to_string(error));
  // The document's last references: its destructor frees the library document, as HPDF_Free does.
  loans_.clear();
  font_ = {};
  document_ = {};
}

void PluginWriter::BeginPage() {
  pageHandle_ = host_.TakeResult(members_.addPage(document_.Get()));
  pageLoan_ = std::make_unique<host::Host::Loan>(host_, pageHandle_);
  page_ = pageHandle_.Get();
  constexpr Integer kA4 = 3;
  constexpr Integer kPortrait = 0;
  members_.setSize(page_, kA4, kPortrait);
}

void PluginWriter::EndPage() {
  page_ = nullptr;
  pageLoan_.reset();
  pageHandle_ = {};
}

}  // namespace quillbar::bench
