// SPDX-License-Identifier: MIT
// libharu 2.3.0 as its authors wrote it.
#include "bench/library_writer.h"
#include "bench/peers/peer_program.h"

int main(int argumentCount, char **arguments) {
  using quillbar::bench::LibraryWriter;
  return quillbar::bench::WriteAsPeer<quillbar::bench::NamedFirst<LibraryWriter>>(argumentCount, arguments);
}
