// SPDX-License-Identifier: MIT
// Opacity and blend modes: dictionaries of graphics state parameters (ISO 32000-1, 8.4.5), which can be changed until a
// page uses them.
#include <hpdf.h>
#include <hpdf_ext_gstate.h>

#include <array>
#include <utility>

#include "plugin/engine/objects/enumeration_numbers.h"
#include "plugin/engine/objects/unfinished_object.h"

namespace {

using quillbar::engine::EnteredIn;
using quillbar::engine::UnfinishedDictionary;

constexpr HPDF_UINT kChangeable = HPDF_OSUBCLASS_EXT_GSTATE | HPDF_OCLASS_DICT;
constexpr HPDF_UINT kUsed = HPDF_OSUBCLASS_EXT_GSTATE_R | HPDF_OCLASS_DICT;

// The blend modes (ISO 32000-1, tables 136 and 137), in the order of HPDF_BlendMode.
constexpr std::array kBlendModes{"Normal",     "Multiply",  "Screen",    "Overlay",   "Darken",     "Lighten",
                                 "ColorDodge", "ColorBurn", "HardLight", "SoftLight", "Difference", "Exclusion"};
static_assert(kBlendModes.size() == HPDF_BM_EOF);

// Reports HPDF_EXT_GSTATE_READ_ONLY for a state that a page uses.
HPDF_STATUS CheckChangeable(HPDF_ExtGState state) {
  if (!HPDF_ExtGState_Validate(state)) return HPDF_INVALID_OBJECT;
  if (state->header.obj_class == kChangeable) return HPDF_OK;
  return HPDF_RaiseError(state->error, HPDF_EXT_GSTATE_READ_ONLY, 0);
}

HPDF_STATUS SetOpacity(HPDF_ExtGState state, const char *key, HPDF_REAL opacity) {
  if (const HPDF_STATUS status = CheckChangeable(state); status != HPDF_OK) return status;
  if (opacity < 0 || opacity > 1) return HPDF_RaiseError(state->error, HPDF_EXT_GSTATE_OUT_OF_RANGE, 0);
  return HPDF_Dict_AddReal(state, key, opacity);
}

}  // namespace

extern "C" {

/// A new state without parameters. Null, with the failure marked, when memory is short.
HPDF_ExtGState HPDF_ExtGState_New(HPDF_MMgr memory, HPDF_Xref xref) {
  UnfinishedDictionary state(HPDF_Dict_New(memory));
  if (state == nullptr || HPDF_Dict_AddName(state.get(), "Type", "ExtGState") != HPDF_OK) return nullptr;
  state->header.obj_class |= HPDF_OSUBCLASS_EXT_GSTATE;
  return EnteredIn(xref, std::move(state));
}

HPDF_BOOL HPDF_ExtGState_Validate(HPDF_ExtGState state) {
  return state != nullptr && (state->header.obj_class == kChangeable || state->header.obj_class == kUsed);
}

/// Sets the opacity of strokes, from 0 to 1; HPDF_EXT_GSTATE_OUT_OF_RANGE otherwise.
HPDF_STATUS HPDF_ExtGState_SetAlphaStroke(HPDF_ExtGState state, HPDF_REAL opacity) {
  return SetOpacity(state, "CA", opacity);
}

/// Sets the opacity of all else, from 0 to 1; HPDF_EXT_GSTATE_OUT_OF_RANGE otherwise.
HPDF_STATUS HPDF_ExtGState_SetAlphaFill(HPDF_ExtGState state, HPDF_REAL opacity) {
  return SetOpacity(state, "ca", opacity);
}

/// Sets the blend mode. A number beyond the modes is HPDF_EXT_GSTATE_OUT_OF_RANGE.
QUILLBAR_ANY_ENUMERATION_NUMBER HPDF_STATUS HPDF_ExtGState_SetBlendMode(HPDF_ExtGState state, HPDF_BlendMode mode) {
  if (const HPDF_STATUS status = CheckChangeable(state); status != HPDF_OK) return status;
  const auto number = static_cast<HPDF_UINT>(mode);
  if (number >= kBlendModes.size()) return HPDF_RaiseError(state->error, HPDF_EXT_GSTATE_OUT_OF_RANGE, 0);
  return HPDF_Dict_AddName(state, "BM", kBlendModes[number]);
}

}  // extern "C"
