// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "host/program/watch/page_state.h"

namespace quillbar::program {

/// Serves the page of a watched script, on this machine alone, in threads of its own: the address begins with a token that
/// nobody can guess, and there is nothing but the page, its state and the documents. Requests with another machine's name
/// in `Host`, by which a page from elsewhere could read it, are refused.
class PageServer {
 public:
  /// Begins to serve on a port of 127.0.0.1; 0 is any free one. `script` is shown as the page's title. Throws
  /// std::runtime_error when the port can't be had.
  PageServer(int port, std::string script);
  ~PageServer();
  PageServer(const PageServer &) = delete;
  PageServer &operator=(const PageServer &) = delete;

  /// The address of the page.
  std::string Address() const;

  /// Replaces what the page shows; open pages get it at once.
  void Show(WatchReport report);

 private:
  class Server;
  std::unique_ptr<Server> server_;
};

}  // namespace quillbar::program
