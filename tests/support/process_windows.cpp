// SPDX-License-Identifier: MIT
// Windows programs are started as Windows starts them. Under Wine the judges are programs of the Unix system around
// it: Wine starts such a program, but gives no handle to wait for and no access to its standard streams. So a shell
// runs it, which leaves its output and its status in files.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <stdexcept>

#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/utf8_path.h"

namespace quillbar::test {
namespace {

namespace fs = std::filesystem;
using std::chrono::steady_clock;

constexpr int kKilled = 128 + 9;
constexpr int kCannotBeStarted = 127;

class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  ~Handle() { CloseHandle(handle_); }
  Handle(const Handle &) = delete;
  Handle &operator=(const Handle &) = delete;

  HANDLE get() const { return handle_; }

 private:
  HANDLE handle_;
};

// The program's standard streams, which are files: unlike pipes they need no reader at the other end.
class StreamFiles {
 public:
  explicit StreamFiles(const ProcessOptions &options) { WriteFile(input(), options.input); }

  fs::path input() const { return folder_ / "input"; }
  fs::path output() const { return folder_ / "output"; }
  fs::path errors() const { return folder_ / "errors"; }
  const TemporaryFolder &folder() const { return folder_; }

  ProcessResult Result(int exitStatus, const ProcessOptions &options) const {
    ProcessResult result{exitStatus, ReadFile(output()), ReadFile(errors())};
    if (exitStatus == kKilled) {
      result.errors += "\nkilled: took longer than " + std::to_string(options.timeoutSeconds) + " seconds";
    }
    return result;
  }

 private:
  TemporaryFolder folder_;
};

// A program's file, found along PATH; empty when it isn't a Windows program or doesn't exist.
fs::path WindowsProgram(const fs::path &name) {
  wchar_t found[MAX_PATH];
  const DWORD length = SearchPathW(nullptr, name.c_str(), L".exe", MAX_PATH, found, nullptr);
  if (length == 0 || length >= MAX_PATH) return {};
  const fs::path file(found);
  DWORD ignored = 0;
  return GetBinaryTypeW(found, &ignored) != 0 ? file : fs::path();
}

// A word quoted so that the C library of the program that is started reads it back unchanged from the command line: a
// quotation mark needs a backslash, and backslashes before one are doubled.
std::wstring Quoted(const std::wstring &word) {
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t character : word) {
    if (character == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = character == L'\\' ? backslashes + 1 : 0;
    quoted += character;
  }
  return quoted.append(backslashes, L'\\') + L'"';
}

Handle OpenInherited(const fs::path &file, DWORD access, DWORD disposition) {
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  const HANDLE handle = CreateFileW(file.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, disposition,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) throw std::runtime_error("cannot open " + Utf8(file));
  return Handle(handle);
}

// Null when the program cannot be started.
std::unique_ptr<Handle> Start(const fs::path &program, std::wstring commandLine, const fs::path &folder,
                              STARTUPINFOW &startup) {
  PROCESS_INFORMATION started{};
  if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr,
                     folder.empty() ? nullptr : folder.c_str(), &startup, &started) == 0) {
    return nullptr;
  }
  if (started.hThread != nullptr) CloseHandle(started.hThread);
  return std::make_unique<Handle>(started.hProcess);
}

ProcessResult RunWindowsProgram(const fs::path &program, const Command &command, const ProcessOptions &options) {
  const StreamFiles files(options);
  std::wstring commandLine;
  for (const ProcessArgument &argument : command) {
    if (!commandLine.empty()) commandLine += L' ';
    commandLine += Quoted(PathOf(argument.Text()).wstring());
  }
  int exitStatus = kKilled;
  {
    const Handle input = OpenInherited(files.input(), GENERIC_READ, OPEN_EXISTING);
    const Handle output = OpenInherited(files.output(), FILE_APPEND_DATA, CREATE_NEW);
    const Handle errors = OpenInherited(files.errors(), FILE_APPEND_DATA, CREATE_NEW);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input.get();
    startup.hStdOutput = output.get();
    startup.hStdError = errors.get();
    const std::unique_ptr<Handle> process = Start(program, commandLine, options.workingDirectory, startup);
    if (process == nullptr) throw std::runtime_error(Utf8(program) + " cannot be started");
    if (WaitForSingleObject(process->get(), static_cast<DWORD>(options.timeoutSeconds) * 1000) != WAIT_OBJECT_0) {
      TerminateProcess(process->get(), kKilled);
      WaitForSingleObject(process->get(), INFINITE);
    }
    DWORD status = 0;
    GetExitCodeProcess(process->get(), &status);
    exitStatus = static_cast<int>(status);
  }
  return files.Result(exitStatus, options);
}

