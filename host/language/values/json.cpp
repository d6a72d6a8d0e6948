// SPDX-License-Identifier: MIT
#include "host/language/values/json.h"

#include <fmt/format.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "host/language/library/number_format.h"
#include "host/language/run/exceptions.h"
#include "host/language/values/json_item.h"
#include "host/language/values/variant.h"
#include "host/runtime/currency.h"

namespace quillbar::language::json {
namespace {

using host::Type;
using host::TypeKind;
using host::Value;

[[noreturn]] void Fail(std::string message) { throw LibraryError{ExceptionKind::kJson, std::move(message)}; }

/// Refuses texts with too many levels, with the place of the first one too many. Brackets inside texts don't count.
void RefuseDepth(std::string_view text) {
  int depth = 0;
  int line = 1;
  std::size_t lineStart = 0;
  bool isQuoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\n') {
      ++line;
      lineStart = i + 1;
    }
    if (isQuoted && c == '\\') {
      ++i;
    } else if (c == '"') {
      isQuoted = !isQuoted;
    } else if (!isQuoted && (c == '[' || c == '{') && ++depth > kMaxDepth) {
      Fail(fmt::format("line {}, column {}: more than {} objects and arrays are nested", line, i - lineStart + 1,
                       kMaxDepth));
    } else if (!isQuoted && (c == ']' || c == '}')) {
      --depth;
    }
  }
}

/// Builds values while the library reads.
class Builder : public nlohmann::json::json_sax_t {
 public:
  explicit Builder(const Containers &containers) : containers_(containers) {}

  Value Take() { return std::move(root_); }

  bool null() override { return Add(Value::Nil()); }
  bool boolean(bool value) override { return Add(Value(value)); }
  bool number_integer(number_integer_t value) override {
    const bool fits = value >= INTPTR_MIN && value <= INTPTR_MAX;
    return Add(Value::OfInteger(fits ? Type::Integer() : Type(TypeKind::kInt64), value));
  }
  bool number_unsigned(number_unsigned_t value) override {
    if (value <= static_cast<number_unsigned_t>(INT64_MAX)) {
      return number_integer(static_cast<number_integer_t>(value));
    }
    return Add(Value::OfInteger(TypeKind::kUInt64, static_cast<std::int64_t>(value)));
  }
  bool number_float(number_float_t value, const string_t &) override { return Add(Value(value)); }
  bool string(string_t &value) override { return Add(Value(value)); }
  bool binary(binary_t &) override { return false; }
  bool start_object(std::size_t) override {
    levels_.emplace_back();
    return true;
  }
  bool start_array(std::size_t) override {
    levels_.emplace_back();
    return true;
  }
  bool key(string_t &name) override {
    levels_.back().name = Value(name);
    return true;
  }
  bool end_object() override {
    Level level = TakeLevel();
    return Add(containers_.object(std::move(level.members)));
  }
  bool end_array() override {
    Level level = TakeLevel();
    return Add(containers_.array(std::move(level.elements)));
  }
  bool parse_error(std::size_t, const std::string &, const nlohmann::json::exception &error) override {
    // "[json.exception.parse_error.101] parse error at line 1, column 2: syntax error while parsing value - …"
    std::string_view message = error.what();
    const std::size_t place = message.find("line ");
    if (place != std::string_view::npos) message.remove_prefix(place);
    Fail(std::string(message));
  }

 private:
  struct Level {
    DictionaryEntries members{true};
    std::vector<Value> elements;
    std::optional<Value> name;  // of the member whose value comes next
  };

  Level TakeLevel() {
    Level level = std::move(levels_.back());
    levels_.pop_back();
    return level;
  }

  bool Add(Value value) {
    if (levels_.empty()) {
      root_ = std::move(value);
    } else if (Level &level = levels_.back(); level.name) {
      level.members.Set(*std::exchange(level.name, std::nullopt), std::move(value));
    } else {
      level.elements.push_back(std::move(value));
    }
    return true;
  }

  const Containers &containers_;
  std::vector<Level> levels_;
  Value root_ = Value::Nil();
};

class Writer {
 public:
  explicit Writer(const Style &style) : style_(style) {}

  std::string Take() { return std::move(text_); }

