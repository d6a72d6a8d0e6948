// SPDX-License-Identifier: MIT
#include "bench/measured_run.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <exception>
#include <stdexcept>

namespace quillbar::bench {
namespace {

std::int64_t PeakBytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return std::int64_t{usage.ru_maxrss} * 1024;
}

Measurement Measure(const Run &prepare) {
  Measurement measured;
  const MeasuredPart part = prepare();
  const std::int64_t before = PeakBytes();
  const auto start = std::chrono::steady_clock::now();
  const std::clock_t processorStart = std::clock();
  measured.fileBytes = part();
  measured.processorSeconds = static_cast<double>(std::clock() - processorStart) / CLOCKS_PER_SEC;
  measured.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  measured.peakBytes = PeakBytes();
  measured.growthBytes = measured.peakBytes - before;
  return measured;
}

}  // namespace

Measurement MeasureInOwnProcess(const Run &prepare) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("pipe failed");
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("fork failed");
  if (child == 0) {
    try {
      const Measurement measured = Measure(prepare);
      if (write(ends[1], &measured, sizeof measured) == ssize_t{sizeof measured}) _exit(0);
    } catch (const std::exception &problem) {
      std::fprintf(stderr, "%s\n", problem.what());
    }
    _exit(1);
  }
  close(ends[1]);
  Measurement measured;
  const ssize_t count = read(ends[0], &measured, sizeof measured);
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (count != ssize_t{sizeof measured} || status != 0) throw std::runtime_error("a run failed");
  return measured;
}

}  // namespace quillbar::bench
