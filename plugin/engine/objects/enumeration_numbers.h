// SPDX-License-Identifier: MIT
/// QUILLBAR_ANY_ENUMERATION_NUMBER marks a function through which enumerations with numbers that have no name pass.
/// Scripts hand in any number and the library's functions, which are C, refuse what they don't know, so the
/// undefined-behaviour sanitizer must let such numbers through.
#pragma once

#ifdef __GNUC__
#define QUILLBAR_ANY_ENUMERATION_NUMBER __attribute__((no_sanitize("enum")))
#else
#define QUILLBAR_ANY_ENUMERATION_NUMBER
#endif
