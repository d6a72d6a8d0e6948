// SPDX-License-Identifier: MIT
#include "host/program/watch/script_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <thread>

#include "host/runtime/platform/shared_library.h"

extern "C" char **environ;

namespace quillbar::program {
namespace {

[[noreturn]] void Fail(int error, const char *what) { throw std::system_error(error, std::generic_category(), what); }

/// A pipe whose ends no other process inherits; both are -1 when there is none to be had.
std::array<int, 2> OpenPipe() {
  std::array<int, 2> ends{-1, -1};
  if (pipe(ends.data()) != 0) return {-1, -1};
  for (const int end : ends) fcntl(end, F_SETFD, FD_CLOEXEC);
  return ends;
}

}  // namespace

ScriptProcess::ScriptProcess(const std::vector<std::string> &arguments) {
  const std::array<int, 2> output = OpenPipe();
  const std::array<int, 2> errors = OpenPipe();
  if (output[0] < 0 || errors[0] < 0) {
    const int error = errno;
    for (const int end : {output[0], output[1], errors[0], errors[1]}) {
      if (end >= 0) close(end);
    }
    Fail(error, "no pipe for the script");
  }
  const std::string program = host::platform::ProgramFile().string();
  std::vector<std::string> words{program};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char *> pointers;
  for (std::string &word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, errors[1], STDERR_FILENO);
  const int error = posix_spawn(&process_, program.c_str(), &actions, nullptr, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(output[1]);
  close(errors[1]);
  outputEnd_ = output[0];
  errorsEnd_ = errors[0];
  if (error != 0) {
    close(outputEnd_);
    close(errorsEnd_);
    Fail(error, "the script's process can't be started");
  }
}

ScriptProcess::~ScriptProcess() {
  if (process_ > 0) {
    kill(process_, SIGTERM);
    if (!Wait(std::chrono::seconds(1))) {
      kill(process_, SIGKILL);
      while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
      }
    }
  }
  if (outputEnd_ >= 0) close(outputEnd_);
  if (errorsEnd_ >= 0) close(errorsEnd_);
}

void ScriptProcess::Read(int &end, std::string &text) {
  std::array<char, 65536> buffer;
  const ssize_t count = read(end, buffer.data(), buffer.size());
  if (count < 0 && errno == EINTR) return;
  if (count <= 0) {
    close(end);
    end = -1;
    return;
  }
  const std::size_t room = kMostOutput - text.size();
  text.append(buffer.data(), std::min<std::size_t>(room, static_cast<std::size_t>(count)));
}

bool ScriptProcess::Wait(std::chrono::milliseconds time) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point end = Clock::now() + time;
  while (outputEnd_ >= 0 || errorsEnd_ >= 0) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
    std::array<pollfd, 2> watched{{{outputEnd_, POLLIN, 0}, {errorsEnd_, POLLIN, 0}}};
    const int ready = poll(watched.data(), watched.size(), static_cast<int>(std::max<std::int64_t>(0, left.count())));
    if (ready <= 0) return false;
    if (watched[0].revents != 0) Read(outputEnd_, output_);
    if (watched[1].revents != 0) Read(errorsEnd_, errors_);
  }
  int status = 0;
  pid_t ended = 0;
  while (process_ > 0 && (ended = waitpid(process_, &status, WNOHANG)) == 0) {
    if (Clock::now() >= end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  if (ended > 0) {
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    process_ = -1;
  }
  return process_ <= 0;
}

}  // namespace quillbar::program
