// SPDX-License-Identifier: MIT
#include <windows.h>

#include <aclapi.h>

#include "tests/support/unwritable_folder.h"

namespace quillbar::test {
namespace {

void SetAccessList(const std::filesystem::path &folder, PACL list) {
  std::wstring name = folder.wstring();
  SetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, list, nullptr);
}

}  // namespace

void UnwritableFolder::Close() {
  wchar_t everyone[] = L"EVERYONE";
  EXPLICIT_ACCESSW denial{};
  BuildExplicitAccessWithNameW(&denial, everyone, FILE_ADD_FILE, DENY_ACCESS, NO_INHERITANCE);
  PACL list = nullptr;
  if (SetEntriesInAclW(1, &denial, nullptr, &list) != ERROR_SUCCESS) return;
  SetAccessList(folder_, list);
  LocalFree(list);
}

// No access list at all: everyone may do everything.
void UnwritableFolder::Open() { SetAccessList(folder_, nullptr); }

}  // namespace quillbar::test
