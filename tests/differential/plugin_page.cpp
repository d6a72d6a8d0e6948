// SPDX-License-Identifier: MIT
#include "tests/differential/plugin_page.h"

#include <cmath>
#include <stdexcept>

#include "host/runtime/class_model.h"
#include "tests/differential/standard_fonts.h"

namespace quillbar::differential {

namespace {

using host::Value;

constexpr int kUnset = -7;  // what ByRef arguments hold before the call

Value Text(const std::string &bytes, std::uint32_t encoding) {
  return host::StringHandle::FromBytes(bytes, static_cast<TextEncoding>(encoding));
}

double Number(const Value &value) {
  switch (value.type().kind()) {
    case host::TypeKind::kSingle:
      return static_cast<double>(value.AsSingle());
    case host::TypeKind::kColor:
      return static_cast<std::uint32_t>(value.AsColor());
    default:
      return static_cast<double>(value.AsInteger());
  }
}

host::ObjectHandle GetFont(host::Host &host, const host::ObjectHandle &document, const FontChoice &font) {
  host::ObjectHandle handle = host.Call(document, "GetFont", {font.name, font.encoding}).AsObject();
  if (handle.IsNil()) throw std::runtime_error("the plugin has no such font");
  return handle;
}

}  // namespace

PluginPage::PluginPage(host::Host &host, const Sequence &sequence)
    : host_(host), document_(host.Create("PDFDocument")) {
  host_.SetEventHandler(
      document_, "ErrorLog", [&host, events = events_](const host::ObjectHandle &sender, std::span<Value> arguments) {
        const auto number = [](const Value &value) { return static_cast<std::uint32_t>(value.AsInteger()); };
        events->push_back({number(arguments[0]), number(arguments[1]), number(host.Get(sender, "LastErrorNumber")),
                           number(host.Get(sender, "LastErrorDetailNumber"))});
        return Value();
      });
  page_ = host_.Call(document_, "AddPage").AsObject();
  for (std::size_t index = 0; index < fonts_.size(); ++index)
    fonts_[index] = GetFont(host_, document_, sequence.fonts[index]);
  for (std::size_t index = 0; index < kGetterCount; ++index) {
    for (const host::ObjectHandle *object : {&page_, &document_}) {
      for (const host::PropertyInfo &property : object->Class().properties) {
        if (property.name == NameOf(static_cast<Getter>(index))) properties_[index] = &property;
      }
    }
  }
}

Observation PluginPage::Make(const Call &call, std::uint32_t textEncoding) {
  observation_ = {};
  events_->clear();
  Dispatch(call, textEncoding);
  observation_.events = *events_;
  ReadGetters();
  return observation_;
}

std::string PluginPage::Saved() { return std::string(host_.Call(document_, "SaveToString").AsString().Bytes()); }

void PluginPage::CallMethod(const char *name, std::vector<Value> arguments, std::size_t firstByRef) {
  const Value result = host_.CallByRef(page_, name, arguments);
  if (!result.IsNone()) observation_.results.push_back({Number(result)});
  for (std::size_t index = firstByRef; index < arguments.size(); ++index)
    observation_.results.push_back({Number(arguments[index])});
}

void PluginPage::Dispatch(const Call &call, std::uint32_t textEncoding) {
  const MemberDescription &member = DescriptionOf(call.member);
  std::vector<Value> arguments(call.singles.begin(),
                               call.singles.begin() + static_cast<std::ptrdiff_t>(member.singles));
  constexpr std::size_t kNoByRef = 99;
  switch (member.shape) {
    case Shape::kSingles:
      return CallMethod(member.name, arguments, kNoByRef);
    case Shape::kSetSingle:
      return host_.Set(page_, member.name, arguments[0]);
    case Shape::kSetNumber:
      return host_.Set(page_, member.name, call.first);
    case Shape::kSetColor:
      return host_.Set(page_, member.name, static_cast<Color>(static_cast<std::uint32_t>(call.first)));
    case Shape::kSetBoolean:
      return host_.Set(page_, member.name, call.flag);
    case Shape::kSize:
      return CallMethod(member.name, {call.first, call.second}, kNoByRef);
    case Shape::kDashPattern: {
      host::ArrayHandle dashes = host::ArrayHandle::Create(host::TypeKind::kUInt16, call.dashes.size());
      for (std::size_t index = 0; index < call.dashes.size(); ++index)
        dashes.Set(static_cast<std::int64_t>(index), call.dashes[index]);
      return CallMethod(member.name, {dashes, call.phase}, kNoByRef);
    }
    case Shape::kFont:
      return CallMethod(member.name, {fonts_[static_cast<std::size_t>(call.first)], arguments[0]}, kNoByRef);
    case Shape::kMeasure:
      return CallMethod(member.name, {Text(call.text, textEncoding), arguments[0], call.flag}, kNoByRef);
    case Shape::kMeasureInto:
      return CallMethod(member.name,
                        {Text(call.text, textEncoding), arguments[0], call.flag, static_cast<float>(kUnset)}, 3);
    case Shape::kCountLines:
      return CallMethod(member.name, {Text(call.text, textEncoding), arguments[0], std::intptr_t{kUnset}}, 2);
    case Shape::kBox:
      arguments.insert(arguments.begin(), Text(call.text, textEncoding));
      arguments.push_back(call.first);
      arguments.push_back(std::intptr_t{kUnset});
      return CallMethod(member.name, arguments, 6);
    case Shape::kDocument:
      host_.Call(document_, member.name);
      return;
  }
}

void PluginPage::ReadGetters() {
  for (std::size_t index = 0; index < kGetterCount; ++index) {
    if (const host::PropertyInfo *property = properties_[index]; property != nullptr) {
      const bool isOfDocument = index >= static_cast<std::size_t>(Getter::kLastErrorNumber);
      observation_.getters[index].value = Number(host_.Get(isOfDocument ? document_ : page_, *property));
    }
  }
  observation_[Getter::kSuggestedTextLeading].value = Number(host_.Call(page_, "SuggestedTextLeading"));
  std::array<Value, 2> position{static_cast<float>(kUnset), static_cast<float>(kUnset)};
  host_.CallByRef(page_, "GetCurrentTextPosition", position);
  observation_[Getter::kTextPositionX].value = Number(position[0]);
  observation_[Getter::kTextPositionY].value = Number(position[1]);
}

Widths MeasureWidths(host::Host &host, const FontChoice &font) {
  constexpr float kSize = 100;
  const host::ObjectHandle document = host.Create("PDFDocument");
  const host::ObjectHandle page = host.Call(document, "AddPage").AsObject();
  host.Call(page, "SetFont", {GetFont(host, document, font), kSize});
  const std::uint32_t encoding = EncodingOf(font.encoding).hostEncoding;
  Widths widths{};
  for (unsigned byte = 1; byte < widths.size(); ++byte) {
    std::array<Value, 4> arguments{Text(std::string(1, static_cast<char>(byte)), encoding), 1e6F, false, 0.0F};
    host.CallByRef(page, "MeasureText", arguments);
    widths[byte] = static_cast<int>(std::lround(arguments[3].AsSingle() * 1000 / kSize));
  }
  return widths;
}

}  // namespace quillbar::differential
