// SPDX-License-Identifier: MIT
// How fast a raster's rows become an image's rows, compared with memcpy of the same raster in the same run; and how
// much memory loading the raster takes; and the time until one is in a file, compared with PoDoFo where that is installed.
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

#include "bench/measured_run.h"
#include "bench/podofo_image.h"
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

// What a camera makes: a gradient in which each sample has some bits of noise.
constexpr std::int32_t kPhotoWidth = 3000;
constexpr std::int32_t kPhotoHeight = 2000;

std::vector<std::uint8_t> Photo() {
  std::vector<std::uint8_t> pixels;
  pixels.reserve(std::size_t{4} * kPhotoWidth * kPhotoHeight);
  std::uint32_t state = 1;
  for (std::int32_t y = 0; y < kPhotoHeight; ++y) {
    for (std::int32_t x = 0; x < kPhotoWidth; ++x) {
      state = state * 1664525U + 1013904223U;
      pixels.push_back(static_cast<std::uint8_t>(x * 247 / kPhotoWidth + static_cast<int>(state >> 29)));
      pixels.push_back(static_cast<std::uint8_t>(y * 247 / kPhotoHeight + static_cast<int>(state >> 26 & 7)));
      pixels.push_back(static_cast<std::uint8_t>((x + y) / 21 + static_cast<int>(state >> 23 & 7)));
      pixels.push_back(static_cast<std::uint8_t>(255 - x * 64 / kPhotoWidth));
    }
  }
  return pixels;
}

std::int64_t SizeOf(const std::string &file) {
  const auto size = static_cast<std::int64_t>(std::filesystem::file_size(file));
  std::filesystem::remove(file);
  return size;
}

/// The photo in a raster; from loading it to the saved and freed document, on one page.
MeasuredPart PrepareSaving(const std::vector<std::uint8_t> &photo, const std::string &file, bool isCompressed) {
  struct State {
    host::Host host;
    host::ObjectHandle document, raster;
  };
  auto state = std::make_shared<State>();
  host::Host &host = state->host;
  host.LoadPlugin(QUILLBAR_COMPANION_FILE);
  host.LoadPlugin(QUILLBAR_PLUGIN_FILE);
  state->raster = host.Create(
      "PixelRaster", {std::int64_t{kPhotoWidth}, std::int64_t{kPhotoHeight}, std::int64_t{4}, std::int64_t{8}});
  const auto *record = static_cast<const PixelRasterRecord *>(host.ClassData(state->raster, host.Class("PixelRaster")));
  for (std::int32_t row = 0; row < kPhotoHeight; ++row) {
    std::memcpy(record->firstRow + std::ptrdiff_t{row} * record->stride,
                photo.data() + std::size_t{4} * kPhotoWidth * static_cast<std::size_t>(row),
                std::size_t{4} * kPhotoWidth);
  }
  return [state, file, isCompressed] {
    host::Host &with = state->host;
    state->document =
        isCompressed ? with.Create("PDFDocument", {with.Create("CompressorHandle")}) : with.Create("PDFDocument");
    {
      const host::ObjectHandle image = with.Call(state->document, "LoadImage", {state->raster}).AsObject();
      const host::ObjectHandle page = with.Call(state->document, "AddPage").AsObject();
      with.Call(page, "DrawImage", {image, 50.0, 50.0, 300.0, 200.0});
      with.Call(state->document, "Save", {with.Create("FolderItem", {file})});
    }
    state->document = {};
    return SizeOf(file);
  };
}

void MeasureSaving() {
  constexpr int kRuns = 7;
  const std::vector<std::uint8_t> photo = Photo();
  const std::string file =
      (std::filesystem::temp_directory_path() / fmt::format("quillbar-bench-{}.pdf", getpid())).string();
  struct Way {
    const char *name;
    Run run;
  };
  const Way ways[] = {
      {"plugin", [&] { return PrepareSaving(photo, file, true); }},
      {"plugin, not compressed", [&] { return PrepareSaving(photo, file, false); }},
#ifdef QUILLBAR_HAS_PODOFO
      {"PoDoFo",
       [&] {
         return [&] {
           WritePodofoImage(photo, kPhotoWidth, kPhotoHeight, file);
           return SizeOf(file);
         };
       }},
#endif
  };
  std::vector<Measurement> fastest(std::size(ways));
  for (int run = 0; run < kRuns; ++run) {
    for (std::size_t way = 0; way < std::size(ways); ++way) {
      const Measurement measured = MeasureInOwnProcess(ways[way].run);
      if (run == 0 || measured.processorSeconds < fastest[way].processorSeconds) fastest[way] = measured;
    }
  }
  fmt::print("\nRGBA, {} x {} pixels, in a file; the processor's time, the least of {} runs in turns\n\n", kPhotoWidth,
             kPhotoHeight, kRuns);
  fmt::print("{:<30} {:>8} {:>9} {:>9}\n", "", "CPU ms", "MB file", "MB grew");
  for (std::size_t way = 0; way < std::size(ways); ++way) {
    fmt::print("{:<30} {:>8.1f} {:>9.2f} {:>9.1f}\n", ways[way].name, fastest[way].processorSeconds * 1e3,
               static_cast<double>(fastest[way].fileBytes) / 1e6, static_cast<double>(fastest[way].growthBytes) / 1e6);
  }
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
  MeasureSaving();
}
