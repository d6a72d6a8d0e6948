// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "interface/fixed_string.h"

/// The values that cross between a plugin and its host, as C types.
///
/// Each script type has one C type, the same on every platform except that `Integer` is as wide as a
/// pointer. Numbers travel unpromoted: a `Single` parameter is a C `float`, never a `double`.
namespace quillbar {

using Integer = std::intptr_t;
using Boolean = std::int8_t;  // 0 or 1; also the success flag of the services
using Single = float;
using Double = double;

/// A colour as &hAARRGGBB. A type of its own, so that it is never taken for a `UInt32`.
enum class Color : std::uint32_t {};

/// What the host owns and a plugin sees only by address. Incomplete on purpose.
struct HostString;
struct HostArray;
struct HostClass;
struct HostObject {};

using String = HostString *;   // null is the nil string; the host passes an empty string as nil
using Array = HostArray *;     // read only through services
using ClassRef = HostClass *;  // a registered class, as `pluginObjectType` returns it
using Object = HostObject *;   // an instance; null is Nil

/// An instance of the class with this script name, so that a `Font` is never taken for a `Page`.
/// Only pointers to it exist; the object behind them is the host's.
template <FixedString ScriptName>
struct Instance : HostObject {
  static constexpr auto kScriptName = ScriptName;
};

/// An array of script values with this C element type, for the same reason.
template <class Element>
struct ArrayOf;

/// The script name of a C++ enumeration that mirrors a registered one, for example
/// "Page.LineCapTypeEnum". Specialise it beside the enumeration.
template <class Enumeration>
inline constexpr FixedString kEnumerationName{""};

/// Text encodings, as the host numbers them.
enum class TextEncoding : std::uint32_t {
  kMacRoman = 0,
  kUtf16 = 0x100,  // in the machine's byte order, ended by two nul bytes
  kAscii = 0x600,
  kRawBytes = 0xFFFF,
  kUtf8 = 0x08000100,
};

}  // namespace quillbar
