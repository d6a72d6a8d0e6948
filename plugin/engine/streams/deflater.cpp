// SPDX-License-Identifier: MIT
#include "plugin/engine/streams/deflater.h"

namespace quillbar::engine {

DeflateInitEntry deflateInitEntry = nullptr;
DeflateEntry deflateEntry = nullptr;
DeflateEndEntry deflateEndEntry = nullptr;

namespace {

// Passed to the compressor, whatever zlib it has: zlib compares the first character only.
constexpr const char *kVersion = "1.1.3";

constexpr int kDefaultLevel = -1;
constexpr int kNoFlush = 0;
constexpr int kFinish = 4;
constexpr int kStreamError = -2;
constexpr int kBufferError = -5;

}  // namespace

Deflater::Deflater(CompressorMemory &memory) {
  record_.zalloc = [](void *opaque, unsigned items, unsigned size) {
    return static_cast<CompressorMemory *>(opaque)->Allocate(items, size);
  };
  record_.zfree = [](void *opaque, void *address) { static_cast<CompressorMemory *>(opaque)->Free(address); };
  record_.opaque = &memory;
}

Deflater::~Deflater() {
  if (isBegun_ && deflateEndEntry != nullptr) deflateEndEntry(&record_);
}

int Deflater::Begin() {
  TakeOutput();
  // All three are asked for at once: with one missing, what the first allocates could not be given back.
  if (deflateInitEntry == nullptr || deflateEntry == nullptr || deflateEndEntry == nullptr) return kStreamError;
  const int result = deflateInitEntry(&record_, kDefaultLevel, kVersion, sizeof record_);
  isBegun_ = result == kOk;
  return result;
}

void Deflater::SetInput(std::span<const HPDF_BYTE> input) {
  record_.next_in = input.data();
  record_.avail_in = static_cast<unsigned>(input.size());
}

int Deflater::Step(bool isLast) {
  if (deflateEntry == nullptr) return kStreamError;
  const unsigned inputBefore = record_.avail_in;
  const unsigned outputBefore = record_.avail_out;
  const int result = deflateEntry(&record_, isLast ? kFinish : kNoFlush);
  // zlib says so itself when it can't go on.
  const bool tookNothing = record_.avail_in == inputBefore;
  if (result == kOk && tookNothing && record_.avail_out == outputBefore) return kBufferError;
  if (result == kEnd && tookNothing && inputBefore != 0) return kBufferError;
  return result;
}

std::span<const HPDF_BYTE> Deflater::TakeOutput() {
  const std::size_t size = kOutputSize - record_.avail_out;
  record_.next_out = output_;
  record_.avail_out = kOutputSize;
  return {output_, size};
}

}  // namespace quillbar::engine
