// SPDX-License-Identifier: MIT
// A library without an entry point. Everything is hidden, so it exports nothing.
[[maybe_unused]] static int nothing = 0;
