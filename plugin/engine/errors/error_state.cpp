// SPDX-License-Identifier: MIT
// The library's error module.
//
// libharu's HPDF_RaiseError and HPDF_CheckError call the document's handler and then return the error record's code. A
// handler that resets the record turns the failure into a success: the refused operator is written nevertheless, a
// half-built object stays. Some eighty more places return that code after a callee has failed.
//
// Here the code raised is what is returned, and inside a guarded call (plugin/guard/library_call.h) the handler runs
// only when the call has left the library. Until then the record keeps the failure, so all of those places return it.
#include "plugin/engine/errors/error_state.h"

namespace {

void RunHandler(HPDF_Error error, HPDF_STATUS code, HPDF_STATUS detail) {
  if (error->error_fn == nullptr) return;
  ++error->handler_depth;
  error->error_fn(code, detail, error->user_data);
  --error->handler_depth;
}

}  // namespace

namespace quillbar::engine {

HPDF_STATUS FinishFailedCall(HPDF_Error error, HPDF_STATUS bareStatus) {
  HPDF_STATUS code = error->raised_no;
  HPDF_STATUS detail = error->raised_detail_no;
  if (code == HPDF_OK) {
    code = error->error_no;
    detail = error->detail_no;
  }
  if (code == HPDF_OK) {
    code = bareStatus;
    detail = 0;
  }
  error->call_depth = 0;
  error->raised_no = HPDF_OK;
  error->raised_detail_no = 0;
  HPDF_Error_Reset(error);
  RunHandler(error, code, detail);
  HPDF_Error_Reset(error);
  return code;
}

HPDF_STATUS NoteShortage(HPDF_Error error) noexcept {
  if (error != nullptr) HPDF_SetError(error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  return HPDF_FAILD_TO_ALLOC_MEM;
}

void ReportShortage(HPDF_Doc document) {
  if (document == nullptr) return;
  NoteShortage(&document->error);
  if (document->error.call_depth == 0) FinishFailedCall(&document->error, HPDF_OK);
}

}  // namespace quillbar::engine

extern "C" {

void HPDF_Error_Init(HPDF_Error error, void *userData) {
  *error = HPDF_Error_Rec{};
  error->user_data = userData;
}

void HPDF_Error_Reset(HPDF_Error error) {
  error->error_no = HPDF_NOERROR;
  error->detail_no = HPDF_NOERROR;
}

HPDF_STATUS HPDF_Error_GetCode(HPDF_Error error) { return error->error_no; }

HPDF_STATUS HPDF_Error_GetDetailCode(HPDF_Error error) { return error->detail_no; }

HPDF_STATUS HPDF_SetError(HPDF_Error error, HPDF_STATUS code, HPDF_STATUS detail) {
  error->error_no = code;
  error->detail_no = detail;
  return code;
}

HPDF_STATUS HPDF_CheckError(HPDF_Error error) {
  const HPDF_STATUS code = error->error_no;
  if (code == HPDF_OK) return error->raised_no;
  if (error->call_depth == 0) {
    RunHandler(error, code, error->detail_no);
  } else if (error->raised_no == HPDF_OK) {
    error->raised_no = code;
    error->raised_detail_no = error->detail_no;
  }
  return code;
}

HPDF_STATUS HPDF_RaiseError(HPDF_Error error, HPDF_STATUS code, HPDF_STATUS detail) {
  HPDF_SetError(error, code, detail);
  return HPDF_CheckError(error);
}

}  // extern "C"
