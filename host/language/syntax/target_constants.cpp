// SPDX-License-Identifier: MIT
#include "host/language/syntax/target_constants.h"

#include <bit>

namespace quillbar::language {
namespace {

#ifdef _WIN32
constexpr bool kIsWindows = true;
#else
constexpr bool kIsWindows = false;
#endif
#ifdef __APPLE__
constexpr bool kIsMac = true;
#else
constexpr bool kIsMac = false;
#endif
#if defined(__x86_64__) || defined(__i386__) || defined(_M_X64) || defined(_M_IX86)
constexpr bool kIsX86 = true;
#else
constexpr bool kIsX86 = false;
#endif
constexpr bool kIs64Bit = sizeof(void *) == 8;
constexpr bool kIsLittleEndian = std::endian::native == std::endian::little;

/// The release of the language whose newer names (`Var`, `FromString`, `LastIndex`) the host has.
constexpr double kRelease = 2019.02;
constexpr std::string_view kReleaseName = "2019r2";

constexpr TargetConstant kConstants[] = {
    {"DebugBuild", false},
    {"RBVersion", kRelease},
    {"RBVersionString", kReleaseName},
    {"Target32Bit", !kIs64Bit},
    {"Target64Bit", kIs64Bit},
    {"TargetAndroid", false},
    {"TargetARM", !kIsX86},
    {"TargetBigEndian", !kIsLittleEndian},
    {"TargetCarbon", false},
    {"TargetCocoa", false},
    {"TargetConsole", true},
    {"TargetDesktop", false},
    {"TargetHasGUI", false},
    {"TargetiOS", false},
    {"TargetLinux", !kIsWindows && !kIsMac},
    {"TargetLittleEndian", kIsLittleEndian},
    {"TargetMachO", kIsMac},
    {"TargetMacOS", kIsMac},
    {"TargetMobile", false},
    {"TargetWeb", false},
    {"TargetWin32", kIsWindows},
    {"TargetWindows", kIsWindows},
    {"TargetX86", kIsX86},
    {"TargetXojoCloud", false},
    {"XojoVersion", kRelease},
    {"XojoVersionString", kReleaseName},
};

}  // namespace

std::span<const TargetConstant> TargetConstants() { return kConstants; }

}  // namespace quillbar::language
