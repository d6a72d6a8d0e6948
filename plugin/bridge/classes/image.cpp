// SPDX-License-Identifier: MIT
// `Image` as it is registered.
#include "plugin/image/image.h"

#include "binding/members.h"
#include "plugin/image/image_data.h"

namespace quillbar {

namespace {

using namespace image;

using ImageProperties =
    Properties<ReadOnlyProperty<"Height", "Integer", GetHeight>, ReadOnlyProperty<"Width", "Integer", GetWidth>>;

using ImageMethods = Methods<Method<"Constructor()", Constructor, kPrivateConstructorFlags>>;

}  // namespace

constinit ClassRecord ImageData::definition =
    DescribeClass<Members<ImageMethods, ImageProperties>>("Image", nullptr, sizeof(ImageData), Initialize, Finalize);

}  // namespace quillbar
