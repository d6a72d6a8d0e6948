// SPDX-License-Identifier: MIT
#include "host/program/platform/process.h"

// windows.h must come before the headers that need its types.
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
//
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <streambuf>
#include <string_view>

#include "host/runtime/interruption.h"
#include "host/runtime/platform/wide_text_windows.h"

namespace quillbar::program::platform {
namespace {

/// The number of bytes at the end of `utf8` that start a character without finishing it.
std::size_t UnfinishedBytes(std::string_view utf8) {
  constexpr std::size_t kLongestStart = 3;
  for (std::size_t count = 1; count <= std::min(kLongestStart, utf8.size()); ++count) {
    const auto byte = static_cast<unsigned char>(utf8[utf8.size() - count]);
    if ((byte & 0xC0) == 0x80) continue;
    const std::size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
    return length > count ? count : 0;
  }
  return 0;
}

/// A stream without a place for bytes of its own: all of them go through xsputn.
class DirectBuffer : public std::streambuf {
 protected:
  int_type overflow(int_type character) override {
    if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(character);
    const char byte = traits_type::to_char_type(character);
    return xsputn(&byte, 1) == 1 ? character : traits_type::eof();
  }
};

/// A stream onto the screen, line by line. The console's own reading of bytes depends on its code page and can't put a
/// character together that arrives in parts; UTF-16 is shown by every console.
class ScreenBuffer : public DirectBuffer {
 public:
  explicit ScreenBuffer(HANDLE console) : console_(console) {}

 protected:
  std::streamsize xsputn(const char *bytes, std::streamsize count) override {
    const std::string_view added(bytes, static_cast<std::size_t>(count));
    pending_ += added;
    if (added.find('\n') != std::string_view::npos && sync() != 0) return 0;
    return count;
  }

  int sync() override {
    const std::size_t whole = pending_.size() - UnfinishedBytes(pending_);
    const std::wstring text = host::platform::WideFromUtf8(std::string_view(pending_).substr(0, whole));
    pending_.erase(0, whole);
    // Older consoles refuse more than 64 KiB at once.
    constexpr std::size_t kMostUnits = 8192;
    for (std::size_t done = 0; done < text.size();) {
      DWORD written = 0;
      const auto count = static_cast<DWORD>(std::min(kMostUnits, text.size() - done));
      if (WriteConsoleW(console_, text.data() + done, count, &written, nullptr) == FALSE || written == 0) return -1;
      done += written;
    }
    return 0;
  }

 private:
  HANDLE console_;
  std::string pending_;
};

/// Redirects a standard stream of C++ to the screen, if that is where the system's stream goes.
class Screen {
 public:
  Screen(std::ostream &stream, DWORD standardHandle) : stream_(stream), buffer_(GetStdHandle(standardHandle)) {
    DWORD mode = 0;
    if (GetConsoleMode(GetStdHandle(standardHandle), &mode) != FALSE) previous_ = stream.rdbuf(&buffer_);
  }
  Screen(const Screen &) = delete;
  Screen &operator=(const Screen &) = delete;
  ~Screen() {
    if (previous_ == nullptr) return;
    stream_.flush();
    stream_.rdbuf(previous_);
  }

 private:
  std::ostream &stream_;
  ScreenBuffer buffer_;
  std::streambuf *previous_ = nullptr;
};

/// A stream into a file or a pipe that passes every line on when it ends; the C library of Windows knows no such buffer.
class LineBuffer : public DirectBuffer {
 public:
  explicit LineBuffer(std::FILE *file) : file_(file) {}

 protected:
  std::streamsize xsputn(const char *bytes, std::streamsize count) override {
    const std::string_view added(bytes, static_cast<std::size_t>(count));
    if (std::fwrite(added.data(), 1, added.size(), file_) != added.size()) return 0;
    if (added.find('\n') != std::string_view::npos && sync() != 0) return 0;
    return count;
  }

  int sync() override { return std::fflush(file_); }

 private:
  std::FILE *file_;
};

BOOL WINAPI Interrupt(DWORD event) {
  const bool isKey = event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
  return host::Interruption::Request(isKey ? SIGINT : SIGTERM) ? TRUE : FALSE;
}

HANDLE ErrorScreen() {
  const HANDLE handle = GetStdHandle(STD_ERROR_HANDLE);
  DWORD mode = 0;
  return GetConsoleMode(handle, &mode) != FALSE ? handle : nullptr;
}

}  // namespace

std::vector<std::string> ProgramArguments(int, char **) {
  // What `main` gets has been converted to the code page, with losses.
  int count = 0;
  wchar_t **const wide = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  if (wide == nullptr) return arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(host::platform::Utf8FromWide(wide[i]));
  LocalFree(wide);
  return arguments;
}

struct Utf8Output::Screens {
  Screens() : formerBuffer(std::cout.rdbuf(&lines)) {}
  ~Screens() { std::cout.rdbuf(formerBuffer); }
  Screens(const Screens &) = delete;
  Screens &operator=(const Screens &) = delete;

  LineBuffer lines{stdout};
  std::streambuf *formerBuffer;
  Screen output{std::cout, STD_OUTPUT_HANDLE};
  Screen errors{std::cerr, STD_ERROR_HANDLE};
};

Utf8Output::Utf8Output() : screens_(std::make_unique<Screens>()) {
  // Without this each line feed would become two characters.
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
}

Utf8Output::~Utf8Output() = default;

bool ErrorsAreOnATerminal() {
  const HANDLE screen = ErrorScreen();
  DWORD mode = 0;
  constexpr DWORD kControlSequences = 4;  // ENABLE_VIRTUAL_TERMINAL_PROCESSING, which older headers lack
  return screen != nullptr && GetConsoleMode(screen, &mode) != FALSE &&
         SetConsoleMode(screen, mode | kControlSequences) != FALSE;
}

bool WantsColors() {
  const char *refusal = std::getenv("NO_COLOR");
  return refusal == nullptr || *refusal == '\0';
}

int TerminalColumns() {
  constexpr int kUsual = 80;
  CONSOLE_SCREEN_BUFFER_INFO info{};
  return GetConsoleScreenBufferInfo(ErrorScreen(), &info) != FALSE ? info.dwSize.X : kUsual;
}

std::string ReadStandardInput() {
  // Without this a line end would lose its carriage return, and Ctrl-Z end the text.
  _setmode(_fileno(stdin), _O_BINARY);
  return {std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
}

void TurnSignalsIntoInterruptions() { SetConsoleCtrlHandler(Interrupt, TRUE); }

}  // namespace quillbar::program::platform
