// SPDX-License-Identifier: MIT
#pragma once

#include "host/language/tree/code.h"

namespace quillbar::language {

/// The node that converts; `expression` itself when there is nothing to do. `host::ConversionCost` must have allowed
/// the conversion, at least as an explicit one.
ExpressionPointer MakeConversion(ExpressionPointer expression, host::Type to, Span span);

}  // namespace quillbar::language
