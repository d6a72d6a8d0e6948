// SPDX-License-Identifier: MIT
#include "plugin/text/converted_text.h"

#include "binding/service.h"

namespace quillbar::text {

Integer ConvertedText::CharactersIn(HPDF_UINT byteCount) const {
  const OwnedString part(
      CallHost<service::BuildStringWithEncoding>(bytes_.bytes(), static_cast<int>(byteCount), hostEncoding_));
  return CallHost<global_method::Len>(part.get());
}

}  // namespace quillbar::text
