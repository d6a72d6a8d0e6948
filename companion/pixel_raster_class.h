// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "companion/pixel_raster/raster_image.h"
#include "interface/pixel_raster.h"
#include "interface/values.h"

/// `PixelRaster`: a picture in memory that scripts create, draw pixel by pixel or load from a file, and pass to
/// others.
namespace quillbar::companion {

using PixelRaster = Instance<"PixelRaster">;

/// The private data of a `PixelRaster`: what other plugins read, then what is the class's own.
struct PixelRasterData {
  PixelRasterRecord record;
  RasterImage *image;  // null while there are no pixels
  std::string *error;  // why loading failed last; null if it didn't

  static ClassRecord definition;
};

}  // namespace quillbar::companion
