// SPDX-License-Identifier: MIT
// `Annotation` and its three subclasses as they are registered. The subclasses add no data of their own: the
// superclass's constructor and destructor serve them.
#include "binding/members.h"
#include "plugin/navigation/annotation.h"
#include "plugin/navigation/annotation_data.h"

namespace quillbar {

namespace {

using namespace annotation;

using AnnotationMethods = Methods<Method<"Constructor()", Constructor, kPrivateConstructorFlags>>;

// clang-format off
using TextAnnotationMethods = Methods<
    Method<"Constructor()", TextConstructor, kPrivateConstructorFlags>,
    Method<"SetIcon(icon as TextAnnotation.AnnotationIconEnum)", SetIcon>,
    Method<"SetColor(value as Color)", SetColor>,
    Method<"SetOpened(value as Boolean)", SetOpened>>;

using TextAnnotationEnumerations = Enumerations<
    Enumeration<AnnotationIcon, "AnnotationIconEnum", "Integer",
                "COMMENT = 0", "KEY = 1", "NOTE = 2", "HELP = 3", "NEW_PARAGRAPH = 4", "PARAGRAPH = 5",
                "INSERT = 6">>;
// clang-format on

using UrlAnnotationMethods = Methods<Method<"Constructor()", UrlConstructor, kPrivateConstructorFlags>>;

using LinkAnnotationMethods = Methods<Method<"Constructor()", LinkConstructor, kPrivateConstructorFlags>>;

}  // namespace

constinit ClassRecord AnnotationData::definition =
    DescribeClass<Members<AnnotationMethods>>("Annotation", nullptr, sizeof(AnnotationData), Initialize, Finalize);

constinit ClassRecord textAnnotationDefinition =
    DescribeClass<Members<TextAnnotationMethods, Properties<>, Events<>, TextAnnotationEnumerations>>(
        "TextAnnotation", "Annotation", 0, nullptr, nullptr);

constinit ClassRecord urlAnnotationDefinition =
    DescribeClass<Members<UrlAnnotationMethods>>("URLAnnotation", "Annotation", 0, nullptr, nullptr);

constinit ClassRecord linkAnnotationDefinition =
    DescribeClass<Members<LinkAnnotationMethods>>("LinkAnnotation", "Annotation", 0, nullptr, nullptr);

}  // namespace quillbar
