// SPDX-License-Identifier: MIT
#include "binding/host_strings.h"

#include <limits>

namespace quillbar {

const char *GetCString(String string, Integer *lengthOut) {
  if (string == nullptr) return nullptr;
  if (lengthOut != nullptr && HostSlot<global_method::LenB>::Resolve() != nullptr) {
    *lengthOut = CallHost<global_method::LenB>(string);
  }
  return CallHost<service::StringGetCString>(string);
}

String BuildString(std::string_view bytes, TextEncoding encoding) {
  if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return nullptr;
  return CallHost<service::BuildStringWithEncoding>(bytes.data(), static_cast<int>(bytes.size()),
                                                    static_cast<std::uint32_t>(encoding));
}

String BuildText(const char *utf8) { return BuildString(utf8 != nullptr ? utf8 : "", TextEncoding::kUtf8); }

OwnedString GetNativePath(FolderItem *folderItem) {
  OwnedString path;
  if (CallHost<service::GetPropValueString>(folderItem, "NativePath", path.out()) == 0) return {};
  return path;
}

bool GetBoolProperty(FolderItem *folderItem, const char *name, bool &flag) {
  Boolean value = 0;
  if (CallHost<service::GetPropValueBool>(folderItem, name, &value) == 0) return false;
  flag = value != 0;
  return true;
}

bool GetBoolProperty(FolderItem *folderItem, const char *name) {
  bool flag = false;
  return GetBoolProperty(folderItem, name, flag) && flag;
}

}  // namespace quillbar
