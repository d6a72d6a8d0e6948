// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "interface/records.h"

namespace quillbar {

/// The registered records in the notation of interface.txt, one string for each line. What a record holds beyond that
/// notation is checked by `RecordDifferences`.
std::vector<std::string> RegisteredText(const std::vector<ClassRecord *> &classes);

/// Fields that differ from what every record of this kind holds, one text for each difference.
std::vector<std::string> RecordDifferences(const std::vector<ClassRecord *> &classes);

}  // namespace quillbar
