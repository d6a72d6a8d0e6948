// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>
#include <hpdf_streams.h>

namespace quillbar::engine {

/// A stream record of this type without functions or attributes.
HPDF_Stream_Rec NewStreamRecord(HPDF_MMgr memory, HPDF_StreamType type);

/// The same in memory of its own, to be freed with HPDF_Stream_Free. Null, with the
/// error record set, when memory is short.
HPDF_Stream NewStream(HPDF_MMgr memory, HPDF_StreamType type);

}  // namespace quillbar::engine
