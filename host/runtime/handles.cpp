#include "host/runtime/handles.h"

#include "host/runtime/class_model.h"
#include "host/runtime/host.h"
#include "host/runtime/internals.h"
#include "host/runtime/object_store.h"
#include "host/runtime/string_pool.h"
#include "host/runtime/text_encoding.h"

namespace quillbar::host {

StringHandle::StringHandle(String string) : string_(string) {
  if (string_ != nullptr) ++string_->hostReferences;
}

StringHandle::~StringHandle() {
  if (string_ == nullptr) return;
  --string_->hostReferences;
  StringPool::Instance().ReleaseIfUnused(string_);
}

StringHandle StringHandle::FromUtf8(std::string_view text) { return FromBytes(text, TextEncoding::kUtf8); }

StringHandle StringHandle::FromBytes(std::string_view bytes, TextEncoding encoding) {
  if (bytes.empty()) return {};
  return StringHandle(StringPool::Instance().Create(std::string(bytes), encoding));
}

std::string_view StringHandle::Bytes() const {
  return string_ == nullptr ? std::string_view() : string_->View();
}

TextEncoding StringHandle::Encoding() const {
  return string_ == nullptr ? TextEncoding::kUtf8 : string_->encoding;
}

std::string StringHandle::Utf8() const {
  if (string_ == nullptr) return {};
  if (string_->isAscii) return std::string(Bytes());
  return Encode(Decode(Bytes(), Encoding()), TextEncoding::kUtf8);
}

ObjectHandle::ObjectHandle(Object object) : object_(object) {
  if (object_ != nullptr) ObjectStore::Retain(object_);
}

ObjectHandle::~ObjectHandle() {
  // Handles that outlive the host find their object gone already.
  if (object_ == nullptr || Host::Current() == nullptr) return;
  Host::Current()->internals().objects.Release(object_);
}

const ClassInfo &ObjectHandle::Class() const { return ObjectStore::ClassOf(object_); }

}  // namespace quillbar::host
