// SPDX-License-Identifier: MIT
// The program's own functions stand before those of the C library, or before those that AddressSanitizer has in their
// place, for all libraries that it loads. Who asks is told by the address to which a function returns.
#include <link.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>

#ifdef QUILLBAR_SANITIZED
#include <dlfcn.h>
#include <unwind.h>

#include <new>
#endif

#include "tests/plugin/shortage/watched_memory.h"

#ifdef QUILLBAR_SANITIZED
#define QUILLBAR_NEXT(name) __interceptor_##name
#else
#define QUILLBAR_NEXT(name) __libc_##name
#endif

extern "C" {
void *QUILLBAR_NEXT(malloc)(std::size_t size);
void *QUILLBAR_NEXT(calloc)(std::size_t count, std::size_t size);
void *QUILLBAR_NEXT(realloc)(void *block, std::size_t size);
void QUILLBAR_NEXT(free)(void *block);
}

namespace {

struct Range {
  std::uintptr_t start, end;
};

/// The code of some loaded libraries.
class Code {
 public:
  void Add(const dl_phdr_info &library) {
    for (int i = 0; i < library.dlpi_phnum && count_ < ranges_.size(); ++i) {
      const ElfW(Phdr) &segment = library.dlpi_phdr[i];
      if (segment.p_type != PT_LOAD || (segment.p_flags & PF_X) == 0) continue;
      const std::uintptr_t start = library.dlpi_addr + segment.p_vaddr;
      ranges_[count_++] = {start, start + segment.p_memsz};
    }
  }
  void Clear() { count_ = 0; }
  bool IsEmpty() const { return count_ == 0; }
  bool Has(const void *address) const {
    const auto number = reinterpret_cast<std::uintptr_t>(address);
    for (std::size_t i = 0; i < count_; ++i) {
      if (number >= ranges_[i].start && number < ranges_[i].end) return true;
    }
    return false;
  }

 private:
  std::array<Range, 8> ranges_{};
  std::size_t count_ = 0;
};
Code plugins;

long left = -1;  // blocks that are granted before one is refused; negative: all
long asked = 0;
bool refusesForGood = false, hasRefused = false;

#ifdef QUILLBAR_SANITIZED

// There the C++ library is not linked into the plugins, and asks for the blocks of their texts itself.
Code cppLibrary;

bool IsForPlugin(const void *caller) {
  if (plugins.IsEmpty()) return false;
  if (!cppLibrary.Has(caller)) return plugins.Has(caller);
  const void *behind = nullptr;
  const auto look = [](_Unwind_Context *frame, void *found) {
    const auto address = reinterpret_cast<const void *>(_Unwind_GetIP(frame));
    static bool isInside;
    if (*static_cast<const void **>(found) == nullptr) isInside = false;
    *static_cast<const void **>(found) = address;
    if (cppLibrary.Has(address)) {
      isInside = true;
      return _URC_NO_REASON;
    }
    return isInside ? _URC_NORMAL_STOP : _URC_NO_REASON;
  };
  _Unwind_Backtrace(look, &behind);
  return plugins.Has(behind);
}

#else

bool IsForPlugin(const void *caller) { return !plugins.IsEmpty() && plugins.Has(caller); }

#endif

bool IsRefused() {
  ++asked;
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

/// The block that `get` gets, unless a plugin asked and is to get none.
template <class Get>
void *Granted(const void *caller, const Get &get) {
  if (!IsForPlugin(caller)) return get();
  if (IsRefused()) {
    errno = ENOMEM;
    return nullptr;
  }
  void *const block = get();
  blocks.Add(block);
  return block;
}

}  // namespace

#define QUILLBAR_CALLER __builtin_return_address(0)
#define QUILLBAR_STANDS_BEFORE __attribute__((visibility("default")))

extern "C" {

QUILLBAR_STANDS_BEFORE void *malloc(std::size_t size) {
  return Granted(QUILLBAR_CALLER, [=] { return QUILLBAR_NEXT(malloc)(size); });
}

QUILLBAR_STANDS_BEFORE void *calloc(std::size_t count, std::size_t size) {
  return Granted(QUILLBAR_CALLER, [=] { return QUILLBAR_NEXT(calloc)(count, size); });
}

QUILLBAR_STANDS_BEFORE void *realloc(void *block, std::size_t size) {
  if (!IsForPlugin(QUILLBAR_CALLER)) return QUILLBAR_NEXT(realloc)(block, size);
  if (IsRefused()) {
    errno = ENOMEM;
    return nullptr;
  }
  blocks.Remove(block);
  void *const moved = QUILLBAR_NEXT(realloc)(block, size);
  blocks.Add(moved != nullptr || size == 0 ? moved : block);
  return moved;
}

QUILLBAR_STANDS_BEFORE void free(void *block) {
  blocks.Remove(block);
  QUILLBAR_NEXT(free)(block);
}

}  // extern "C"

#ifdef QUILLBAR_SANITIZED

// Elsewhere these are in the plugins, and ask `malloc`. AddressSanitizer's know who mixes them with `malloc` and `free`.

namespace {

template <class Function>
Function *Next(const char *mangledName) {
  return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, mangledName));
}

