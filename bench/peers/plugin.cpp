// SPDX-License-Identifier: MIT
// The plugin, its registered functions called by address.
#include "bench/peers/peer_program.h"
#include "bench/plugin_writer.h"

int main(int argumentCount, char **arguments) {
  using quillbar::bench::PluginWriter;
  return quillbar::bench::WriteAsPeer<quillbar::bench::NamedFirst<PluginWriter>>(argumentCount, arguments);
}
