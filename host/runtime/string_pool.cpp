#include "host/runtime/string_pool.h"

#include <algorithm>
#include <functional>

#include "host/runtime/text_encoding.h"

namespace quillbar::host {
namespace {

bool AllAscii(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

StringPool &StringPool::Instance() {
  // Never destroyed: handles in static storage may outlive any order of destruction.
  static StringPool *const pool = new StringPool;
  return *pool;
}

HostString *StringPool::Create(std::string bytes, TextEncoding encoding) {
  HostString *string = TakeSlot();
  string->isAscii = IsAsciiCompatible(encoding) && AllAscii(bytes);
  string->bytes = std::move(bytes);
  string->bytes.push_back('\0');
  string->encoding = encoding;
  string->state = HostString::State::kLive;
  return string;
}

void StringPool::ReleaseIfUnused(HostString *string) {
  if (string->hostReferences == 0 && !string->PluginMayUse()) Bury(string);
}

bool StringPool::Owns(const void *address) const {
  // std::less orders any addresses, also those that are none of ours.
  const std::less<const void *> before;
  const auto behind =
      std::upper_bound(slabs_.begin(), slabs_.end(), address,
                       [&](const void *a, const auto &slab) { return before(a, slab.get()); });
  if (behind == slabs_.begin()) return false;
  const auto *first = reinterpret_cast<const char *>(std::prev(behind)->get()->strings.data());
  const auto distance = static_cast<std::size_t>(static_cast<const char *>(address) - first);
  return distance < sizeof(HostString) * kSlabStrings && distance % sizeof(HostString) == 0;
}

HostString *StringPool::TakeSlot() {
  if (free_.empty()) {
    auto slab = std::make_unique<Slab>();
    for (HostString &string : slab->strings) free_.push_back(&string);
    const auto place = std::upper_bound(slabs_.begin(), slabs_.end(), slab);
    slabs_.insert(place, std::move(slab));
  }
  HostString *string = free_.back();
  free_.pop_back();
  *string = HostString{};
  return string;
}

void StringPool::Bury(HostString *string) {
  string->state = HostString::State::kReleased;
  std::fill(string->bytes.begin(), string->bytes.end(), '\xDD');
  tombstones_.push_back(string);
  tombstoneBytes_ += string->bytes.size();
  while (tombstones_.size() > kTombstones || tombstoneBytes_ > kTombstoneBytes) {
    HostString *oldest = tombstones_.front();
    tombstones_.pop_front();
    tombstoneBytes_ -= oldest->bytes.size();
    *oldest = HostString{};
    free_.push_back(oldest);
  }
}

}  // namespace quillbar::host
