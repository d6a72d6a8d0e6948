// SPDX-License-Identifier: MIT
// JSONItem, and the functions ParseJSON and GenerateJSON.

#include "host/language/values/json_item.h"

#include <fmt/format.h>

#include "host/language/library/classes/language_classes.h"
#include "host/language/library/library.h"
#include "host/language/run/exceptions.h"
#include "host/runtime/native_class.h"

namespace quillbar::language {
namespace {

using Self = Instance<"JSONItem">;
namespace native = host::native;
using host::ArrayHandle;
using host::NativeClass;
using host::ObjectHandle;
using host::StringHandle;
using host::Value;

JsonItemData &Of(Object self) { return NativeClass<JsonItemData>::Of(self); }

ObjectHandle MakeItem() {
  host::Host &host = *host::Host::Current();
  return host.Create(host.Class("JSONItem"), nullptr, {});
}

ObjectHandle MakeItem(DictionaryEntries members) {
  ObjectHandle item = MakeItem();
  Of(item.Get()).members = std::move(members);
  return item;
}

ObjectHandle MakeItem(std::vector<Value> elements) {
  ObjectHandle item = MakeItem();
  Of(item.Get()).isArray = true;
  Of(item.Get()).elements = std::move(elements);
  return item;
}

/// A value as items hold it: dictionaries and arrays become items of their own.
Value Stored(const Value &value, int depth = 0) {
  if (depth > json::kMaxDepth) {
    throw LibraryError{ExceptionKind::kJson,
                       fmt::format("more than {} containers are nested; does one hold itself?", json::kMaxDepth)};
  }
  if (IsDictionary(value)) {
    DictionaryEntries members(true);
    for (const DictionaryEntries::Entry &entry : EntriesOf(value.AsObject()).Copy()) {
      members.Set(Value(variant::AsText(entry.key)), Stored(entry.value, depth + 1));
    }
    return Value(MakeItem(std::move(members)));
  }
  if (!value.type().IsArray()) return value;
  std::vector<Value> elements;
  const ArrayHandle list = value.AsArray();
  for (std::size_t i = 0; i < list.Size(); ++i) {
    elements.push_back(Stored(list.At(static_cast<std::int64_t>(i)), depth + 1));
  }
  return Value(MakeItem(std::move(elements)));
}

[[noreturn]] void FailMissing(std::string_view name) {
  throw LibraryError{ExceptionKind::kKeyNotFound, fmt::format("there is no member \"{}\"", name)};
}

std::size_t Count(const JsonItemData &data) { return data.isArray ? data.elements.size() : data.members.Count(); }

/// `index` as a place from 0 to `end` - 1.
std::size_t CheckedPlace(Integer index, std::size_t end) {
  if (index >= 0 && static_cast<std::size_t>(index) < end) return static_cast<std::size_t>(index);
  throw LibraryError{ExceptionKind::kOutOfBounds,
                     fmt::format("the index is {}, but the JSONItem has {} values", index, end)};
}

void RequireObject(const JsonItemData &data) {
  if (data.isArray) throw LibraryError{ExceptionKind::kJson, "this JSONItem is an array, which has no names"};
}

/// An item that is still empty may become either.
void RequireArray(JsonItemData &data) {
  if (!data.isArray && data.members.Count() > 0) {
    throw LibraryError{ExceptionKind::kJson, "this JSONItem is an object, whose values have names"};
  }
  data.isArray = true;
}

const Value &ValueOf(JsonItemData &data, String name) {
  RequireObject(data);
  const Value *value = data.members.Find(Value(StringHandle(name)));
  if (value == nullptr) FailMissing(StringHandle(name).Utf8());
  return *value;
}

Value ValueAtPlace(JsonItemData &data, Integer index) {
  const std::size_t place = CheckedPlace(index, Count(data));
  return data.isArray ? data.elements[place] : data.members.At(place).value;
}

Self *ItemOrFail(const Value &value) {
  if (JsonItemOf(value) == nullptr) {
    throw LibraryError{ExceptionKind::kTypeMismatch, "this value is neither an object nor an array"};
  }
  return native::Give<Self>(value.AsObject());
}

void LoadInto(JsonItemData &data, String text) {
  const json::Containers containers{[](DictionaryEntries members) { return Value(MakeItem(std::move(members))); },
                                    [](std::vector<Value> elements) { return Value(MakeItem(std::move(elements))); }};
  const Value root = json::Read(StringHandle(text).Utf8(), containers);
  JsonItemData *item = JsonItemOf(root);
  if (item == nullptr) {
    throw LibraryError{ExceptionKind::kJson, "line 1, column 1: a JSONItem takes an object or an array"};
  }
  data.isArray = item->isArray;
  std::swap(data.members, item->members);
  std::swap(data.elements, item->elements);
}

void Construct(Self *) {}
void ConstructFromText(Self *self, String text) {
  if (!StringHandle(text).IsEmpty()) LoadInto(Of(self), text);
}
void Load(Self *self, String text) { LoadInto(Of(self), text); }

Variant GetValue(Self *self, String name) { return native::Give(ValueOf(Of(self), name)); }
void SetValue(Self *self, String name, Variant value) {
  RequireObject(Of(self));
  Of(self).members.Set(Value(StringHandle(name)), Stored(native::ValueOf(value)));
}

Variant Lookup(Self *self, String name, Variant otherwise) {
  const Value *value = Of(self).isArray ? nullptr : Of(self).members.Find(Value(StringHandle(name)));
  return native::Give(value == nullptr ? native::ValueOf(otherwise) : *value);
}

Boolean HasKey(Self *self, String name) {
  return !Of(self).isArray && Of(self).members.Find(Value(StringHandle(name))) != nullptr ? 1 : 0;
}

Self *Child(Self *self, String name) { return ItemOrFail(ValueOf(Of(self), name)); }
void SetChild(Self *self, String name, Self *child) {
  RequireObject(Of(self));
  Of(self).members.Set(Value(StringHandle(name)), Value(ObjectHandle(child)));
}

Variant ValueAt(Self *self, Integer index) { return native::Give(ValueAtPlace(Of(self), index)); }

void StoreAt(JsonItemData &data, Integer index, Value value) {
  if (!data.isArray) {
    const Value key = data.members.At(CheckedPlace(index, Count(data))).key;
    data.members.Set(key, std::move(value));
    return;
  }
  std::swap(data.elements[CheckedPlace(index, data.elements.size())], value);
}

void SetValueAt(Self *self, Integer index, Variant value) { StoreAt(Of(self), index, Stored(native::ValueOf(value))); }

Self *ChildAt(Self *self, Integer index) { return ItemOrFail(ValueAtPlace(Of(self), index)); }
void SetChildAt(Self *self, Integer index, Self *child) { StoreAt(Of(self), index, Value(ObjectHandle(child))); }

void Add(Self *self, Variant value) {
  RequireArray(Of(self));
  Of(self).elements.push_back(Stored(native::ValueOf(value)));
}

void AddAt(Self *self, Integer index, Variant value) {
  RequireArray(Of(self));
  std::vector<Value> &elements = Of(self).elements;
  const std::size_t place = CheckedPlace(index, elements.size() + 1);
  elements.insert(elements.begin() + static_cast<std::ptrdiff_t>(place), Stored(native::ValueOf(value)));
}

void Remove(Self *self, String name) {
  RequireObject(Of(self));
  if (!Of(self).members.Remove(Value(StringHandle(name)))) FailMissing(StringHandle(name).Utf8());
}

void RemoveAt(Self *self, Integer index) {
  JsonItemData &data = Of(self);
  const std::size_t place = CheckedPlace(index, Count(data));
  if (!data.isArray) {
    data.members.Remove(data.members.At(place).key);
    return;
  }
  const Value removed = std::move(data.elements[place]);
  data.elements.erase(data.elements.begin() + static_cast<std::ptrdiff_t>(place));
}

void RemoveAll(Self *self) {
  const std::vector<Value> removed = std::exchange(Of(self).elements, {});
  Of(self).members.Clear();
  Of(self).isArray = false;
}

String KeyAt(Self *self, Integer index) {
  RequireObject(Of(self));
  const std::size_t place = CheckedPlace(index, Count(Of(self)));
  return native::Give(variant::AsText(Of(self).members.At(place).key));
}

String ToText(Self *self) {
  return native::Give(StringHandle::FromUtf8(json::Write(Value(ObjectHandle(self)), Of(self).style)));
}

Integer CountOf(Self *self) { return static_cast<Integer>(Count(Of(self))); }
Integer LastIndex(Self *self) { return CountOf(self) - 1; }
Boolean IsArray(Self *self) { return Of(self).isArray ? 1 : 0; }
Boolean Compact(Self *self) { return Of(self).style.isExpanded ? 0 : 1; }
void SetCompact(Self *self, std::intptr_t, Boolean value) { Of(self).style.isExpanded = value == 0; }
Boolean EscapeSlashes(Self *self) { return Of(self).style.escapesSlashes ? 1 : 0; }
void SetEscapeSlashes(Self *self, std::intptr_t, Boolean value) { Of(self).style.escapesSlashes = value != 0; }
Integer IndentSpacing(Self *self) { return Of(self).style.indent; }
void SetIndentSpacing(Self *self, std::intptr_t, Integer count) {
  constexpr Integer kMost = 40;
  Of(self).style.indent = static_cast<int>(count < 0 ? 0 : count > kMost ? kMost : count);
}
String DecimalFormat(Self *self) { return native::Give(StringHandle::FromUtf8(Of(self).style.decimalFormat)); }
void SetDecimalFormat(Self *self, std::intptr_t, String format) {
  Of(self).style.decimalFormat = StringHandle(format).Utf8();
}

using JsonItemMembers = Members<
    Methods<
        native::Method<"Constructor()", Construct>, native::Method<"Constructor(text as String)", ConstructFromText>,
        native::Method<"Load(text as String)", Load>,
        native::AssignableMethod<"Value(name as String) as Variant", GetValue, SetValue>,
        native::Method<"Lookup(name as String, defaultValue as Variant) as Variant", Lookup>,
        native::Method<"HasKey(name as String) as Boolean", HasKey>,
        native::Method<"HasName(name as String) as Boolean", HasKey>,
        native::AssignableMethod<"Child(name as String) as JSONItem", Child, SetChild>,
        native::AssignableMethod<"ValueAt(index as Integer) as Variant", ValueAt, SetValueAt>,
        native::AssignableMethod<"ChildAt(index as Integer) as JSONItem", ChildAt, SetChildAt>,
        native::Method<"Add(value as Variant)", Add>, native::Method<"Append(value as Variant)", Add>,
        native::Method<"AddAt(index as Integer, value as Variant)", AddAt>,
        native::Method<"Insert(index as Integer, value as Variant)", AddAt>,
        native::Method<"Remove(name as String)", Remove>, native::Method<"RemoveAt(index as Integer)", RemoveAt>,
        native::Method<"RemoveAll()", RemoveAll>, native::Method<"KeyAt(index as Integer) as String", KeyAt>,
        native::Method<"NameAt(index as Integer) as String", KeyAt>, native::Method<"ToString() as String", ToText>>,
    Properties<native::ReadOnlyProperty<"Count", "Integer", CountOf>,
               native::ReadOnlyProperty<"LastRowIndex", "Integer", LastIndex>,
               native::ReadOnlyProperty<"IsArray", "Boolean", IsArray>,
               native::Property<"Compact", "Boolean", Compact, SetCompact>,
               native::Property<"EscapeSlashes", "Boolean", EscapeSlashes, SetEscapeSlashes>,
               native::Property<"IndentSpacing", "Integer", IndentSpacing, SetIndentSpacing>,
               native::Property<"DecimalFormat", "String", DecimalFormat, SetDecimalFormat>>>;

ArrayHandle Keys(const ObjectHandle &item) {
  if (item.IsNil()) throw LibraryError{ExceptionKind::kNilObject, "the JSONItem is Nil"};
  ArrayHandle keys = ArrayHandle::Create(host::TypeKind::kString);
  if (Of(item.Get()).isArray) return keys;
  for (const DictionaryEntries::Entry &entry : Of(item.Get()).members.Copy()) keys.Append(variant::AsText(entry.key));
  return keys;
}

Value ParseJson(Runtime &runtime, const StringHandle &text) {
  const json::Containers containers{
      [&](DictionaryEntries members) { return Value(MakeDictionary(runtime.Host(), std::move(members))); },
      [](std::vector<Value> elements) {
        ArrayHandle list = ArrayHandle::Create(host::TypeKind::kVariant);
        for (const Value &element : elements) list.Append(element);
        return Value(std::move(list));
      }};
  return json::Read(text.Utf8(), containers);
}

StringHandle GenerateJson(const Value &value, bool isExpanded) {
  json::Style style;
  style.isExpanded = isExpanded;
  style.escapesSlashes = false;
  return StringHandle::FromUtf8(json::Write(value, style));
}

using namespace library;

constexpr LibraryFunction kJsonFunctions[] = {
    kFunction<"ParseJSON(text As String) As Variant", &ParseJson>,
    kFunction<"GenerateJSON(value As Variant, expanded As Boolean = False) As String", &GenerateJson>,

    kMethod<"JSONItem", "Keys() As String()", &Keys>,
    kMethod<"JSONItem", "Names() As String()", &Keys>,
};

}  // namespace

JsonItemData *JsonItemOf(const Value &value) {
  if (!value.type().IsObject() || value.IsNil()) return nullptr;
  const ObjectHandle object = value.AsObject();
  return object.Class().IsSubclassOf(host::Host::Current()->Class("JSONItem")) ? &Of(object.Get()) : nullptr;
}

void RegisterJsonItem(host::Host &host) {
  host.Register(NativeClass<JsonItemData>::Record<JsonItemMembers>("JSONItem"), true);
  host.ClearWith("JSONItem", [](Object object) {
    const std::vector<Value> removed = std::exchange(Of(object).elements, {});
    Of(object).members.Clear();
  });
}

std::span<const LibraryFunction> JsonFunctions() { return kJsonFunctions; }

}  // namespace quillbar::language
