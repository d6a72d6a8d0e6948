// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

namespace quillbar::text {

/// The writing script that most characters of a text belong to. Of scripts with the same count the one with
/// the lower number wins; a text without characters is of unknown script.
LanguageScript DetectScript(String text);

}  // namespace quillbar::text
