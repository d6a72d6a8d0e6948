// SPDX-License-Identifier: MIT
/* libharu includes it beside zlib.h, which says everything here. */
