// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

namespace quillbar::host {

/// The address of the service with this name, whatever the options say; null when there is none.
void *FindService(std::string_view name);

/// The address of the host-language function with exactly this declaration; null when there is none.
void *FindGlobalMethod(std::string_view declaration);

/// The names of all services.
std::vector<std::string_view> ServiceNames();

}  // namespace quillbar::host