  void Add(const Value &value) {
    if (value.IsNil()) {
      text_ += "null";
    } else if (value.type().IsArray()) {
      AddArray(value.AsArray());
    } else if (const JsonItemData *item = JsonItemOf(value)) {
      if (item->isArray) {
        AddElements(item->elements.size(), [&](std::size_t i) { Add(item->elements[i]); });
      } else {
        AddMembers(item->members);
      }
    } else if (IsDictionary(value)) {
      AddMembers(EntriesOf(value.AsObject()));
    } else {
      AddSimple(value);
    }
  }

 private:
  void AddArray(const host::ArrayHandle &list) {
    if (list.ArrayType().Rank() > 1) Fail("an array with several dimensions can't be written as JSON");
    AddElements(list.Size(), [&](std::size_t i) { Add(list.At(static_cast<std::int64_t>(i))); });
  }

  template <class AddElement>
  void AddElements(std::size_t count, AddElement addElement) {
    Open('[');
    for (std::size_t i = 0; i < count; ++i) {
      Separate(i == 0);
      addElement(i);
    }
    Close(']', count == 0);
  }

  void AddMembers(const DictionaryEntries &members) {
    Open('{');
    bool isFirst = true;
    for (const DictionaryEntries::Entry &entry : members.Copy()) {
      Separate(isFirst);
      isFirst = false;
      const bool isName =
          !entry.key.type().IsArray() && (!entry.key.type().IsObject() || variant::TypeNumber(entry.key) == 38);
      if (!isName) Fail(fmt::format("{} can't be the name of a member in JSON", entry.key.type().Name()));
      AddText(variant::AsText(entry.key).Utf8());
      text_ += style_.isExpanded ? ": " : ":";
      Add(entry.value);
    }
    Close('}', isFirst);
  }

  void AddSimple(const Value &value) {
    const TypeKind kind = value.type().StorageKind();
    const bool isMoment = variant::TypeNumber(value) == 38;
    if (host::IsFloating(kind)) {
      AddReal(value.AsDouble(), kind == TypeKind::kSingle);
    } else if (kind == TypeKind::kBoolean) {
      text_ += value.AsBoolean() ? "true" : "false";
    } else if (value.type().IsString() || kind == TypeKind::kColor || isMoment) {
      AddText(variant::AsText(value).Utf8());
    } else if (host::IsNumeric(kind)) {
      text_ += variant::AsText(value).Utf8();
    } else {
      Fail(fmt::format("{} can't be written as JSON", value.type().Name()));
    }
  }

  void AddReal(double number, bool isSingle) {
    if (!std::isfinite(number)) Fail("infinity and not-a-number can't be written as JSON");
    if (!style_.decimalFormat.empty()) {
      text_ += FormatNumber(number, style_.decimalFormat);
    } else if (isSingle) {
      text_ += fmt::format("{}", static_cast<float>(number));
    } else {
      text_ += fmt::format("{}", number == 0 ? 0.0 : number);  // "-0" would be read as a whole number
    }
  }

  void AddText(const std::string &utf8) {
    std::string quoted = nlohmann::json(utf8).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    if (style_.escapesSlashes) {
      for (std::size_t at = quoted.find('/'); at != std::string::npos; at = quoted.find('/', at + 2)) {
        quoted.insert(at, 1, '\\');
      }
    }
    text_ += quoted;
  }

  void Open(char bracket) {
    if (++depth_ > kMaxDepth) {
      Fail(fmt::format("more than {} objects and arrays are nested; does one hold itself?", kMaxDepth));
    }
    text_ += bracket;
  }

  void Separate(bool isFirst) {
    if (!isFirst) text_ += ',';
    if (style_.isExpanded) BreakLine();
  }

  void Close(char bracket, bool isEmpty) {
    --depth_;
    if (style_.isExpanded && !isEmpty) BreakLine();
    text_ += bracket;
  }

  void BreakLine() {
    text_ += '\n';
    text_.append(static_cast<std::size_t>(depth_ * style_.indent), ' ');
  }

  const Style &style_;
  std::string text_;
  int depth_ = 0;
};

}  // namespace

Value Read(std::string_view utf8, const Containers &containers) {
  RefuseDepth(utf8);
  Builder builder(containers);
  nlohmann::json::sax_parse(utf8.begin(), utf8.end(), &builder);
  return builder.Take();
}

std::string Write(const Value &value, const Style &style) {
  Writer writer(style);
  writer.Add(value);
  return writer.Take();
}

}  // namespace quillbar::language::json
