#include "plugin/navigation/destination.h"

#include "plugin/document/owned_by_document.h"
#include "plugin/navigation/destination_data.h"

namespace quillbar::destination {

void Initialize(Object object) { DataOf(static_cast<Destination *>(object)).page = nullptr; }

void Finalize(Object object) { Let(DataOf(static_cast<Destination *>(object)).page); }

void Constructor(Destination *destination) { DataOf(destination).page = nullptr; }

Destination *CreateDestination(Page *) { return nullptr; }

void SetLocation(Destination *, Single, Single, Single) {}

}  // namespace quillbar::destination
