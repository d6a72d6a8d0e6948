// expect: the setter of a method takes its parameters and then a value of its result's type
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

Single GetCell(Page *, Integer) { return 0; }
void SetCell(Page *, Integer, Single) {}
void SetCellToInteger(Page *, Integer, Integer) {}

#ifdef RIGHT_LINE
template struct AssignableMethod<"Cell(index as Integer) as Single", GetCell, SetCell>;
#else
template struct AssignableMethod<"Cell(index as Integer) as Single", GetCell, SetCellToInteger>;
#endif

}  // namespace quillbar
