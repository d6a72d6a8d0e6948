// SPDX-License-Identifier: MIT
// The program's own functions stand before those of the C library, for all libraries that it loads. Who asks is told by
// the address to which a function returns.
#include <link.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>

#include "tests/plugin/shortage/watched_memory.h"

extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void __libc_free(void *block);
}

namespace {

struct Range {
  std::uintptr_t start, end;
};
std::array<Range, 8> code;
std::size_t codeCount = 0;

long left = -1;  // blocks that are granted before one is refused; negative: all
bool refusesForGood = false, hasRefused = false;

bool IsPluginCode(const void *address) {
  const auto number = reinterpret_cast<std::uintptr_t>(address);
  for (std::size_t i = 0; i < codeCount; ++i) {
    if (number >= code[i].start && number < code[i].end) return true;
  }
  return false;
}

bool IsRefused() {
  if (left == 0) {
    hasRefused = true;
    if (!refusesForGood) left = -1;
    return true;
  }
  if (left > 0) --left;
  return false;
}

// The blocks that plugins have, by address; one that was given back leaves a gap that a search goes on after. It can't
// ask for memory itself.
class Blocks {
 public:
  void Add(void *block) {
    if (block == nullptr || used_ == slots_.size() / 2) return;
    std::size_t slot = SlotOf(block);
    while (slots_[slot] != nullptr && slots_[slot] != &gap_) slot = (slot + 1) % slots_.size();
    if (slots_[slot] == nullptr) ++used_;
    slots_[slot] = block;
    ++count_;
  }
  void Remove(void *block) {
    if (count_ == 0 || block == nullptr) return;
    for (std::size_t slot = SlotOf(block); slots_[slot] != nullptr; slot = (slot + 1) % slots_.size()) {
      if (slots_[slot] != block) continue;
      slots_[slot] = &gap_;
      --count_;
      break;
    }
    if (count_ == 0) Clear();
  }
  void Clear() {
    slots_.fill(nullptr);
    used_ = count_ = 0;
  }
  std::size_t Count() const { return count_; }

 private:
  std::size_t SlotOf(const void *block) const {
    return (reinterpret_cast<std::uintptr_t>(block) / 16 * 0x9E3779B1U) % slots_.size();
  }
  static inline char gap_ = 0;
  std::array<void *, 1 << 18> slots_{};
  std::size_t used_ = 0, count_ = 0;
};
Blocks blocks;

}  // namespace

extern "C" {

void *malloc(std::size_t size) {
  if (codeCount == 0 || !IsPluginCode(__builtin_return_address(0))) return __libc_malloc(size);
  if (IsRefused()) {
    errno = ENOMEM;
    return nullptr;
  }
  void *const block = __libc_malloc(size);
  blocks.Add(block);
  return block;
}

void *calloc(std::size_t count, std::size_t size) {
  if (codeCount == 0 || !IsPluginCode(__builtin_return_address(0))) return __libc_calloc(count, size);
  if (IsRefused()) {
    errno = ENOMEM;
    return nullptr;
  }
  void *const block = __libc_calloc(count, size);
  blocks.Add(block);
  return block;
}

void *realloc(void *block, std::size_t size) {
  if (codeCount == 0 || !IsPluginCode(__builtin_return_address(0))) return __libc_realloc(block, size);
  if (IsRefused()) {
    errno = ENOMEM;
    return nullptr;
  }
  blocks.Remove(block);
  void *const moved = __libc_realloc(block, size);
  blocks.Add(moved != nullptr || size == 0 ? moved : block);
  return moved;
}

void free(void *block) {
  blocks.Remove(block);
  __libc_free(block);
}

}  // extern "C"

namespace quillbar::test::watched_memory {

bool IsPossible() { return true; }

void Watch(const std::vector<std::string_view> &fileNames) {
  codeCount = 0;
  blocks.Clear();
  dl_iterate_phdr(
      [](dl_phdr_info *library, std::size_t, void *data) {
        for (const std::string_view name : *static_cast<const std::vector<std::string_view> *>(data)) {
          if (!std::string_view(library->dlpi_name).ends_with(name)) continue;
          for (int i = 0; i < library->dlpi_phnum && codeCount < code.size(); ++i) {
            const ElfW(Phdr) &segment = library->dlpi_phdr[i];
            if (segment.p_type != PT_LOAD || (segment.p_flags & PF_X) == 0) continue;
            const std::uintptr_t start = library->dlpi_addr + segment.p_vaddr;
            code[codeCount++] = {start, start + segment.p_memsz};
          }
        }
        return 0;
      },
      const_cast<std::vector<std::string_view> *>(&fileNames));
}

void RefuseAfter(long granted, bool forGood) {
  hasRefused = false;
  refusesForGood = forGood;
  left = granted;
}

bool GrantAll() {
  left = -1;
  return hasRefused;
}

std::size_t BlockCount() { return blocks.Count(); }

}  // namespace quillbar::test::watched_memory
