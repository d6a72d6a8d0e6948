// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillbar::test {

/// The names of all services that a host offers, from the description of the interface.
const std::vector<std::string> &ServiceNames();

/// All that a host may lack, by name or declaration: its services, and the functions and methods of its
/// language that plugins load.
std::vector<std::string> EverythingOfAHost();

/// Whether a host's accounts rest on the service: without it what was taken can't be given back, or is given back without
/// having been taken.
bool KeepsTheLedger(std::string_view service);

}  // namespace quillbar::test
