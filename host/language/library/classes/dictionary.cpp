// SPDX-License-Identifier: MIT
// Dictionary, DictionaryEntry and Pair.

#include "host/language/values/dictionary.h"

#include <fmt/format.h>

#include "host/language/library/classes/language_classes.h"
#include "host/language/library/library.h"
#include "host/language/run/exceptions.h"
#include "host/runtime/native_class.h"

namespace quillbar::language {
namespace {

using Self = Instance<"Dictionary">;
using PairSelf = Instance<"Pair">;
using EntrySelf = Instance<"DictionaryEntry">;
namespace native = host::native;
using host::ArrayHandle;
using host::NativeClass;
using host::ObjectHandle;
using host::Type;
using host::Value;

struct PairData {
  Value left = Value::Nil();
  Value right = Value::Nil();
};

struct EntryData {
  DictionaryEntries::Entry entry{Value::Nil(), Value::Nil()};
};

DictionaryEntries &Of(Object self) { return NativeClass<DictionaryEntries>::Of(self); }
PairData &PairOf(Object self) { return NativeClass<PairData>::Of(self); }
EntryData &EntryOf(Object self) { return NativeClass<EntryData>::Of(self); }

[[noreturn]] void FailMissing(const Value &key) {
  const bool hasText = key.IsNil() || key.type().IsString() || variant::IsNumeric(key);
  throw LibraryError{ExceptionKind::kKeyNotFound,
                     key.IsNil() ? "there is no key Nil"
                     : hasText   ? fmt::format("there is no key \"{}\"", variant::AsText(key).Utf8())
                                 : fmt::format("there is no such key, which is {}", key.type().Name())};
}

void Construct(Self *) {}

void ConstructFromPairs(Self *self, ArrayOf<PairSelf *> *pairs) {
  const ArrayHandle list(reinterpret_cast<Array>(pairs));
  for (std::size_t i = 0; i < list.Size(); ++i) {
    const ObjectHandle pair = list.At(static_cast<std::int64_t>(i)).AsObject();
    if (pair.IsNil()) throw LibraryError{ExceptionKind::kNilObject, "a pair of a new Dictionary is Nil"};
    Of(self).Set(PairOf(pair.Get()).left, PairOf(pair.Get()).right);
  }
}

Variant GetValue(Self *self, Variant key) {
  const Value *value = Of(self).Find(native::ValueOf(key));
  if (value == nullptr) FailMissing(native::ValueOf(key));
  return native::Give(*value);
}

void SetValue(Self *self, Variant key, Variant value) { Of(self).Set(native::ValueOf(key), native::ValueOf(value)); }

Variant Lookup(Self *self, Variant key, Variant otherwise) {
  const Value *value = Of(self).Find(native::ValueOf(key));
  return native::Give(value == nullptr ? native::ValueOf(otherwise) : *value);
}

Boolean HasKey(Self *self, Variant key) { return Of(self).Find(native::ValueOf(key)) != nullptr ? 1 : 0; }

void Remove(Self *self, Variant key) {
  if (!Of(self).Remove(native::ValueOf(key))) FailMissing(native::ValueOf(key));
}

void RemoveAll(Self *self) { Of(self).Clear(); }
Integer KeyCount(Self *self) { return static_cast<Integer>(Of(self).Count()); }

Variant Key(Self *self, Integer index) {
  if (index < 0 || static_cast<std::size_t>(index) >= Of(self).Count()) {
    throw LibraryError{ExceptionKind::kOutOfBounds,
                       fmt::format("there is no key {}; the dictionary has {}", index, Of(self).Count())};
  }
  return native::Give(Of(self).At(static_cast<std::size_t>(index)).key);
}

Integer BucketCount(Self *self) { return static_cast<Integer>(Of(self).BucketCount()); }
void SetBucketCount(Self *self, std::intptr_t, Integer count) {
  constexpr Integer kMost = Integer{1} << 24;
  if (count < 0 || count > kMost) {
    throw LibraryError{ExceptionKind::kOutOfBounds, fmt::format("a dictionary has 0 to {} buckets", kMost)};
  }
  Of(self).SetBucketCount(static_cast<std::size_t>(count));
}

Self *Clone(Self *self) { return native::Give<Self>(MakeDictionary(*host::Host::Current(), Of(self).Clone())); }

using DictionaryMembers =
    Members<Methods<native::Method<"Constructor()", Construct>,
                    native::Method<"Constructor(ParamArray entries() as Pair)", ConstructFromPairs>,
                    native::AssignableMethod<"Value(key as Variant) as Variant", GetValue, SetValue>,
                    native::Method<"Lookup(key as Variant, defaultValue as Variant) as Variant", Lookup>,
                    native::Method<"HasKey(key as Variant) as Boolean", HasKey>,
                    native::Method<"Remove(key as Variant)", Remove>, native::Method<"RemoveAll()", RemoveAll>,
                    native::Method<"Clear()", RemoveAll>, native::Method<"Key(index as Integer) as Variant", Key>,
                    native::Method<"Clone() as Dictionary", Clone>>,
            Properties<native::ReadOnlyProperty<"KeyCount", "Integer", KeyCount>,
                       native::ReadOnlyProperty<"Count", "Integer", KeyCount>,
                       native::Property<"BinaryCount", "Integer", BucketCount, SetBucketCount>,
                       native::Property<"BinCount", "Integer", BucketCount, SetBucketCount>>>;

void ConstructPair(PairSelf *self, Variant left, Variant right) {
  PairOf(self) = {native::ValueOf(left), native::ValueOf(right)};
}
Variant Left(PairSelf *self) { return native::Give(PairOf(self).left); }
Variant Right(PairSelf *self) { return native::Give(PairOf(self).right); }

using PairMembers = Members<
    Methods<native::Method<"Constructor(left as Variant, right as Variant)", ConstructPair>>,
    Properties<native::ReadOnlyProperty<"Left", "Variant", Left>, native::ReadOnlyProperty<"Right", "Variant", Right>>>;

void ConstructEntry(EntrySelf *) {}
Variant EntryKey(EntrySelf *self) { return native::Give(EntryOf(self).entry.key); }
Variant EntryValue(EntrySelf *self) { return native::Give(EntryOf(self).entry.value); }

using EntryMembers = Members<Methods<native::Method<"Constructor()", ConstructEntry>>,
                             Properties<native::ReadOnlyProperty<"Key", "Variant", EntryKey>,
                                        native::ReadOnlyProperty<"Value", "Variant", EntryValue>>>;

// What returns arrays, which members of classes can't.

template <class Choose>
ArrayHandle ListOf(const ObjectHandle &dictionary, Type element, Choose choose) {
  ArrayHandle list = ArrayHandle::Create(element);
  for (const DictionaryEntries::Entry &entry : Of(dictionary.Get()).Copy()) list.Append(choose(entry));
  return list;
}

const ObjectHandle &Checked(const ObjectHandle &dictionary) {
  if (dictionary.IsNil()) throw LibraryError{ExceptionKind::kNilObject, "the dictionary is Nil"};
  return dictionary;
}

ArrayHandle Keys(const ObjectHandle &dictionary) {
  return ListOf(Checked(dictionary), host::TypeKind::kVariant, [](const auto &entry) { return entry.key; });
}

ArrayHandle Values(const ObjectHandle &dictionary) {
  return ListOf(Checked(dictionary), host::TypeKind::kVariant, [](const auto &entry) { return entry.value; });
}

ArrayHandle Iterate(Runtime &runtime, const ObjectHandle &dictionary) {
  const host::ClassInfo &info = runtime.Host().Class("DictionaryEntry");
  return ListOf(Checked(dictionary), Type::Class(info), [&](const DictionaryEntries::Entry &entry) {
    ObjectHandle object = runtime.Host().Create(info, nullptr, {});
    EntryOf(object.Get()).entry = entry;
    return Value(std::move(object));
  });
}

using namespace library;

constexpr LibraryFunction kDictionaryFunctions[] = {
    kMethod<"Dictionary", "Keys() As Variant()", &Keys>,
    kMethod<"Dictionary", "Values() As Variant()", &Values>,
    kMethod<"Dictionary", "Operator_Iterate() As DictionaryEntry()", &Iterate>,
};

}  // namespace

ObjectHandle MakeDictionary(host::Host &host, DictionaryEntries entries) {
  ObjectHandle dictionary = host.Create(host.Class("Dictionary"), nullptr, {});
  Of(dictionary.Get()) = std::move(entries);
  return dictionary;
}

DictionaryEntries &EntriesOf(const ObjectHandle &dictionary) { return Of(dictionary.Get()); }

bool IsDictionary(const Value &value) {
  return value.type().IsObject() && !value.IsNil() &&
         value.AsObject().Class().IsSubclassOf(host::Host::Current()->Class("Dictionary"));
}

void RegisterDictionaryClasses(host::Host &host) {
  host.Register(NativeClass<PairData>::Record<PairMembers>("Pair"), true);
  host.Register(NativeClass<EntryData>::Record<EntryMembers>("DictionaryEntry"), true);
  host.Register(NativeClass<DictionaryEntries>::Record<DictionaryMembers>("Dictionary"), true);
  // Those that refer to themselves in a circle end with the script.
  host.ClearWith("Dictionary", [](Object object) { Of(object).Clear(); });
  host.ClearWith("Pair", [](Object object) { const PairData cleared = std::exchange(PairOf(object), PairData()); });
  host.ClearWith("DictionaryEntry",
                 [](Object object) { const EntryData cleared = std::exchange(EntryOf(object), EntryData()); });
}

std::span<const LibraryFunction> DictionaryFunctions() { return kDictionaryFunctions; }

}  // namespace quillbar::language
