// SPDX-License-Identifier: MIT
#include "plugin/engine/images/image.h"

namespace quillbar::engine {

namespace {

HPDF_UINT NumberOf(HPDF_Image image, const char *key) {
  if (image == nullptr) return 0;
  const auto *number = static_cast<HPDF_Number>(HPDF_Dict_GetItem(image, key, HPDF_OCLASS_NUMBER));
  return number == nullptr ? 0 : static_cast<HPDF_UINT>(number->value);
}

HPDF_STATUS Add(HPDF_Image image, const ImageEntry &entry) {
  return entry.name != nullptr ? HPDF_Dict_AddName(image, entry.key, entry.name)
                               : HPDF_Dict_AddNumber(image, entry.key, static_cast<HPDF_INT32>(entry.number));
}

}  // namespace

const char *DeviceColorSpace(std::size_t componentCount) {
  switch (componentCount) {
    case 1:
      return "DeviceGray";
    case 3:
      return "DeviceRGB";
    case 4:
      return "DeviceCMYK";
    default:
      return nullptr;
  }
}

HPDF_Image NewImage(HPDF_Doc document, std::initializer_list<ImageEntry> entries) {
  const HPDF_Image image = HPDF_DictStream_New(document->mmgr, document->xref);
  if (image == nullptr) return nullptr;
  image->header.obj_class |= HPDF_OSUBCLASS_XOBJECT;
  HPDF_STATUS status = Add(image, {"Type", "XObject"});
  if (status == HPDF_OK) status = Add(image, {"Subtype", "Image"});
  for (const ImageEntry &entry : entries) {
    if (status == HPDF_OK) status = Add(image, entry);
  }
  return status == HPDF_OK ? image : nullptr;
}

HPDF_UINT ImageWidth(HPDF_Image image) { return NumberOf(image, "Width"); }

HPDF_UINT ImageHeight(HPDF_Image image) { return NumberOf(image, "Height"); }

}  // namespace quillbar::engine
