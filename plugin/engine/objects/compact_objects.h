// SPDX-License-Identifier: MIT
/// Kinds of direct objects that libharu doesn't have, for what every page has: they take one block of memory or none.
#pragma once

#include <hpdf.h>
#include <hpdf_objects.h>

namespace quillbar::engine {

/// Their classes, beside libharu's HPDF_OCLASS_*.
constexpr HPDF_UINT16 kBoxClass = 0x0013, kConstantClass = 0x0014;

/// A rectangle (ISO 32000-1, 7.9.5). Libharu's is an array of four objects.
struct BoxObject {
  HPDF_Obj_Header header;
  HPDF_Box box;
};

/// An object that is written as `text` says, whatever the document: dictionaries share it, and none changes or frees it.
struct ConstantObject {
  HPDF_Obj_Header header;
  const char *text;
};

constexpr ConstantObject Constant(const char *text) { return {{HPDF_OTYPE_DIRECT, 0, kConstantClass}, text}; }

/// A new rectangle under `key`, which `owner` must not have yet; it owns it. HPDF_OK or the reason, which is in the error
/// record too.
HPDF_STATUS AddBox(HPDF_Dict owner, const char *key, const HPDF_Box &box);

/// The same for a constant, which must live longer than `owner`.
HPDF_STATUS AddConstant(HPDF_Dict owner, const char *key, const ConstantObject &constant);

/// `[ left bottom right top ]`, as an array of reals is written.
HPDF_STATUS WriteBox(const BoxObject &object, HPDF_Stream stream);

}  // namespace quillbar::engine
