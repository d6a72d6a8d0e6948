// SPDX-License-Identifier: MIT
// `Image` as it is registered.
#include "plugin/engine/images/image.h"
#include "plugin/image/image_data.h"
#include "plugin/script/forward.h"
#include "plugin/script/wrapper.h"

namespace quillbar {

namespace {

using Life = Wrapper<&ImageData::document>;

/// In pixels; 0 for an image that no document made.
using ImageProperties = Properties<ForwardedReadOnlyProperty<Image, "Height", "Integer", engine::ImageHeight>,
                                   ForwardedReadOnlyProperty<Image, "Width", "Integer", engine::ImageWidth>>;

using ImageMethods = Methods<Method<"Constructor()", Life::Constructor<Image>, kPrivateConstructorFlags>>;

}  // namespace

constinit ClassRecord ImageData::definition =
    DescribeClass<Members<ImageMethods, ImageProperties>, Life::Initialize, Life::Finalize>("Image", nullptr,
                                                                                            sizeof(ImageData));

}  // namespace quillbar
