// SPDX-License-Identifier: MIT
// How fast a raster's rows become an image's rows, compared with memcpy of the same raster in the same run; and how
// much memory loading the raster takes.
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <fstream>
#include <memory>
#include <vector>

#include "bench/measured_run.h"
#include "host/runtime/host.h"
#include "interface/pixel_raster.h"
#include "plugin/image/raster_rows.h"

namespace quillbar::bench {

namespace {

constexpr std::int32_t kWidth = 4000;
constexpr std::int32_t kHeight = 3000;
constexpr int kRounds = 9;

struct RasterKind {
  const char *name;
  std::int32_t channels;
  bool alpha;
  std::uint8_t bits;
  std::int32_t gap;  // bytes between pixels
  bool reversed;     // blue first
};

constexpr RasterKind kKinds[] = {
    {"RGBA, 8 bits", 4, true, 8, 0, false},
    {"BGRA, 8 bits", 4, true, 8, 0, true},
    {"RGB and a spare byte, 8 bits", 3, false, 8, 1, false},
    {"RGB, 8 bits", 3, false, 8, 0, false},
    {"BGR, 8 bits", 3, false, 8, 0, true},
    {"grey and alpha, 8 bits", 2, true, 8, 0, false},
    {"grey, 8 bits", 1, false, 8, 0, false},
    {"RGBA, 16 bits", 4, true, 16, 0, false},
    {"RGB, 16 bits", 3, false, 16, 0, false},
};

PixelRasterRecord RecordOf(const RasterKind &kind, std::uint8_t *pixels) {
  const int size = kind.bits / 8;
  PixelRasterRecord record{};
  record.width = kWidth;
  record.height = kHeight;
  record.firstRow = pixels;
  record.channelCount = kind.channels;
  record.pixelStep = kind.channels * size + kind.gap;
  record.stride = kWidth * record.pixelStep;
  for (int color = 0; color < 3; ++color) {
    record.colorOffset[color] = static_cast<std::uint8_t>((kind.reversed ? 2 - color : color) * size);
  }
  record.alphaOffset = static_cast<std::uint8_t>((kind.channels - 1) * size);
  record.hasAlpha = kind.alpha;
  record.bitsPerComponent = kind.bits;
  return record;
}

/// The shortest of several rounds, in seconds.
template <class Work>
double Shortest(Work work) {
  double shortest = 1e9;
  for (int round = 0; round < kRounds; ++round) {
    const auto start = std::chrono::steady_clock::now();
    work();
    shortest = std::min(shortest, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
  return shortest;
}

/// Keeps the compiler from removing work whose result is never read.
void Use(const void *bytes) { asm volatile("" : : "r"(bytes) : "memory"); }

void MeasureConversion(const RasterKind &kind) {
  const std::size_t size =
      static_cast<std::size_t>(kWidth) * kHeight * static_cast<std::size_t>(kind.channels * kind.bits / 8 + kind.gap);
  std::vector<std::uint8_t> pixels(size, 77), copy(size, 1);
  const auto layout = ReadRasterLayout(RecordOf(kind, pixels.data()));
  std::vector<std::uint8_t> image(layout->ImageRowSize()), mask(layout->MaskRowSize());
  const double copying = Shortest([&] {
    std::memcpy(copy.data(), pixels.data(), size);
    Use(copy.data());
  });
  const double converting = Shortest([&] {
    for (std::size_t row = 0; row < layout->height; ++row) {
      ConvertRow(*layout, layout->Row(row), image, mask);
      Use(image.data());
      Use(mask.data());
    }
  });
  const double gigabytes = static_cast<double>(size) / 1e9;
  fmt::print("{:<30} {:>8.2f} {:>8.2f} {:>9.1f} {:>9.1f} {:>8.2f}\n", kind.name, copying * 1e3, converting * 1e3,
             gigabytes / copying, gigabytes / converting, copying / converting);
}

/// The memory that this process has now, in bytes.
std::int64_t ResidentBytes() {
  std::ifstream statm("/proc/self/statm");
  std::int64_t total = 0, resident = 0;
  statm >> total >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

/// `LoadImage` of a raster through the host; the part measured is the one call, and tells what was in memory
/// before it.
MeasuredPart PrepareLoading(std::int64_t channels) {
  struct State {
    host::Host host;
    host::ObjectHandle document, raster, image;
  };
  auto state = std::make_shared<State>();
  state->host.LoadPlugin(QUILLBAR_COMPANION_FILE);
  state->host.LoadPlugin(QUILLBAR_PLUGIN_FILE);
  state->document = state->host.Create("PDFDocument");
  state->raster =
      state->host.Create("PixelRaster", {std::int64_t{kWidth}, std::int64_t{kHeight}, channels, std::int64_t{8}});
  state->host.Call(state->raster, "Fill", {Color{0x20336699}});
  return [state] {
    const std::int64_t before = ResidentBytes();
    state->image = state->host.Call(state->document, "LoadImage", {state->raster}).AsObject();
    return before;
  };
}

}  // namespace

}  // namespace quillbar::bench

int main() {
  using namespace quillbar::bench;
  // First, while no freed memory of other measurements is available.
  fmt::print("LoadImage of {} x {} pixels through the plugin, with the library's stream writing\n\n", kWidth, kHeight);
  fmt::print("{:<30} {:>8} {:>12} {:>12} {:>8}\n", "raster", "ms", "pixels MB", "grew MB", "copies");
  for (const std::int64_t channels : {3, 4}) {
    const Measurement run = MeasureInOwnProcess([channels] { return PrepareLoading(channels); });
    const auto pixels = static_cast<double>(kWidth) * kHeight * static_cast<double>(channels);
    const auto grew = static_cast<double>(run.peakBytes - run.fileBytes);
    fmt::print("{:<30} {:>8.1f} {:>12.1f} {:>12.1f} {:>8.2f}\n", channels == 3 ? "RGB, 8 bits" : "RGBA, 8 bits",
               run.seconds * 1e3, pixels / 1e6, grew / 1e6, grew / pixels);
  }

  fmt::print("\nConversion alone, the shortest of {} rounds\n\n", kRounds);
  fmt::print("{:<30} {:>8} {:>8} {:>9} {:>9} {:>8}\n", "raster", "memcpy", "convert", "memcpy", "convert", "ratio");
  fmt::print("{:<30} {:>8} {:>8} {:>9} {:>9} {:>8}\n", "", "ms", "ms", "GB/s", "GB/s", "");
  for (const RasterKind &kind : kKinds) MeasureConversion(kind);
}
