// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/language/syntax/names.h"
#include "host/language/syntax/source_text.h"
#include "host/runtime/class_model.h"

namespace quillbar::language {

/// A variable, parameter or constant, and the slot that holds it.
struct Symbol {
  enum class Kind : std::uint8_t {
    kLocal,
    kGlobal,
    kReference,  // a ByRef parameter
    kConstant,
    kBroken,  // its declaration had an error; what uses it isn't reported again
  };
  Kind kind = Kind::kBroken;
  std::string name;
  Span span;
  host::Type type;
  std::size_t slot = 0;
  host::Value constant;
  host::Access access = host::Access::kPublic;  // of a constant of a class
  bool isDeclared = true;                       // false: a global variable whose declaration comes later
};

/// The names of one block.
class Scope {
 public:
  /// The symbol of this name; null when the block has none.
  Symbol *Find(std::string_view name) {
    const auto found = symbols_.find(name);
    return found == symbols_.end() ? nullptr : &found->second;
  }

  const Symbol *Find(std::string_view name) const { return const_cast<Scope *>(this)->Find(name); }

  /// Adds a symbol; null when the name is taken.
  Symbol *Add(Symbol symbol) {
    std::string name = symbol.name;
    const auto [place, isNew] = symbols_.emplace(std::move(name), std::move(symbol));
    return isNew ? &place->second : nullptr;
  }

  /// Appends the names of the block to `names`, for suggestions.
  void AppendNames(std::vector<std::string_view> &names) const {
    for (const auto &[name, symbol] : symbols_) names.push_back(name);
  }

 private:
  std::map<std::string, Symbol, NameLess> symbols_;
};

}  // namespace quillbar::language
