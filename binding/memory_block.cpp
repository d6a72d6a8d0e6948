// SPDX-License-Identifier: MIT
#include "binding/memory_block.h"

#include "binding/class_reference.h"
#include "binding/owned.h"

namespace quillbar {

namespace {

memory_block::Constructor constructorMethod = nullptr;
memory_block::OperatorConvert operatorConvertMethod = nullptr;

template <class Function>
Function LoadMethod(Function &cached, Object object, const char *declaration) {
  if (cached == nullptr) {
    cached = reinterpret_cast<Function>(CallHost<service::LoadObjectMethod>(object, declaration));
  }
  return cached;
}

}  // namespace

MemoryBlock *NewMemoryBlock(Integer size) {
  ObjectRef block(CreateInstance<"MemoryBlock">());
  if (!block) return nullptr;
  const auto construct = LoadMethod(constructorMethod, block.get(), memory_block::kConstructor);
  const auto convert = LoadMethod(operatorConvertMethod, block.get(), memory_block::kOperatorConvert);
  if (construct == nullptr || convert == nullptr) return nullptr;
  construct(block.get(), size);
  return static_cast<MemoryBlock *>(block.release());
}

void *BytesOf(MemoryBlock *block) {
  const auto convert = LoadMethod(operatorConvertMethod, block, memory_block::kOperatorConvert);
  return convert != nullptr ? convert(block) : nullptr;
}

void ClearMemoryBlockCaches() {
  ClassReference<"MemoryBlock">::Clear();
  constructorMethod = nullptr;
  operatorConvertMethod = nullptr;
}

}  // namespace quillbar
