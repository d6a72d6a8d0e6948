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

/// A number with four decimal places, as a whole number of ten-thousandths.
enum class Currency : std::int64_t {};

/// What the host owns and a plugin sees only by address. Incomplete on purpose.
struct HostString;
struct HostArray;
struct HostClass;
struct HostVariant;
struct HostObject {};

using String = HostString *;    // null is the nil string; the host passes an empty string as nil
using Array = HostArray *;      // read only through services
using ClassRef = HostClass *;   // a registered class, as `pluginObjectType` returns it
using Object = HostObject *;    // an instance; null is Nil
using Variant = HostVariant *;  // a value of any type; only for the host's own classes, as no service reads it

/// An instance of the class with this script name, so that a `Font` is never taken for a `Page`.
/// Only pointers to it exist; the object itself is the host's.
template <FixedString ScriptName>
struct Instance : HostObject {
  static constexpr auto kScriptName = ScriptName;
};

/// An array of script values with this C element type, for the same reason.
template <class Element>
struct ArrayOf;

/// The script name of a C++ enumeration that mirrors a registered one, for example "Page.LineCapTypeEnum". Specialise
/// it beside the enumeration.
template <class Enumeration>
inline constexpr FixedString kEnumerationName{""};

/// Text encodings, as the host numbers them.
enum class TextEncoding : std::uint32_t {
  kMacRoman = 0,
  kUtf16 = 0x100,  // in the machine's byte order, ended by two nul bytes
  kIso8859_1 = 0x201,
  kIso8859_2 = 0x202,
  kIso8859_3 = 0x203,
  kIso8859_4 = 0x204,
  kIso8859_5 = 0x205,
  kIso8859_6 = 0x206,
  kIso8859_7 = 0x207,
  kIso8859_8 = 0x208,
  kIso8859_9 = 0x209,
  kIso8859_10 = 0x20A,
  kIso8859_11 = 0x20B,
  kIso8859_13 = 0x20D,
  kIso8859_14 = 0x20E,
  kIso8859_15 = 0x20F,
  kWindows932 = 0x420,  // Japanese, Shift-JIS
  kWindows936 = 0x421,  // simplified Chinese, GBK
  kWindows949 = 0x422,  // Korean, UHC
  kWindows950 = 0x423,  // traditional Chinese, Big5
  kWindows1252 = 0x500,
  kWindows1250 = 0x501,
  kWindows1251 = 0x502,
  kWindows1253 = 0x503,
  kWindows1254 = 0x504,
  kWindows1255 = 0x505,
  kWindows1256 = 0x506,
  kWindows1257 = 0x507,
  kWindows1258 = 0x508,
  kAscii = 0x600,
  kKoi8R = 0xA02,
  kRawBytes = 0xFFFF,
  kUtf8 = 0x08000100,
};

}  // namespace quillbar
