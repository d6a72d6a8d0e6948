// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <iostream>
#include <ostream>
#include <span>
#include <string>

#include "host/runtime/host.h"

namespace quillbar::language {

/// Runs a script file: reads it, checks it whole, then runs it. `arguments` are what it finds in `Arguments`.
/// What it prints goes to `output`, messages about errors to `errors`.
///
/// Returns 0, or 1 after an error: a file that can't be read, errors in the script (all of them are
/// shown), or an exception that the script doesn't catch (shown with its place and the calls that led
/// there). Everything that the script held has been given back when this returns.
int RunScript(host::Host &host, const std::filesystem::path &script, std::span<const std::string> arguments,
              std::ostream &output = std::cout, std::ostream &errors = std::cerr);

/// The same for text that is no file; `name` stands for it in messages.
int RunText(host::Host &host, std::string name, std::string text, std::span<const std::string> arguments,
            std::ostream &output, std::ostream &errors);

/// Checks without running: 0, or 1 and every error on `errors`.
int CheckScript(host::Host &host, const std::filesystem::path &script, std::ostream &errors);

}  // namespace quillbar::language
