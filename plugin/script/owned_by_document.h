// SPDX-License-Identifier: MIT
#pragma once

#include "binding/class_reference.h"
#include "plugin/script/document_data.h"

/// What all wrappers share: they are made by a factory, hold the address of their document's
/// library-document field, and keep their owner alive with a lock that their destructor drops.
namespace quillbar {

/// Locks the owner for a new wrapper and returns it.
template <class Owner>
Owner *Keep(Owner *owner) {
  CallHost<service::LockObject>(owner);
  return owner;
}

/// Drops the lock on an owner; nothing for an object that never had one.
template <class Owner>
void Let(Owner *&owner) {
  if (owner == nullptr) return;
  CallHost<service::UnlockObject>(owner);
  owner = nullptr;
}

/// A new instance of a class that documents make: its `libraryDocument` refers to the document's field
/// and its `document` is kept alive. Null when the host can't make one.
template <FixedString QualifiedName, class Class, class Data>
Class *NewOwnedByDocument(PDFDocument *document) {
  auto *instance = static_cast<Class *>(CreateInstance<QualifiedName>());
  if (instance == nullptr) return nullptr;
  Data *data = ClassData<Data>(instance);
  data->libraryDocument = &DataOf(document).libraryDocument;
  data->document = Keep(document);
  return instance;
}

}  // namespace quillbar
