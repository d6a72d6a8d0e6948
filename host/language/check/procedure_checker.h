// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "host/language/check/context.h"

/// Checks Subs, Functions and methods: their heads first, so that calls can refer to them, then their bodies.
namespace quillbar::language {

/// Fills in a head as calls see it, and makes the procedure for its body. What is known of a parameter with an error
/// is kept.
void EnterHead(Checker &checker, const syntax::Procedure &written, host::MethodInfo &head);

/// Fails when one of `others` has the name and parameters of `head` already.
void RefuseSameSignature(Checker &checker, const host::MethodInfo &head,
                         const std::vector<const host::MethodInfo *> &others);

/// Checks the body of a procedure and fills in its code.
void CheckBody(Checker &checker, const syntax::Procedure &written, const host::MethodInfo &head);

}  // namespace quillbar::language
