// SPDX-License-Identifier: MIT
#pragma once

/// Marks the one function that a plugin's library exports. C linkage, so that hosts find it by its name.
#ifdef _WIN32
#define QUILLBAR_EXPORT extern "C" __declspec(dllexport)
#else
#define QUILLBAR_EXPORT extern "C" __attribute__((visibility("default")))
#endif
