// SPDX-License-Identifier: MIT
#include "tests/support/service_names.h"

namespace quillbar::test {

const std::vector<std::string> &ServiceNames() {
  static const std::vector<std::string> names = {"RegisterPluginVersion",
                                                 "REALGetRBVersion",
                                                 "PluginRegisterModule",
                                                 "PluginRegisterClass",
                                                 "pluginObjectType",
                                                 "CreateInstance",
                                                 "REALLockObject",
                                                 "REALUnlockObject",
                                                 "REALUnlockString",
                                                 "PluginGetPluginData",
                                                 "GetEventInstance",
                                                 "REALLoadGlobalMethod",
                                                 "REALLoadObjectMethod",
                                                 "REALGetPropValueString",
                                                 "REALGetPropValueBool",
                                                 "PluginGetStringData",
                                                 "PluginDisposeStringData",
                                                 "StringGetCString",
                                                 "REALBuildStringWithEncoding",
                                                 "REALConvertString",
                                                 "RuntimeStringCompare",
                                                 "RuntimeUBound",
                                                 "PluginUInt16ArrayGetProc",
                                                 "RuntimeArrayDirectGetGetProc",
                                                 "QuillbarReportProgress"};
  return names;
}

std::vector<std::string> EverythingOfAHost() {
  std::vector<std::string> everything = ServiceNames();
  everything.insert(everything.end(),
                    {"LenB( s as string ) as integer", "Len(str as String) as Integer", "Asc(str as String) as Integer",
                     "Mid(src as String, start as Integer, length as Integer) as String",
                     "Left(str as String,count as Integer) as String",
                     "StrComp(a as String, b as String,compareMode as Integer) as Integer",
                     "Constructor(bytes as Integer)", "Operator_Convert() As Ptr"});
  return everything;
}

bool KeepsTheLedger(std::string_view service) {
  return service == "REALLockObject" || service == "REALUnlockObject" || service == "REALUnlockString" ||
         service == "PluginDisposeStringData";
}

}  // namespace quillbar::test
