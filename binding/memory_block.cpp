#include "binding/memory_block.h"

#include "binding/class_reference.h"

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
  const Object block = CreateInstance<"MemoryBlock">();
  if (block == nullptr) return nullptr;
  if (const auto construct = LoadMethod(constructorMethod, block, memory_block::kConstructor)) {
    construct(block, size);
  }
  return static_cast<MemoryBlock *>(block);
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
