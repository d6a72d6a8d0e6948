// SPDX-License-Identifier: MIT
// The library's enumerations are C's: its functions check the number and refuse what they do not know.
// Scripts hand in any number, so the undefined-behaviour sanitizer must let one without a name pass through a
// function marked with this.
#pragma once

#ifdef __GNUC__
#define QUILLBAR_ANY_ENUMERATION_NUMBER __attribute__((no_sanitize("enum")))
#else
#define QUILLBAR_ANY_ENUMERATION_NUMBER
#endif
