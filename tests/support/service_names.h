// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace quillbar::test {

/// The names of all services that a host offers, from the description of the interface.
const std::vector<std::string> &ServiceNames();

/// All that a host may lack, by name or declaration: its services, and the functions and methods of its
/// language that plugins load.
std::vector<std::string> EverythingOfAHost();

}  // namespace quillbar::test