// Wine's own function that converts a path into one of the system around it; null on Windows itself.
using UnixPathFunction = char *(__cdecl *)(const wchar_t *);
UnixPathFunction UnixPathService() {
  return reinterpret_cast<UnixPathFunction>(
      reinterpret_cast<void *>(GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name")));
}

std::string UnixPath(const fs::path &path) {
  char *text = UnixPathService()(fs::absolute(path).c_str());
  if (text == nullptr) throw std::runtime_error("no path of Unix leads to " + Utf8(path));
  std::string result = text;
  HeapFree(GetProcessHeap(), 0, text);
  return result;
}

std::string ShellWord(const std::string &text) {
  std::string word = "'";
  for (const char character : text) {
    if (character == '\'') {
      word += "'\\''";
    } else {
      word += character;
    }
  }
  return word + "'";
}

ProcessResult RunUnixProgram(const Command &command, const ProcessOptions &options) {
  const StreamFiles files(options);
  const fs::path script = files.folder() / "script";
  const fs::path status = files.folder() / "status";
  const fs::path writtenStatus = files.folder() / "status-written";
  const fs::path workingDirectory = options.workingDirectory.empty() ? fs::current_path() : options.workingDirectory;

  std::string text = "cd " + ShellWord(UnixPath(workingDirectory)) + " || exit\n";
  text += "timeout --signal=KILL " + std::to_string(options.timeoutSeconds);
  for (const ProcessArgument &argument : command) {
    const fs::path *path = argument.AsPath();
    text += ' ' + ShellWord(path != nullptr ? UnixPath(*path) : argument.Text());
  }
  text += " <" + ShellWord(UnixPath(files.input())) + " >" + ShellWord(UnixPath(files.output())) + " 2>" +
          ShellWord(UnixPath(files.errors())) + '\n';
  // Renamed into place, so that any reader of the file sees the whole number.
  text += "echo $? >" + ShellWord(UnixPath(status)) + "\nmv " + ShellWord(UnixPath(status)) + ' ' +
          ShellWord(UnixPath(writtenStatus)) + '\n';
  WriteFile(script, text);

  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  const std::wstring shell = L"\"/bin/sh\" " + Quoted(PathOf(UnixPath(script)).wstring());
  if (Start("/bin/sh", shell, {}, startup) == nullptr) throw std::runtime_error("no shell can be started");
  // The shell ends the program when its time is up; if it is the shell that hangs, this ends the wait.
  const auto deadline = steady_clock::now() + std::chrono::seconds(options.timeoutSeconds + 10);
  for (DWORD pause = 1; !fs::exists(writtenStatus); pause = std::min<DWORD>(pause * 2, 16)) {
    if (steady_clock::now() > deadline) throw std::runtime_error("the shell left no status");
    Sleep(pause);
  }
  ProcessResult result = files.Result(std::stoi(ReadFile(writtenStatus)), options);
  if (result.exitStatus == kCannotBeStarted) {
    throw std::runtime_error(command.front().Text() + " cannot be started: " + result.errors);
  }
  return result;
}

[[noreturn]] void LeaveTestWithout(const std::string &program) {
  const std::string reason = "needs the program " + program + ", which is not on this machine";
  // What GTEST_SKIP does; but this leaves the test by an exception that GoogleTest takes as already reported.
  GTEST_MESSAGE_(reason.c_str(), testing::TestPartResult::kSkip);
  throw testing::AssertionException(
      testing::TestPartResult(testing::TestPartResult::kSkip, __FILE__, __LINE__, reason.c_str()));
}

}  // namespace

ProcessResult RunProcess(const Command &command, const ProcessOptions &options) {
  const std::string name = command.front().Text();
  const fs::path program = WindowsProgram(PathOf(name));
  if (!program.empty()) return RunWindowsProgram(program, command, options);
  if (UnixPathService() == nullptr) LeaveTestWithout(name);
  return RunUnixProgram(command, options);
}

}  // namespace quillbar::test
