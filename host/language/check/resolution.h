// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "host/language/check/signature.h"
#include "host/language/tree/code.h"

namespace quillbar::language {

/// What a name, or a name after a dot, can refer to.
struct Resolution {
  enum class Kind : std::uint8_t {
    kValue,
    kType,       // Page, Page.PageSizeEnum, Integer
    kModule,     // QuillbarPDFWriter
    kNamespace,  // System, Encodings: modules of the language's library
    kCallables,  // methods or functions of one name; a use without arguments calls one
  };
  Kind kind = Kind::kValue;
  Span span;
  std::string name;
  ExpressionPointer value;  // kValue; of kCallables the receiver, if any
  host::Type type;          // kType
  const host::ModuleInfo *module = nullptr;
  std::vector<Callable> callables;
  bool isSuper = false;  // named through Super: what overrides the method isn't called
};

}  // namespace quillbar::language
