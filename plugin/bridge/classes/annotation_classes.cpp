// SPDX-License-Identifier: MIT
// `Annotation` and its three subclasses as they are registered. The subclasses add no data of their own: the
// superclass's constructor and destructor serve them.
#include "plugin/navigation/annotation_data.h"
#include "plugin/script/forward.h"
#include "plugin/script/wrapper.h"

namespace quillbar {

namespace {

using Life = Wrapper<&AnnotationData::page>;

using AnnotationMethods = Methods<Method<"Constructor()", Life::Constructor<Annotation>, kPrivateConstructorFlags>>;

// clang-format off
using TextAnnotationMethods = Methods<
    Method<"Constructor()", Life::Constructor<TextAnnotation>, kPrivateConstructorFlags>,
    /// The note's picture; numbers beyond the enumeration are refused with error 4210.
    ForwardedMethod<TextAnnotation, "SetIcon(icon as TextAnnotation.AnnotationIconEnum)", HPDF_TextAnnot_SetIcon>,
    /// The note's colour; its top byte is not used.
    ForwardedMethod<TextAnnotation, "SetColor(value as Color)", HPDF_Annot_SetRGBColor>,
    /// Whether viewers show the note's window from the start.
    ForwardedMethod<TextAnnotation, "SetOpened(value as Boolean)", HPDF_TextAnnot_SetOpened>>;

using TextAnnotationEnumerations = Enumerations<
    Enumeration<AnnotationIcon, "AnnotationIconEnum", "Integer",
                "COMMENT = 0", "KEY = 1", "NOTE = 2", "HELP = 3", "NEW_PARAGRAPH = 4", "PARAGRAPH = 5",
                "INSERT = 6">>;
// clang-format on

using UrlAnnotationMethods =
    Methods<Method<"Constructor()", Life::Constructor<URLAnnotation>, kPrivateConstructorFlags>>;

using LinkAnnotationMethods =
    Methods<Method<"Constructor()", Life::Constructor<LinkAnnotation>, kPrivateConstructorFlags>>;

}  // namespace

constinit ClassRecord AnnotationData::definition =
    DescribeClass<Members<AnnotationMethods>, Life::Initialize, Life::Finalize>("Annotation", nullptr,
                                                                                sizeof(AnnotationData));

constinit ClassRecord textAnnotationDefinition =
    DescribeClass<Members<TextAnnotationMethods, Properties<>, Events<>, TextAnnotationEnumerations>>("TextAnnotation",
                                                                                                      "Annotation", 0);

constinit ClassRecord urlAnnotationDefinition =
    DescribeClass<Members<UrlAnnotationMethods>>("URLAnnotation", "Annotation", 0);

constinit ClassRecord linkAnnotationDefinition =
    DescribeClass<Members<LinkAnnotationMethods>>("LinkAnnotation", "Annotation", 0);

}  // namespace quillbar
