// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <iostream>
#include <ostream>
#include <span>
#include <string>

#include "host/runtime/host.h"

namespace quillbar::language {

/// Runs a script file: reads it, checks all of it, then runs it. `arguments` become the script's `Arguments`. What it
/// prints goes to `output`, messages about errors to `errors`.
///
/// Returns 0, or 1 after an error: a file that can't be read, errors in the script (all of them are shown), or an
/// exception that the script doesn't catch (shown with its position and the calls that led there); 128 and the number
/// of the signal after an interruption; 124 or 125 when a limit of time or memory was reached (shown with the place); or what the script passes to `Quit`. Everything that the script held has been
/// released on return. It reads its standard input from `input`. `others` are the files of its classes and modules.
int RunScript(host::Host &host, const std::filesystem::path &script, std::span<const std::string> arguments,
              std::ostream &output = std::cout, std::ostream &errors = std::cerr, std::istream &input = std::cin,
              std::span<const std::filesystem::path> others = {});

/// Runs a script that isn't in a file; messages call it `name`.
int RunText(host::Host &host, std::string name, std::string text, std::span<const std::string> arguments,
            std::ostream &output, std::ostream &errors, std::istream &input = std::cin,
            std::span<const std::filesystem::path> others = {});

/// Checks a script without running it. Returns 0, or 1 after writing every error to `errors`.
int CheckScript(host::Host &host, const std::filesystem::path &script, std::ostream &errors,
                std::span<const std::filesystem::path> others = {});

/// Checks a script that isn't in a file; messages call it `name`.
int CheckText(host::Host &host, std::string name, std::string text, std::ostream &errors,
              std::span<const std::filesystem::path> others = {});

}  // namespace quillbar::language
