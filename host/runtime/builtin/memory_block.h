// SPDX-License-Identifier: MIT
#pragma once

#include "interface/records.h"

namespace quillbar::host {

/// The record of the class MemoryBlock: a run of bytes with typed access. Offsets count bytes from 0; access out of
/// bounds raises an error. Numbers are in the machine's byte order unless `LittleEndian` is changed.
ClassRecord &MemoryBlockRecord();

}  // namespace quillbar::host
