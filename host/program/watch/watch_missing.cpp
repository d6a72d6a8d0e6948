// SPDX-License-Identifier: MIT
// What stands in for watching on Windows, whose compiler here has no threads of C++ to serve the page with.
#include <iostream>

#include "host/program/watch/watch.h"

namespace quillbar::program {

int Watch(const CommandLine &) {
  std::cerr << "quillbar: scripts can't be watched on Windows; run them again with quillbar run\n";
  return 1;
}

}  // namespace quillbar::program
