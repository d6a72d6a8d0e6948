// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

#include "host/runtime/memory_poison.h"

namespace quillbar::host {

/// The bytes of a string, followed by two nuls. A buffer is used again for other strings, since most of them are short
/// and short-lived; under a sanitizer only the current string's bytes may be used.
class TextBuffer {
 public:
  TextBuffer() = default;
  ~TextBuffer() { Free(); }
  TextBuffer(const TextBuffer &) = delete;
  TextBuffer &operator=(const TextBuffer &) = delete;

  /// Makes room for this many bytes, which the caller fills before `Finish`. The old content is lost.
  char *Prepare(std::size_t room) {
    if (room + kNuls > capacity_) {
      Free();
      const std::size_t capacity = std::max(room + kNuls, kSmallest);
      data_ = std::make_unique_for_overwrite<char[]>(capacity);
      capacity_ = capacity;
    }
    UnpoisonMemory(data_.get(), capacity_);
    size_ = 0;
    return data_.get();
  }

  /// Ends the string after `size` bytes, at most as many as there is room for.
  void Finish(std::size_t size) {
    if (capacity_ > kKept && capacity_ - size > capacity_ / 4) Shrink(size);
    size_ = size;
    std::memset(data_.get() + size, 0, kNuls);
    PoisonMemory(data_.get() + size + kNuls, capacity_ - size - kNuls);
  }

  /// Adds bytes to a finished string, and room for more each time, so that a text grows in linear time.
  void Append(std::string_view more) {
    const std::size_t size = size_ + more.size();
    if (size + kNuls > capacity_) {
      const std::size_t capacity = size + size / 2 + kNuls;
      auto larger = std::make_unique_for_overwrite<char[]>(capacity);
      std::memcpy(larger.get(), data_.get(), size_);
      UnpoisonMemory(data_.get(), capacity_);
      data_ = std::move(larger);
      capacity_ = capacity;
    }
    UnpoisonMemory(data_.get(), capacity_);
    std::memcpy(data_.get() + size_, more.data(), more.size());
    size_ = size;
    std::memset(data_.get() + size, 0, kNuls);
    PoisonMemory(data_.get() + size + kNuls, capacity_ - size - kNuls);
  }

  /// Makes the string unreadable without freeing its memory.
  void Spoil() {
    std::memset(data_.get(), kSpoiled, size_ + kNuls);
    PoisonMemory(data_.get(), capacity_);
  }

  /// Makes the buffer ready for another string; large memory is freed.
  void Recycle() {
    if (capacity_ > kKept) Free();
    size_ = 0;
  }

  /// Frees the memory.
  void Free() {
    if (data_ != nullptr) UnpoisonMemory(data_.get(), capacity_);
    data_.reset();
    capacity_ = size_ = 0;
  }

  const char *data() const { return data_.get(); }
  std::size_t size() const { return size_; }
  std::size_t capacity() const { return capacity_; }
  std::string_view View() const { return {data_.get(), size_}; }

 private:
  static constexpr std::size_t kNuls = 2;  // what UTF-16 needs
  static constexpr std::size_t kSmallest = 32;
  static constexpr std::size_t kKept = 512;
  static constexpr unsigned char kSpoiled = 0xDD;

  void Shrink(std::size_t size) {
    auto fitting = std::make_unique_for_overwrite<char[]>(size + kNuls);
    std::memcpy(fitting.get(), data_.get(), size);
    data_ = std::move(fitting);
    capacity_ = size + kNuls;
  }

  std::unique_ptr<char[]> data_;
  std::size_t capacity_ = 0;
  std::size_t size_ = 0;
};

}  // namespace quillbar::host
