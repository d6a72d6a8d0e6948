// SPDX-License-Identifier: MIT
// The input is what a connection to the server of the watch page sends. "TOKEN" and "PORT" in it are replaced by those of
// the page's address, which nobody could guess.
#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "fuzz/demand.h"
#include "host/program/watch/page_server.h"

namespace {

using quillbar::fuzz::Demand;
using quillbar::program::PageServer;
using quillbar::program::WatchReport;

constexpr std::string_view kDocument = "%PDF-1.3 fuzzed";

/// A server with one document, whose address is read once.
struct Page {
  Page() {
    const std::string address = server.Address();  // http://127.0.0.1:port/token/
    const std::size_t colon = address.rfind(':'), slash = address.find('/', colon);
    port = address.substr(colon + 1, slash - colon - 1);
    token = address.substr(slash + 1, address.size() - slash - 2);
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / ("quillbar-fuzz-" + token) / "fuzz";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "0.pdf") << kDocument;
    report.documents.push_back({"fuzzed.pdf", folder / "0.pdf"});
    server.Show(report);
  }

  ~Page() {
    std::error_code ignored;
    std::filesystem::remove_all(report.documents.front().copy.parent_path().parent_path(), ignored);
  }
  Page(const Page &) = delete;
  Page &operator=(const Page &) = delete;

  PageServer server{0, "fuzzed"};
  std::string port, token;
  WatchReport report;
};

std::string Replaced(std::string text, std::string_view old, const std::string &with) {
  for (std::size_t at = text.find(old); at != std::string::npos; at = text.find(old, at + with.size())) {
    text.replace(at, old.size(), with);
  }
  return text;
}

/// What the server answers to these bytes, after which nothing more comes.
std::string Answer(Page &page, std::string_view request) {
  const int connection = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(std::stoi(page.port)));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  Demand(connect(connection, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0,
         "the server takes connections");
  while (!request.empty()) {
    // The server may have seen enough, and hang up.
    const ssize_t sent = send(connection, request.data(), request.size(), MSG_NOSIGNAL);
    if (sent <= 0) break;
    request.remove_prefix(static_cast<std::size_t>(sent));
  }
  std::string answer;
  int idle = 0;
  for (;;) {
    std::array<char, 4096> part;
    pollfd ready{connection, POLLIN, 0};
    constexpr int kPatience = 20;  // milliseconds
    if (poll(&ready, 1, kPatience) == 0) {
      // It may wait for news, or for more of the request. It answers nobody who has hung up before.
      page.server.Show(page.report);
      if (++idle == 2) shutdown(connection, SHUT_WR);
      continue;
    }
    const ssize_t count = recv(connection, part.data(), part.size(), 0);
    if (count <= 0) break;
    answer.append(part.data(), static_cast<std::size_t>(count));
  }
  close(connection);
  return answer;
}

bool IsSuccess(std::string_view answer) { return answer.starts_with("HTTP/1.1 2"); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static Page page;
  const std::string input(reinterpret_cast<const char *>(data), size);
  const std::string request = Replaced(Replaced(input, "TOKEN", page.token), "PORT", page.port);
  const std::string answer = Answer(page, request);
  // The fuzzer sees comparisons, and may put what it saw into an input itself.
  if (request.find(page.token) == std::string::npos) {
    Demand(answer.find("HTTP/1.1 2") == std::string::npos, "nothing is had without the token");
    Demand(answer.find(page.token) == std::string::npos, "the token isn't told");
  }
  if (request.find(page.port) == std::string::npos) {
    Demand(!IsSuccess(answer), "nothing is had under another name than this machine's");
  }
  // One out of a few, because it takes as long as the input.
  static unsigned count = 0;
  if (++count % 16 == 0) {
    const std::string document =
        Answer(page, "GET /" + page.token + "/documents/fuzz/0 HTTP/1.1\r\nHost: localhost:" + page.port +
                         "\r\nConnection: close\r\n\r\n");
    Demand(IsSuccess(document) && document.ends_with(kDocument), "the next request is answered");
  }
  return 0;
}
