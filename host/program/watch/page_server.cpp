// SPDX-License-Identifier: MIT
#include "host/program/watch/page_server.h"

#include <fmt/format.h>
#include <httplib.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <condition_variable>
#include <fstream>
#include <iterator>
#include <mutex>
#include <random>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <utility>

#include "host/program/watch/page.h"

namespace quillbar::program {
namespace {

constexpr const char *kAddress = "127.0.0.1";
constexpr std::size_t kThreads = 16;  // an open page occupies one
/// A page's question for news is answered after this long at the latest, and asked again.
constexpr std::chrono::seconds kPatience{20};

/// 128 random bits as hexadecimal digits.
std::string RandomToken() {
  std::random_device device;  // the system's generator
  std::string token;
  for (int i = 0; i < 4; ++i) token += fmt::format("{:08x}", device());
  return token;
}

/// A name in a header (RFC 8187).
std::string PercentEncoded(std::string_view name) {
  std::string encoded;
  for (const char character : name) {
    const bool isPlain = (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
                         (character >= 'a' && character <= 'z') || character == '-' || character == '.' ||
                         character == '_';
    encoded += isPlain ? std::string(1, character) : fmt::format("%{:02X}", static_cast<unsigned char>(character));
  }
  return encoded;
}

std::string ReadWhole(const std::filesystem::path &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string Replaced(std::string text, std::string_view old, std::string_view with) {
  for (std::size_t at = text.find(old); at != std::string::npos; at = text.find(old, at + with.size())) {
    text.replace(at, old.size(), with);
  }
  return text;
}

}  // namespace

class PageServer::Server {
 public:
  Server(int port, std::string script) : script_(std::move(script)) {
    server_.new_task_queue = [] { return new httplib::ThreadPool(kThreads); };
    server_.set_tcp_nodelay(true);
    server_.Get("/.*",
                [this](const httplib::Request &request, httplib::Response &response) { Answer(request, response); });
    port_ = port != 0 ? (server_.bind_to_port(kAddress, port) ? port : -1) : server_.bind_to_any_port(kAddress);
    if (port_ <= 0) {
      throw std::runtime_error(fmt::format("the page can't be served on port {}; another program may have it", port));
    }
    thread_ = std::thread([this] { server_.listen_after_bind(); });
  }

  ~Server() {
    {
      const std::lock_guard lock(mutex_);
      isEnding_ = true;
    }
    news_.notify_all();
    // Stopping works once the server runs.
    while (!server_.is_running()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    server_.stop();
    thread_.join();
  }

  std::string Address() const { return fmt::format("http://{}:{}/{}/", kAddress, port_, token_); }

  void Show(WatchReport report) {
    {
      const std::lock_guard lock(mutex_);
      report_ = std::move(report);
      ++revision_;
    }
    news_.notify_all();
  }

 private:
  void Answer(const httplib::Request &request, httplib::Response &response) {
    response.set_header("Cache-Control", "no-store");
    response.set_header("Referrer-Policy", "no-referrer");
    response.set_header("X-Content-Type-Options", "nosniff");
    response.set_header("Cross-Origin-Resource-Policy", "same-origin");
    const std::string host = request.get_header_value("Host");
    const std::string start = fmt::format("/{}/", token_);
    response.status = 404;
    if (host != fmt::format("{}:{}", kAddress, port_) && host != fmt::format("localhost:{}", port_)) {
      response.status = 403;
    } else if (request.path == start) {
      AnswerPage(response);
    } else if (request.path == start + "state") {
      AnswerState(request, response);
    } else if (request.path.starts_with(start + "documents/")) {
      AnswerDocument(request.path.substr(start.size()), response);
    }
  }

  void AnswerPage(httplib::Response &response) const {
    const std::string nonce = RandomToken();
    response.status = 200;
    response.set_header(
        "Content-Security-Policy",
        fmt::format("default-src 'none'; script-src 'nonce-{0}'; style-src 'nonce-{0}'; connect-src 'self'; "
                    "frame-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'",
                    nonce));
    response.set_content(Replaced(kWatchPage, "NONCE", nonce), "text/html; charset=utf-8");
  }

  /// The state, once it is another one than the page has.
  void AnswerState(const httplib::Request &request, httplib::Response &response) {
    const std::string known = request.get_param_value("after");
    std::uint64_t after = 0;
    std::from_chars(known.data(), known.data() + known.size(), after);
    std::unique_lock lock(mutex_);
    news_.wait_for(lock, kPatience, [&] { return revision_ != after || isEnding_; });
    std::vector<std::string> addresses;
    for (std::size_t i = 0; i < report_.documents.size(); ++i) addresses.push_back(AddressOf(i));
    response.status = 200;
    response.set_content(PageState(report_, script_, revision_, addresses), "application/json");
  }

  /// The address of a document, below the token: another one for each state of the file.
  std::string AddressOf(std::size_t index) const {
    return fmt::format("documents/{}/{}", report_.documents[index].copy.parent_path().filename().string(), index);
  }

  void AnswerDocument(std::string_view address, httplib::Response &response) {
    WatchedDocument document;
    {
      const std::lock_guard lock(mutex_);
      for (std::size_t i = 0; i < report_.documents.size(); ++i) {
        if (AddressOf(i) == address) document = report_.documents[i];
      }
    }
    if (document.copy.empty()) return;
    response.status = 200;
    response.set_header("Content-Security-Policy", "frame-ancestors 'self'");
    response.set_header("Content-Disposition",
                        fmt::format("inline; filename*=UTF-8''{}", PercentEncoded(document.name)));
    response.set_content(ReadWhole(document.copy), "application/pdf");
  }

  const std::string token_ = RandomToken();
  const std::string script_;
  httplib::Server server_;
  int port_ = 0;
  std::mutex mutex_;
  std::condition_variable news_;
  bool isEnding_ = false;
  std::uint64_t revision_ = 1;
  WatchReport report_;
  std::thread thread_;
};

PageServer::PageServer(int port, std::string script) : server_(std::make_unique<Server>(port, std::move(script))) {}
PageServer::~PageServer() = default;

std::string PageServer::Address() const { return server_->Address(); }
void PageServer::Show(WatchReport report) { server_->Show(std::move(report)); }

}  // namespace quillbar::program
