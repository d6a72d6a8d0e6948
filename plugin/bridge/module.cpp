// SPDX-License-Identifier: MIT
#include "plugin/bridge/module.h"

#include "plugin/image/image_data.h"
#include "plugin/navigation/annotation_data.h"
#include "plugin/navigation/destination_data.h"
#include "plugin/navigation/outline_data.h"
#include "plugin/page/extended_graphics_state_data.h"
#include "plugin/page/page_data.h"
#include "plugin/script/document_data.h"
#include "plugin/text/font_data.h"

namespace quillbar {

constinit const std::array<ClassRecord *, 11> moduleClasses = {
    &DocumentData::definition, &PageData::definition,        &FontData::definition,
    &ImageData::definition,    &AnnotationData::definition,  &textAnnotationDefinition,
    &urlAnnotationDefinition,  &linkAnnotationDefinition,    &ExtendedGraphicsStateData::definition,
    &OutlineData::definition,  &DestinationData::definition,
};

constinit ModuleRecord moduleDefinition = {
    .version = kInterfaceVersion,
    .name = "QuillbarPDFWriter",
    .methods = nullptr,
    .methodCount = 0,
    .constants = nullptr,
    .constantCount = 0,
    .properties = nullptr,
    .propertyCount = 0,
    .structures = nullptr,
    .structureCount = 0,
    .enumerations = nullptr,
    .enumerationCount = 0,
    .attributes = nullptr,
    .attributeCount = 0,
    .delegates = nullptr,
    .delegateCount = 0,
    .classes = moduleClasses.data(),
    .classCount = moduleClasses.size(),
    .interfaces = nullptr,
    .interfaceCount = 0,
    .modules = nullptr,
    .moduleCount = 0,
    .controls = nullptr,
    .controlCount = 0,
};

}  // namespace quillbar
