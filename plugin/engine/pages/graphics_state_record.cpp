// SPDX-License-Identifier: MIT
#include "plugin/engine/pages/graphics_state_record.h"

#include <hpdf_utils.h>

namespace quillbar::engine {

namespace {

HPDF_GState Allocate(HPDF_MMgr memory, const HPDF_GState_Rec &values) {
  auto *state = static_cast<HPDF_GState>(HPDF_GetMem(memory, sizeof(HPDF_GState_Rec)));
  if (state != nullptr) *state = values;
  return state;
}

}  // namespace

HPDF_GState NewGraphicsState(HPDF_MMgr memory) {
  // Whatever isn't named is 0: black, no spacing, horizontal writing, no font.
  HPDF_GState_Rec values{};
  values.trans_matrix = {1, 0, 0, 1, 0, 0};
  values.line_width = HPDF_DEF_LINEWIDTH;
  values.line_cap = HPDF_DEF_LINECAP;
  values.line_join = HPDF_DEF_LINEJOIN;
  values.miter_limit = HPDF_DEF_MITERLIMIT;
  values.flatness = HPDF_DEF_FLATNESS;
  values.h_scalling = HPDF_DEF_HSCALING;
  values.rendering_mode = HPDF_DEF_RENDERING_MODE;
  values.cs_fill = HPDF_CS_DEVICE_GRAY;
  values.cs_stroke = HPDF_CS_DEVICE_GRAY;
  values.writing_mode = HPDF_WMODE_HORIZONTAL;
  values.depth = 1;
  return Allocate(memory, values);
}

HPDF_GState CopyOfGraphicsState(HPDF_MMgr memory, HPDF_GState state) {
  HPDF_GState_Rec values = *state;
  values.prev = state;
  ++values.depth;
  return Allocate(memory, values);
}

HPDF_GState FreeGraphicsState(HPDF_MMgr memory, HPDF_GState state) {
  HPDF_GState saved = state->prev;
  HPDF_FreeMem(memory, state);
  return saved;
}

}  // namespace quillbar::engine
