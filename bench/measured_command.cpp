// SPDX-License-Identifier: MIT
#include "bench/measured_command.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <string_view>

namespace quillbar::bench {
namespace {

constexpr std::string_view kCollected = "Collected : ";

std::string ReadAll(int file) {
  std::string text;
  std::array<char, 4096> part;
  for (ssize_t count = 0; (count = read(file, part.data(), part.size())) > 0;) {
    text.append(part.data(), static_cast<std::size_t>(count));
  }
  return text;
}

double Milliseconds(const timeval &time) {
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) * 1e-3;
}

[[noreturn]] void Execute(const std::vector<std::string> &command, int output, int errors) {
  std::vector<char *> words;
  for (const std::string &word : command) words.push_back(const_cast<char *>(word.c_str()));
  words.push_back(nullptr);
  dup2(output, STDOUT_FILENO);
  if (errors >= 0) dup2(errors, STDERR_FILENO);
  execvp(words.front(), words.data());
  _exit(127);
}

}  // namespace

CommandCost MeasureCommand(std::vector<std::string> command, bool countsInstructions) {
  const std::string name = command.front();
  if (countsInstructions) {
    command.insert(command.begin(), {"valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null"});
  }
  // What valgrind says is small enough for the pipe to hold until the program has ended.
  std::array<int, 2> output{};
  std::array<int, 2> errors{-1, -1};
  if (pipe(output.data()) != 0 || (countsInstructions && pipe(errors.data()) != 0)) {
    throw std::runtime_error("pipe failed");
  }
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("fork failed");
  if (child == 0) {
    close(output[0]);
    Execute(command, output[1], errors[1]);
  }
  close(output[1]);
  CommandCost cost;
  cost.output = ReadAll(output[0]);
  close(output[0]);
  if (countsInstructions) {
    close(errors[1]);
    const std::string report = ReadAll(errors[0]);
    close(errors[0]);
    const std::size_t found = report.find(kCollected);
    if (found != std::string::npos) cost.instructions = std::atoll(report.c_str() + found + kCollected.size());
  }
  int status = 0;
  rusage usage{};
  wait4(child, &status, 0, &usage);
  if (status != 0) throw std::runtime_error(fmt::format("{} failed", name));
  cost.elapsed = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
  cost.peakBytes = std::int64_t{usage.ru_maxrss} * 1024;
  cost.milliseconds = Milliseconds(usage.ru_utime) + Milliseconds(usage.ru_stime);
  return cost;
}

bool CanRun(const std::string &program) {
  if (program.find('/') != std::string::npos) return access(program.c_str(), X_OK) == 0;
  const char *path = std::getenv("PATH");
  for (std::string_view rest = path == nullptr ? "" : path; !rest.empty();) {
    const std::size_t end = rest.find(':');
    if (access(fmt::format("{}/{}", rest.substr(0, end), program).c_str(), X_OK) == 0) return true;
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
  }
  return false;
}

}  // namespace quillbar::bench
