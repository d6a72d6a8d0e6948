// SPDX-License-Identifier: MIT
#include "host/runtime/handles.h"

#include "host/runtime/array_store.h"
#include "host/runtime/class_model.h"
#include "host/runtime/host.h"
#include "host/runtime/internals.h"
#include "host/runtime/object_store.h"
#include "host/runtime/string_pool.h"
#include "host/runtime/text_encoding.h"

namespace quillbar::host {

void Retain(String string) { ++string->hostReferences; }

void Release(String string) {
  --string->hostReferences;
  StringPool::Instance().ReleaseIfUnused(string);
}

void Retain(Object object) { ObjectStore::Retain(object); }

void Release(Object object) {
  // A handle that outlives the host finds its object destroyed already.
  if (Host::Current() != nullptr) Internals::Current().objects.Release(object);
}

void Retain(Array array) { ++array->hostReferences; }

void Release(Array array) {
  if (--array->hostReferences == 0) DestroyArray(array);
}

StringHandle StringHandle::FromUtf8(std::string_view text) { return FromBytes(text, TextEncoding::kUtf8); }

StringHandle StringHandle::FromBytes(std::string_view bytes, TextEncoding encoding) {
  if (bytes.empty()) return {};
  return StringHandle(StringPool::Instance().Create(bytes, encoding));
}

std::string_view StringHandle::Bytes() const { return IsEmpty() ? std::string_view() : Get()->View(); }

TextEncoding StringHandle::Encoding() const { return IsEmpty() ? TextEncoding::kUtf8 : Get()->encoding; }

std::string StringHandle::Utf8() const {
  if (IsEmpty()) return {};
  if (Get()->isAscii) return std::string(Bytes());
  return Encode(Decode(Bytes(), Encoding()), TextEncoding::kUtf8);
}

const ClassInfo &ObjectHandle::Class() const { return ObjectStore::ClassOf(Get()); }

}  // namespace quillbar::host
