// SPDX-License-Identifier: MIT
// The input is a metrics file (AFM) and, after the first nul, a font program (PFB or PFA); the metrics alone when
// there is no nul.
#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>

#include "fuzz/fuzzed_document.h"
#include "fuzz/memory_file.h"
#include "plugin/engine/fonts/document_fonts.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  using namespace quillbar;
  const std::uint8_t *end = data + size, *nul = std::find(data, end, 0);
  const fuzz::MemoryFile metrics({data, nul});
  std::optional<fuzz::MemoryFile> program;
  if (nul != end) program.emplace(std::span(nul + 1, end));

  fuzz::FuzzedDocument document;
  const char *name =
      Call<engine::LoadType1Font>(document.get(), metrics.LibraryPath(), program ? program->LibraryPath() : nullptr);
  if (name == nullptr) return 0;
  // Texts show characters that the metrics have and some that they lack.
  for (const char *encoding : {"WinAnsiEncoding", "FontSpecific", "ISO8859-5"})
    document.Show(Call<engine::GetFont>(document.get(), name, encoding), "ABC abc \xE4\xF6\xFC\x80\xFF\n");
  document.Save();
  return 0;
}