void *NewBlock(const void *caller, std::size_t size) {
  static const auto next = Next<void *(std::size_t)>("_Znwm");
  return Granted(caller, [=] { return next(size); });
}

void *NewArray(const void *caller, std::size_t size) {
  static const auto next = Next<void *(std::size_t)>("_Znam");
  return Granted(caller, [=] { return next(size); });
}

void DeleteBlock(void *block) {
  static const auto next = Next<void(void *)>("_ZdlPv");
  blocks.Remove(block);
  next(block);
}

void DeleteArray(void *block) {
  static const auto next = Next<void(void *)>("_ZdaPv");
  blocks.Remove(block);
  next(block);
}

void *OrThrow(void *block) {
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

}  // namespace

QUILLBAR_STANDS_BEFORE void *operator new(std::size_t size) { return OrThrow(NewBlock(QUILLBAR_CALLER, size)); }
QUILLBAR_STANDS_BEFORE void *operator new[](std::size_t size) { return OrThrow(NewArray(QUILLBAR_CALLER, size)); }
QUILLBAR_STANDS_BEFORE void *operator new(std::size_t size, const std::nothrow_t &) noexcept {
  return NewBlock(QUILLBAR_CALLER, size);
}
QUILLBAR_STANDS_BEFORE void *operator new[](std::size_t size, const std::nothrow_t &) noexcept {
  return NewArray(QUILLBAR_CALLER, size);
}
QUILLBAR_STANDS_BEFORE void operator delete(void *block) noexcept { DeleteBlock(block); }
QUILLBAR_STANDS_BEFORE void operator delete[](void *block) noexcept { DeleteArray(block); }
QUILLBAR_STANDS_BEFORE void operator delete(void *block, std::size_t) noexcept { DeleteBlock(block); }
QUILLBAR_STANDS_BEFORE void operator delete[](void *block, std::size_t) noexcept { DeleteArray(block); }
QUILLBAR_STANDS_BEFORE void operator delete(void *block, const std::nothrow_t &) noexcept { DeleteBlock(block); }
QUILLBAR_STANDS_BEFORE void operator delete[](void *block, const std::nothrow_t &) noexcept { DeleteArray(block); }

#endif

namespace quillbar::test::watched_memory {

bool IsPossible() { return true; }

void Watch(const std::vector<std::string_view> &fileNames) {
  plugins.Clear();
  blocks.Clear();
  dl_iterate_phdr(
      [](dl_phdr_info *library, std::size_t, void *data) {
        for (const std::string_view name : *static_cast<const std::vector<std::string_view> *>(data)) {
          if (std::string_view(library->dlpi_name).ends_with(name)) plugins.Add(*library);
        }
        return 0;
      },
      const_cast<std::vector<std::string_view> *>(&fileNames));
#ifdef QUILLBAR_SANITIZED
  cppLibrary.Clear();
  dl_iterate_phdr(
      [](dl_phdr_info *library, std::size_t, void *) {
        if (std::string_view(library->dlpi_name).find("/libstdc++.so") != std::string_view::npos) {
          cppLibrary.Add(*library);
        }
        return 0;
      },
      nullptr);
#endif
}

void RefuseAfter(long granted, bool forGood) {
  hasRefused = false;
  asked = 0;
  refusesForGood = forGood;
  left = granted;
}

bool GrantAll() {
  left = -1;
  return hasRefused;
}

long AskedCount() { return asked; }

std::size_t BlockCount() { return blocks.Count(); }

}  // namespace quillbar::test::watched_memory
