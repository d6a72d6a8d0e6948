// SPDX-License-Identifier: MIT
#pragma once

#include "binding/class_reference.h"
#include "plugin/script/document_data.h"
#include "plugin/script/memory_shortage.h"

/// What scripts hold of a library object: an instance that keeps its owner, the document or the page that made it,
/// alive with a lock. The library object itself belongs to its document.
namespace quillbar {

/// Locks an object and returns it.
template <class Class>
Class *Retain(Class *object) {
  CallHost<service::LockObject>(object);
  return object;
}

/// Drops the lock on an object, if there is one, and forgets it.
template <class Class>
void Release(Class *&object) {
  if (object == nullptr) return;
  CallHost<service::UnlockObject>(object);
  object = nullptr;
}

/// The life of a class whose private data has its owner in the field `Owner`.
template <auto Owner>
struct Wrapper;
template <class Data, class OwnerClass, OwnerClass *Data::*Owner>
struct Wrapper<Owner> {
  /// Class constructor: no owner.
  static void Initialize(Object instance) { ClassData<Data>(instance)->*Owner = nullptr; }

  /// Class destructor: lets the owner go.
  static void Finalize(Object instance) { Release(ClassData<Data>(instance)->*Owner); }

  /// "Constructor()": an instance that nobody owns.
  template <class Class>
  static void Constructor(Class *instance) {
    Initialize(instance);
  }
};

/// A new instance of a class that documents make: its `libraryDocument` refers to the document's field and its
/// `document` is kept alive. Null when the host can't make one.
template <FixedString QualifiedName, class Class, class Data>
Class *NewOwnedByDocument(PDFDocument *document) {
  auto *instance = static_cast<Class *>(CreateInstance<QualifiedName>());
  if (instance == nullptr) return nullptr;
  Data *data = ClassData<Data>(instance);
  data->libraryDocument = &DataOf(document).libraryDocument;
  data->document = Retain(document);
  return instance;
}

}  // namespace quillbar
