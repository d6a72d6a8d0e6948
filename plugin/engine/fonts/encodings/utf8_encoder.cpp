// SPDX-License-Identifier: MIT
// The "UTF-8" encoder, in place of libharu's hpdf_encoder_utf.c: there a broken lead byte swallows the bytes after it,
// and every code point above U+FFFF becomes a space. Text in TrueType fonts is decoded by truetype_type0_font.cpp;
// this encoder tells the library which bytes belong together and serves texts outside pages.
#include "plugin/engine/fonts/encodings/utf8_encoder.h"

#include <hpdf_utils.h>

#include "plugin/engine/fonts/encodings/utf8_text.h"

namespace {

// The library asks for the type of each byte in order, and after the one that completes a character for its code, of
// which it passes one byte only; the character is kept here in between.
struct Utf8Attributes {
  HPDF_CMapEncoderAttr_Rec common;
  char32_t character;
  HPDF_UINT restBytes;
};

Utf8Attributes &AttributesOf(HPDF_Encoder encoder) { return *static_cast<Utf8Attributes *>(encoder->attr); }

HPDF_ByteType TypeOfByte(HPDF_Encoder encoder, HPDF_ParseText_Rec *state) {
  Utf8Attributes &own = AttributesOf(encoder);
  if (state->index == 0) own.restBytes = 0;
  if (state->index >= state->len) return HPDF_BYTE_TYPE_UNKNOWN;
  const HPDF_UINT index = state->index++;
  if (own.restBytes > 0) {
    --own.restBytes;
    return HPDF_BYTE_TYPE_TRIAL;
  }
  const auto next = quillbar::engine::DecodeUtf8({state->text + index, state->len - index});
  own.character = next.character;
  own.restBytes = next.length - 1;
  return HPDF_BYTE_TYPE_SINGLE;
}

// One UTF-16 unit is all that the library takes; U+FFFD says that there was a character.
HPDF_UNICODE ToUnicode(HPDF_Encoder encoder, HPDF_UINT16) {
  const char32_t character = AttributesOf(encoder).character;
  return character > 0xFFFF ? HPDF_UNICODE{0xFFFD} : static_cast<HPDF_UNICODE>(character);
}

HPDF_STATUS Initialize(HPDF_Encoder encoder) {
  auto *own = static_cast<Utf8Attributes *>(HPDF_GetMem(encoder->mmgr, sizeof(Utf8Attributes)));
  // Raised, because libharu would take it for an unknown encoding.
  if (own == nullptr) return HPDF_CheckError(encoder->error);
  HPDF_MemSet(own, 0, sizeof(Utf8Attributes));
  own->common.writing_mode = HPDF_WMODE_HORIZONTAL;
  encoder->attr = own;
  encoder->byte_type_fn = TypeOfByte;
  encoder->to_unicode_fn = ToUnicode;
  encoder->type = HPDF_ENCODER_TYPE_DOUBLE_BYTE;
  return HPDF_OK;
}

}  // namespace

bool quillbar::engine::IsUtf8Encoder(HPDF_Encoder encoder) { return encoder->byte_type_fn == TypeOfByte; }

extern "C" HPDF_STATUS HPDF_UseUTFEncodings(HPDF_Doc document) {
  if (!HPDF_HasDoc(document)) return HPDF_INVALID_DOCUMENT;
  char name[] = "UTF-8";
  HPDF_Encoder encoder = HPDF_CMapEncoder_New(document->mmgr, name, Initialize);
  return HPDF_Doc_RegisterEncoder(document, encoder);
}
