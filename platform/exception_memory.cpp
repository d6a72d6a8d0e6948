// SPDX-License-Identifier: MIT
// Gives back, when a plugin for Linux is unloaded, what GCC's C++ library inside it took when it was loaded: 72 kB in
// which exceptions are made when memory is short. The library leaves them to the end of the process.
namespace __gnu_cxx {

void __freeres();

}  // namespace __gnu_cxx

namespace {

// The priority at which destructors run last.
[[gnu::destructor(101)]] void GiveBackExceptionMemory() { __gnu_cxx::__freeres(); }

}  // namespace
