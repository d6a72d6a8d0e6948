// SPDX-License-Identifier: MIT
#include "plugin/engine/fonts/shaping/shaping_memory.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace quillbar::engine {

namespace {

unsigned refused = 0;
bool mayUseReserve = false;

constexpr std::size_t kStep = alignof(std::max_align_t);
alignas(kStep) std::byte reserve[8192];
std::size_t reserveUsed = 0;

bool IsOfReserve(const void *block) {
  const auto address = reinterpret_cast<std::uintptr_t>(block);
  const auto start = reinterpret_cast<std::uintptr_t>(reserve);
  return address >= start && address < start + sizeof reserve;
}

// The block that the system gave, or one of the reserve. All of it is zero: none is given twice.
void *OrReserve(void *block, std::size_t size) {
  if (block != nullptr) return block;
  const std::size_t steps = (size + kStep - 1) / kStep;
  if (!mayUseReserve || steps > (sizeof reserve - reserveUsed) / kStep) {
    ++refused;
    return nullptr;
  }
  block = reserve + reserveUsed;
  reserveUsed += steps * kStep;
  return block;
}

}  // namespace

unsigned RefusedShapingBlocks() { return refused; }

ShapingReserve::ShapingReserve() { mayUseReserve = true; }
ShapingReserve::~ShapingReserve() { mayUseReserve = false; }

}  // namespace quillbar::engine

// HarfBuzz's names for the four functions, which it calls in place of the C library's.
extern "C" {

void *hb_malloc_impl(std::size_t size) { return quillbar::engine::OrReserve(std::malloc(size), size); }

void *hb_calloc_impl(std::size_t count, std::size_t size) {
  return quillbar::engine::OrReserve(std::calloc(count, size), count * size);
}

// A block of the reserve is never resized: it holds what is made once.
void *hb_realloc_impl(void *block, std::size_t size) {
  void *const resized = quillbar::engine::IsOfReserve(block) ? nullptr : std::realloc(block, size);
  if (resized == nullptr && size != 0) ++quillbar::engine::refused;
  return resized;
}

void hb_free_impl(void *block) {
  if (!quillbar::engine::IsOfReserve(block)) std::free(block);
}

}  // extern "C"
