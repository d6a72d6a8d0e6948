// SPDX-License-Identifier: MIT
// How a plugin ends the process for an exception that nobody catches, in place of the handler of GCC's C++ library.
//
// That one prints the exception's type before it aborts, for which it reads the names of types: 50 kB of code that is
// linked into every plugin with the library, for a message on an application's error output.
#include <cstdlib>

namespace __gnu_cxx {

[[noreturn]] void __verbose_terminate_handler();

void __verbose_terminate_handler() { std::abort(); }

}  // namespace __gnu_cxx
