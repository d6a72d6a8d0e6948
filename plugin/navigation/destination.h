#pragma once

#include "plugin/bridge/script_types.h"

/// `Destination`: a place on a page.
namespace quillbar::destination {

void Initialize(Object destination);
void Finalize(Object destination);
void Constructor(Destination *destination);

Destination *CreateDestination(Page *page);
void SetLocation(Destination *destination, Single x, Single y, Single zoom);

}  // namespace quillbar::destination
