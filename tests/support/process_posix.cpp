// SPDX-License-Identifier: MIT
#include "tests/support/process.h"

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <stdexcept>

namespace quillbar::test {
namespace {

class Pipe {
 public:
  Pipe() {
    if (pipe(ends_.data()) != 0) throw std::runtime_error("pipe failed");
  }
  ~Pipe() {
    CloseReading();
    CloseWriting();
  }
  Pipe(const Pipe &) = delete;
  Pipe &operator=(const Pipe &) = delete;

  int reading() const { return ends_[0]; }
  int writing() const { return ends_[1]; }
  void CloseReading() { Close(ends_[0]); }
  void CloseWriting() { Close(ends_[1]); }

 private:
  static void Close(int &end) {
    if (end >= 0) close(end);
    end = -1;
  }

  std::array<int, 2> ends_{-1, -1};
};

[[noreturn]] void BecomeProgram(const Command &command, const ProcessOptions &options) {
  std::vector<std::string> words;
  for (const ProcessArgument &argument : command) words.push_back(argument.Text());
  std::vector<char *> arguments;
  for (std::string &word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  // A writer into a closed pipe must end as it would in a shell.
  std::signal(SIGPIPE, SIG_DFL);
  std::signal(SIGINT, SIG_DFL);
  if (options.workingDirectory.empty() || chdir(options.workingDirectory.c_str()) == 0) {
    execvp(arguments[0], arguments.data());
  }
  const char *problem = std::strerror(errno);
  [[maybe_unused]] const auto written = write(STDERR_FILENO, problem, std::strlen(problem));
  _exit(127);
}

// Feeds the input and collects both outputs until the program has closed them. False when the time is up.
bool Exchange(pid_t child, Pipe &input, Pipe &output, Pipe &errors, const ProcessOptions &options,
              ProcessResult &result) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(options.timeoutSeconds);
  std::size_t written = 0;
  bool outputOpen = true;
  bool errorsOpen = true;
  bool isInterrupted = options.interruptAt.empty();
  if (options.input.empty()) input.CloseWriting();
  while (outputOpen || errorsOpen) {
    std::array<pollfd, 3> watched{{{outputOpen ? output.reading() : -1, POLLIN, 0},
                                   {errorsOpen ? errors.reading() : -1, POLLIN, 0},
                                   {input.writing(), POLLOUT, 0}}};
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    if (left.count() <= 0) return false;
    if (poll(watched.data(), watched.size(), static_cast<int>(left.count())) < 0 && errno != EINTR) return false;

    const auto collect = [](const pollfd &from, std::string &to) {
      if ((from.revents & (POLLIN | POLLHUP | POLLERR)) == 0) return true;
      std::array<char, 65536> buffer;
      const ssize_t count = read(from.fd, buffer.data(), buffer.size());
      if (count > 0) to.append(buffer.data(), static_cast<std::size_t>(count));
      return count > 0;
    };
    if (outputOpen) outputOpen = collect(watched[0], result.output);
    if (!isInterrupted && result.output.find(options.interruptAt) != std::string::npos) {
      isInterrupted = true;
      kill(child, SIGINT);
    }
    if (errorsOpen) errorsOpen = collect(watched[1], result.errors);
    if (watched[2].revents != 0) {
      const ssize_t count = write(input.writing(), options.input.data() + written, options.input.size() - written);
      if (count > 0) written += static_cast<std::size_t>(count);
      if (count <= 0 || written == options.input.size()) input.CloseWriting();
    }
  }
  return true;
}

}  // namespace

ProcessResult RunProcess(const Command &command, const ProcessOptions &options) {
  Pipe input;
  Pipe output;
  Pipe errors;
  const auto formerPipeHandler = std::signal(SIGPIPE, SIG_IGN);
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("fork failed");
  if (child == 0) {
    dup2(input.reading(), STDIN_FILENO);
    dup2(output.writing(), STDOUT_FILENO);
    dup2(errors.writing(), STDERR_FILENO);
    input.CloseReading();
    input.CloseWriting();
    output.CloseReading();
    output.CloseWriting();
    errors.CloseReading();
    errors.CloseWriting();
    BecomeProgram(command, options);
  }
  input.CloseReading();
  output.CloseWriting();
  errors.CloseWriting();

  ProcessResult result;
  if (!Exchange(child, input, output, errors, options, result)) {
    kill(child, SIGKILL);
    result.errors += "\nkilled: took longer than " + std::to_string(options.timeoutSeconds) + " seconds";
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  std::signal(SIGPIPE, formerPipeHandler);
  result.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  if (result.exitStatus == 127) {
    throw std::runtime_error(command.front().Text() + " cannot be started: " + result.errors);
  }
  return result;
}

}  // namespace quillbar::test
