#pragma once

#include <string_view>

namespace quillbar::host {

class Host;

/// The address of the service with this name, whatever the options say; null when there is none.
void *FindService(std::string_view name);

/// The address of the host-language function with exactly this declaration; null when there is none.
void *FindGlobalMethod(std::string_view declaration);

}  // namespace quillbar::host
