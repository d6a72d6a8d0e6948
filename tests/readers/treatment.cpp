// SPDX-License-Identifier: MIT
#include "tests/readers/treatment.h"

#include <gtest/gtest.h>

#include "tests/support/process.h"

namespace quillbar::test {

std::string NameOf(Treatment treatment) {
  constexpr const char *kNames[] = {"AsWritten", "RewrittenByGhostscript", "LinearizedByQpdf"};
  return kNames[static_cast<int>(treatment)];
}

std::filesystem::path Treated(Treatment treatment, const std::filesystem::path &file) {
  if (treatment == Treatment::kAsWritten) return file;
  const std::filesystem::path treated = file.parent_path() / "treated.pdf";
  // As for print. Otherwise Ghostscript embeds no standard font and leaves out its widths, and readers draw Greek and
  // Cyrillic letters on top of each other.
  const Command command =
      treatment == Treatment::kLinearizedByQpdf
          ? Command{"qpdf", "--linearize", file, treated}
          : Command{"gs", "-q",    "-dBATCH", "-dNOPAUSE", "-sDEVICE=pdfwrite", "-dPDFSETTINGS=/prepress",
                    "-o", treated, file};
  const ProcessResult result = RunProcess(command);
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output + result.errors, "");
  return treated;
}

}  // namespace quillbar::test
