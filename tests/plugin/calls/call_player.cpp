// SPDX-License-Identifier: MIT
#include "tests/plugin/calls/call_player.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <limits>
#include <utility>

#include "tests/support/synthetic_font.h"
#include "tests/support/utf8_path.h"

namespace quillbar::test {

namespace {

using host::ArrayHandle;
using host::ClassInfo;
using host::EventInfo;
using host::MethodInfo;
using host::ObjectHandle;
using host::PropertyInfo;
using host::StringHandle;
using host::Type;
using host::TypeKind;
using host::Value;

namespace fs = std::filesystem;
using namespace std::string_view_literals;

/// Objects of one class that an input can name at a time.
constexpr std::size_t kMostObjects = 6;
/// Handlers that call back while others do.
constexpr int kMostDepth = 3;

/// What a handler throws, as a script that raises an exception in one.
struct RaisedByHandler : std::exception {};

constexpr std::array kFiles = {"saved.pdf"sv,   "font.ttf"sv,    "font.afm"sv,   "font.pfb"sv,
                               "picture.jpg"sv, "missing.ttf"sv, "none/x.pdf"sv, ""sv};

constexpr std::array kTexts = {
    ""sv,
    "plain text of words that fill a line"sv,
    "https://example.com/?q=1&r=(x)\\"sv,
    "Helvetica"sv,
    "Times-Roman"sv,
    "Symbol"sv,
    "ZapfDingbats"sv,
    "Größe Ж שלום ABC السلام नमस्ते 日本語 한국어 😀"sv,
    "ABC AB\tBA\nA\r\nB\fC"sv,
    "a\0b\0"sv,
    "\u202E12\u2067ab\u0301\u0301\u2069 \u200D\uFEFF\u00AD"sv,
    "\xFF\xFE\x80 \xC3 \xED\xA0\x80 \xF4\x90\x80\x80"sv,
    "Courier-BoldOblique"sv,
    "owner"sv,
};

const ClassInfo *ResultClass(const MethodInfo &method) {
  return method.result.IsObject() ? method.result.objectClass() : nullptr;
}

bool IsFile(std::string_view bytes) { return bytes.starts_with("%PDF"); }

std::string Description(const Value &value) {
  if (value.IsNil()) return "Nil";
  if (value.type().IsArray()) return "array";
  if (value.type().IsObject()) {
    const ObjectHandle object = value.AsObject();
    char address[32];
    std::snprintf(address, sizeof address, " %p", static_cast<const void *>(object.Get()));
    return object.Class().name + address;
  }
  if (value.type().IsString()) {
    const StringHandle string = value.AsString();
    const std::string text = string.Utf8();
    return "\"" + text.substr(0, 60) + "\" of " + std::to_string(string.Bytes().size()) + " bytes";
  }
  if (host::IsFloating(value.type().kind())) return std::to_string(value.RawReal());
  return std::to_string(value.RawInteger());
}

}  // namespace

FilesForCalls WriteFilesForCalls(const fs::path &folder, std::string jpeg) {
  const auto write = [&](std::string_view name, std::string_view bytes) {
    std::ofstream(folder / name, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  };
  SyntheticFont font(8);
  font.SetOutline(2, SyntheticFont::Composite({1, 3}));
  const FontBytes bytes = font.Build();
  write("font.ttf", {reinterpret_cast<const char *>(bytes.data()), bytes.size()});
  write("font.afm",
        "StartFontMetrics 4.1\nFontName Small\nEncodingScheme AdobeStandardEncoding\nFontBBox -10 -200 900 800\n"
        "Ascender 750\nDescender -250\nStartCharMetrics 2\nC 32 ; WX 250 ; N space ; B 0 0 0 0 ;\n"
        "C 65 ; WX 722 ; N A ;\nEndCharMetrics\nEndFontMetrics\n");
  write("font.pfb", "%!PS-AdobeFont-1.0: Small\n/FontName /Small def\ncurrentfile eexec\n0123456789ABCDEF\n" +
                        std::string(512, '0') + "\ncleartomark\n");
  write("picture.jpg", jpeg);
  return {folder, std::move(jpeg)};
}

CallPlayer::CallPlayer(host::Host &host, FilesForCalls files, TakeFile takeFile)
    : host_(host), files_(std::move(files)), takeFile_(std::move(takeFile)) {
  for (const ClassInfo *info : host.registry().Classes()) {
    if (info->isBuiltIn) continue;
    bool hasConstructor = false;
    for (const MethodInfo &method : info->methods) {
      if (method.IsConstructor()) {
        if (method.IsPrivate()) continue;
        hasConstructor = true;
        operations_.push_back({Act::kNew, info, &method, nullptr, nullptr, "New " + info->name});
      } else if (!method.IsPrivate()) {
        operations_.push_back({Act::kCall, info, &method, nullptr, nullptr, info->name + "." + method.name});
      }
    }
    // What scripts can make so is without a document, and every member has to stand it.
    if (!hasConstructor) operations_.push_back({Act::kNew, info, nullptr, nullptr, nullptr, "New " + info->name});
    for (const PropertyInfo &property : info->properties) {
      const std::string name = info->name + "." + property.name;
      if (!property.IsWriteOnly()) operations_.push_back({Act::kGet, info, nullptr, &property, nullptr, "get " + name});
      if (!property.IsReadOnly()) operations_.push_back({Act::kSet, info, nullptr, &property, nullptr, "set " + name});
    }
    for (const EventInfo &event : info->events) {
      operations_.push_back({Act::kHandle, info, nullptr, nullptr, &event, "handle " + info->name + "." + event.name});
    }
    operations_.push_back({Act::kRelease, info, nullptr, nullptr, nullptr, "release " + info->name});
  }
}

std::optional<std::uint8_t> CallPlayer::NumberOf(std::string_view operation) const {
  const auto found = std::ranges::find(operations_, operation, &Operation::name);
  if (found == operations_.end()) return std::nullopt;
  return static_cast<std::uint8_t>(found - operations_.begin());
}

std::size_t CallPlayer::Play(std::span<const std::uint8_t> input) {
  if (input.empty()) return 0;
  isHostile_ = (input[0] & kHostile) != 0;
  rest_ = input.subspan(1);
  depth_ = 0;
  calls_ = 0;
  while (!rest_.empty()) PlayNext();
  objects_.clear();
  passwords_.clear();
  return calls_;
}

void CallPlayer::PlayNext() {
  std::array<std::uint8_t, kRecordSize> record{};
  const std::size_t size = std::min(rest_.size(), kRecordSize);
  std::copy_n(rest_.begin(), size, record.begin());
  rest_ = rest_.subspan(size);
  try {
    Perform(operations_[record[0] % operations_.size()], record);
  } catch (const host::HostError &) {
    // A script would end here, or catch it: what follows must work all the same.
  } catch (const RaisedByHandler &) {
  }
}

void CallPlayer::Perform(const Operation &operation, Record record) {
  const std::uint8_t choice = record[1];
  if (operation.act == Act::kNew) {
    std::vector<Value> arguments;
    if (operation.method != nullptr) arguments = Arguments(*operation.method, record);
    if (operation.info->name == "PixelRaster" && arguments.size() >= 3) {
      // One of many megabytes takes time, and shows nothing that a small one doesn't.
      const double pixels =
          static_cast<double>(arguments[0].RawInteger()) * static_cast<double>(arguments[1].RawInteger());
      if (pixels > 1e5 && pixels < 1e12) arguments[0] = Value::OfInteger(arguments[0].type(), 7);
    }
    Show(operation, {}, arguments);
    ++calls_;
    Keep(host_.Create(*operation.info, operation.method, arguments));
    return;
  }
  if (operation.act == Act::kRelease) {
    auto &objects = objects_[operation.info];
    if (objects.empty()) return;
    Show(operation, {}, {});
    // Out of the list first: releasing an object may change it.
    const auto place = objects.begin() + static_cast<std::ptrdiff_t>(choice % objects.size());
    const ObjectHandle released = std::move(*place);
    objects.erase(place);
    return;
  }
  const ObjectHandle object = Any(*operation.info, choice);
  if (object.IsNil()) return;
  switch (operation.act) {
    case Act::kCall:
      Call(operation, *operation.method, object, Arguments(*operation.method, record));
      break;
    case Act::kGet:
      Show(operation, object, {});
      ++calls_;
      Keep(host_.Get(object, *operation.property));
      break;
    case Act::kSet: {
      const Value value = Argument(operation.property->type, {record[2], record[3]});
      Show(operation, object, {&value, 1});
      ++calls_;
      host_.Set(object, *operation.property, value);
      break;
    }
    default:
      Show(operation, object, {});
      Handle(object, *operation.event, record[2]);
  }
}

void CallPlayer::Handle(const ObjectHandle &object, const EventInfo &event, std::uint8_t behaviour) {
  const auto kind = static_cast<Handler>(behaviour % kHandlers);
  if (kind == kDetached) {
    host_.SetEventHandler(object, event, {});
    return;
  }
  host_.SetEventHandler(object, event,
                        [this, kind, &event](const ObjectHandle &, std::span<Value>) { return Answer(kind, event); });
}

Value CallPlayer::Answer(Handler behaviour, const EventInfo &event) {
  if (behaviour == kRaises) throw RaisedByHandler();
  if (behaviour == kReleasesAll) objects_.clear();
  if (behaviour == kCallsBack && depth_ < kMostDepth && !rest_.empty()) {
    ++depth_;
    PlayNext();
    --depth_;
  }
  if (!event.result.IsObject() || behaviour != kAnswers) return Value::Zero(event.result);
  return Value(ObjectOf(*event.result.objectClass(), {0, 0}));
}

void CallPlayer::Call(const Operation &operation, const MethodInfo &method, const ObjectHandle &object,
                      std::vector<Value> arguments) {
  Show(operation, object, arguments);
  ++calls_;
  if (method.name == "SetPassword") {
    for (const Value &password : arguments) passwords_.push_back(password.Utf8());
  }
  const Value result = host_.Invoke(method, object, arguments);
  Keep(result);
  if (method.name == "SaveToString") {
    const StringHandle file = result.AsString();
    if (IsFile(file.Bytes())) takeFile_(file.Bytes(), passwords_);
  } else if (method.name == "SaveToMemoryBlock" && !result.IsNil()) {
    const Value size = host_.Get(result.AsObject(), "Size");
    const StringHandle file = host_.Call(result.AsObject(), "StringValue", {Value(0), size}).AsString();
    if (IsFile(file.Bytes())) takeFile_(file.Bytes(), passwords_);
  } else if (method.name == "Save") {
    const fs::path path = files_.folder / kFiles[0];
    std::ifstream file(path, std::ios::binary);
    if (!file) return;
    takeFile_(std::string(std::istreambuf_iterator<char>(file), {}), passwords_);
    file.close();
    fs::remove(path);
  }
}

std::vector<Value> CallPlayer::Arguments(const MethodInfo &method, Record record) {
  std::vector<Value> arguments;
  for (const host::ParameterInfo &parameter : method.parameters) {
    const std::size_t at = 2 + 2 * arguments.size();
    arguments.push_back(Argument(parameter.type, {record[at % kRecordSize], record[(at + 1) % kRecordSize]}));
  }
  return arguments;
}

void CallPlayer::Keep(const Value &made) {
  if (!made.type().IsObject() || made.IsNil()) return;
  const ObjectHandle object = made.AsObject();
  ObjectHandle oldest;  // released last: that may change the list
  auto &objects = objects_[&object.Class()];
  if (objects.size() == kMostObjects) {
    oldest = std::move(objects.front());
    objects.erase(objects.begin());
  }
  objects.push_back(object);
}

Value CallPlayer::Argument(Type type, Seed seed) {
  if (type.IsArray()) return ArrayOf(type, seed);
  if (const host::EnumerationInfo *info = type.enumeration(); info != nullptr && !(isHostile_ && seed.kind > 200)) {
    return Value::OfInteger(type, info->members[seed.value % info->members.size()].value);
  }
  switch (type.kind()) {
    case TypeKind::kString:
      return Text(seed);
    case TypeKind::kBoolean:
      return (seed.value & 1) != 0;
    case TypeKind::kColor:
      return Value::OfInteger(type, seed.kind << 16 | seed.value << 8 | (seed.kind ^ seed.value));
    case TypeKind::kSingle:
    case TypeKind::kDouble:
      return Value::OfReal(type, Real(seed));
    case TypeKind::kObject:
      return Value(ObjectOf(*type.objectClass(), seed));
    default:
      return Value::OfInteger(type, Whole(seed));
  }
}

double CallPlayer::Real(Seed seed) const {
  using Limits = std::numeric_limits<float>;
  constexpr std::array kCareful = {0.0, 1.0, 0.5, 12.0, 90.0, 100.0, 360.0, 595.0, 841.0, -1.0, 14400.0};
  constexpr std::array<double, 16> kHostileNumbers = {Limits::quiet_NaN(),
                                                      Limits::infinity(),
                                                      -Limits::infinity(),
                                                      Limits::max(),
                                                      -Limits::max(),
                                                      Limits::min(),
                                                      Limits::denorm_min(),
                                                      -0.0,
                                                      1e9,
                                                      -1e9,
                                                      32767.0,
                                                      32768.0,
                                                      2147483648.0,
                                                      -2147483649.0,
                                                      1e-7,
                                                      14400.1};
  if (isHostile_ && seed.kind > 200) return kHostileNumbers[seed.value % kHostileNumbers.size()];
  switch (seed.kind % 4) {
    case 0:
      return seed.value;
    case 1:
      return seed.value / 255.0;
    case 2:
      return kCareful[seed.value % kCareful.size()];
    default:
      return (seed.value * 64 + seed.kind) / 8.0 - 500.0;
  }
}

std::int64_t CallPlayer::Whole(Seed seed) const {
  using Limits = std::numeric_limits<std::int64_t>;
  constexpr std::array<std::int64_t, 12> kHostileNumbers = {Limits::min(),
                                                            Limits::max(),
                                                            std::numeric_limits<std::int32_t>::min(),
                                                            std::numeric_limits<std::int32_t>::max(),
                                                            -1,
                                                            -2,
                                                            32768,
                                                            65535,
                                                            65536,
                                                            0xFFFFFFFF,
                                                            0x100000000,
                                                            0x100000003};
  if (isHostile_ && seed.kind > 200) return kHostileNumbers[seed.value % kHostileNumbers.size()];
  return seed.kind % 2 == 0 ? seed.value % 9 : seed.value;
}

StringHandle CallPlayer::Text(Seed seed) const {
  const std::size_t number = seed.value % (kTexts.size() + 6);
  if (number < kTexts.size()) return StringHandle::FromUtf8(kTexts[number]);
  switch (number - kTexts.size()) {
    case 0:
      return StringHandle::FromBytes(files_.jpeg, TextEncoding::kRawBytes);
    case 1:  // without its end
      return StringHandle::FromBytes(std::string_view(files_.jpeg).substr(0, files_.jpeg.size() * seed.kind / 256),
                                     TextEncoding::kRawBytes);
    case 2:
      return StringHandle::FromBytes("A\0B\0\x3D\xD8\0\xDE\0\xD8"sv, TextEncoding::kUtf16);
    case 3:
      return StringHandle::FromBytes("A\xE4\xFC\x80", static_cast<TextEncoding>(0x500));
    case 4:
      return StringHandle::FromUtf8(std::string(seed.kind * std::size_t{160}, 'A'));
    default:
      return StringHandle::FromBytes(std::string(seed.kind % 40, static_cast<char>(seed.kind)),
                                     TextEncoding::kRawBytes);
  }
}

Value CallPlayer::ArrayOf(Type type, Seed seed) {
  ArrayHandle array = ArrayHandle::Create(type.Element(), seed.kind % 10);
  for (std::size_t i = 0; i < array.Size(); ++i) {
    array.Set(static_cast<std::int64_t>(i),
              Argument(type.Element(), {seed.kind, static_cast<std::uint8_t>(seed.value + i)}));
  }
  return array;
}

ObjectHandle CallPlayer::ObjectOf(const ClassInfo &info, Seed seed) {
  if (seed.kind >= 240) return {};
  if (info.name == "FolderItem") {
    return host_.Create("FolderItem", {Value(Utf8(files_.folder / kFiles[seed.value % kFiles.size()]))});
  }
  if (info.name == "MemoryBlock" && (objects_[&info].empty() || seed.kind >= 128)) {
    return host_.Create("MemoryBlock", {Value(seed.value * 3)});
  }
  return Any(info, seed.value);
}

ObjectHandle CallPlayer::Any(const ClassInfo &info, std::uint8_t choice) {
  auto *objects = &objects_[&info];
  if (objects->empty()) {
    // Every annotation will do where one is asked for.
    for (auto &[other, known] : objects_) {
      if (!known.empty() && other->IsSubclassOf(info)) return known[choice % known.size()];
    }
    MakeOne(info);
    objects = &objects_[&info];
  }
  return objects->empty() ? ObjectHandle() : (*objects)[choice % objects->size()];
}

void CallPlayer::MakeOne(const ClassInfo &info) {
  // The arguments of a record of threes make something that isn't empty: three pixels, three channels.
  std::array<std::uint8_t, kRecordSize> plain{};
  for (std::size_t i = 3; i < plain.size(); i += 2) plain[i] = 3;
  const Operation *chosen = nullptr;
  for (const Operation &operation : operations_) {
    const bool isMaker = operation.act == Act::kCall && ResultClass(*operation.method) == &info;
    if (!isMaker && !(operation.act == Act::kNew && operation.info == &info && operation.method != nullptr)) continue;
    if (chosen == nullptr || chosen->method->parameters.empty()) chosen = &operation;
    if (isMaker || !chosen->method->parameters.empty()) break;
  }
  if (chosen == nullptr || depth_ > kMostDepth * 3) return;
  ++depth_;
  Perform(*chosen, plain);
  --depth_;
}

void CallPlayer::Show(const Operation &operation, const ObjectHandle &object, std::span<const Value> arguments) const {
  if (!showsCalls_) return;
  std::string line = operation.name;
  if (!object.IsNil()) line += " of " + Description(Value(object));
  for (const Value &argument : arguments) line += ", " + Description(argument);
  std::fprintf(stderr, "%s\n", line.c_str());
}

}  // namespace quillbar::test
