// expect: getter and setter disagree in the type
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT
template struct Property<"Height", "Single", GetHeight, SetHeight>;
#else
template struct Property<"Height", "Single", GetHeight, SetHeightInteger>;
#endif

}  // namespace quillbar
