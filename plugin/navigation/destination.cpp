// SPDX-License-Identifier: MIT
#include "plugin/navigation/destination.h"

#include "plugin/guard/library_call.h"
#include "plugin/navigation/destination_data.h"
#include "plugin/page/page_data.h"
#include "plugin/script/wrapper.h"

namespace quillbar::destination {

Destination *CreateDestination(Page *page) {
  const HPDF_Destination handle = Call<HPDF_Page_CreateDestination>(DataOf(page).pageHandle);
  auto *destination = static_cast<Destination *>(CreateInstance<"QuillbarPDFWriter.Destination">());
  if (destination == nullptr) return nullptr;
  DestinationData &data = DataOf(destination);
  data.destinationHandle = handle;
  data.libraryDocument = DataOf(page).libraryDocument;
  data.page = Retain(page);
  return destination;
}

void SetLocation(Destination *destination, Single x, Single y, Single zoom) {
  // The nearest Single is below 0.08, so the library refuses what this raises too. Scripts rely on it: a zoom that is
  // too small changes no view and gives an error.
  if (static_cast<double>(zoom) < 0.08) zoom = 0.08F;
  Call<HPDF_Destination_SetXYZ>(DataOf(destination).destinationHandle, x, y, zoom);
}

}  // namespace quillbar::destination
