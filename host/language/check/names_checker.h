// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "host/language/check/context.h"
#include "host/language/check/resolution.h"

/// Finds what names refer to.
namespace quillbar::language {

/// Resolves a name or member, whatever it refers to; any other expression is a value.
Resolution Resolve(Checker &checker, const syntax::Expression &expression);
Resolution ResolveName(Checker &checker, std::string_view name, Span span);

}  // namespace quillbar::language
