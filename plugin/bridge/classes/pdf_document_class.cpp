// SPDX-License-Identifier: MIT
// `PDFDocument` as it is registered. Names, declarations and their order are fixed: applications refer to
// them.
#include "plugin/document/document_lifecycle.h"
#include "plugin/document/encryption.h"
#include "plugin/document/errors.h"
#include "plugin/document/information.h"
#include "plugin/document/output.h"
#include "plugin/image/image_members.h"
#include "plugin/navigation/outline.h"
#include "plugin/page/extended_graphics_state.h"
#include "plugin/script/document_data.h"
#include "plugin/script/events.h"
#include "plugin/script/forward.h"
#include "plugin/script/memory_shortage.h"
#include "plugin/text/font_factories.h"

namespace quillbar {

namespace {

using namespace document;

// clang-format off
using DocumentProperties = Properties<
    /// How a viewer opens the file; numbers beyond the enumeration are refused with an error.
    ForwardedProperty<PDFDocument, "Mode", "PDFDocument.DocumentModeEnum", HPDF_GetPageMode, HPDF_SetPageMode>,
    Property<"Author", "String", GetInformation<HPDF_INFO_AUTHOR>, SetInformation<HPDF_INFO_AUTHOR>>,
    Property<"Title", "String", GetInformation<HPDF_INFO_TITLE>, SetInformation<HPDF_INFO_TITLE>>,
    Property<"Subject", "String", GetInformation<HPDF_INFO_SUBJECT>, SetInformation<HPDF_INFO_SUBJECT>>,
    Property<"Creator", "String", GetInformation<HPDF_INFO_CREATOR>, SetInformation<HPDF_INFO_CREATOR>>,
    Property<"KeyWords", "String", GetInformation<HPDF_INFO_KEYWORDS>, SetInformation<HPDF_INFO_KEYWORDS>>,
    ReadOnlyProperty<"LastErrorNumber", "UInt32", GetLastErrorNumber>,
    ReadOnlyProperty<"LastErrorDetailNumber", "UInt32", GetLastErrorDetailNumber>>;

using DocumentMethods = Methods<
    Method<"Constructor()", Constructor>,
    Method<"Constructor(compressor as CompressorHandle)", ConstructorWithCompressor>,
    Method<"AddPage() as Page", AddPage>,
    Method<"Save(f as FolderItem)", Save>,
    Method<"SaveToString() as String", SaveToString>,
    Method<"SaveToMemoryBlock() as MemoryBlock", SaveToMemoryBlock>,
    Method<"GetFont(fontName as String, encoding as Font.FontEncodingEnum) as Font", text::GetFont>,
    Method<"LoadTrueTypeFont(f as FolderItem) as Font", text::LoadTrueTypeFont>,
    Method<"LoadType1Font(afmFile as FolderItem, pfmFile as FolderItem, encoding as Font.FontEncodingEnum) as Font",
           text::LoadType1Font>,
    Method<"LoadImage(image as PixelRaster) as Image", image::LoadImage>,
    Method<"LoadJPEGImage(imageBuffer as String) as Image", image::LoadJPEGImage>,
    Method<"ClearError()", ClearError>,
    Method<"CreateExtendedGraphicsState() as ExtendedGraphicsState",
           extended_graphics_state::CreateExtendedGraphicsState>,
    Method<"CreateOutline(parentOutLine as Outline, title as String) as Outline", outline::CreateOutline>,
    Method<"SetPassword(ownerPassword as String, userPassword as String)", SetPassword>,
    Method<"SetEncryptionMode(mode as PDFDocument.EncryptModeEnum, keyLength as Integer)", SetEncryptionMode>>;

using DocumentEnumerations = Enumerations<
    Enumeration<DocumentMode, "DocumentModeEnum", "Integer",
                "USE_NONE = 0", "USE_OUTLINE = 1", "USE_THUMBS = 2", "FULL_SCREEN = 3">,
    Enumeration<LanguageScript, "LanguageScript", "Integer",
                "LANGUAGE_SCRIPT_UNKNOWN = 0", "LANGUAGE_SCRIPT_GREEK = 1", "LANGUAGE_SCRIPT_CYRILLIC = 2",
                "LANGUAGE_SCRIPT_HEBREW = 3", "LANGUAGE_SCRIPT_DEVANAGARI = 4", "LANGUAGE_SCRIPT_THAI = 5",
                "LANGUAGE_SCRIPT_KOREAN = 6", "LANGUAGE_SCRIPT_JAPANESE = 7",
                "LANGUAGE_SCRIPT_CJK_UNIFIEDIDEOGRAPHS = 8">,
    Enumeration<EncryptMode, "EncryptModeEnum", "Integer", "ENCRYPT_R2 = 2", "ENCRYPT_R3 = 3">>;
// clang-format on

}  // namespace

constinit ClassRecord DocumentData::definition =
    DescribeClass<Members<DocumentMethods, DocumentProperties, PDFDocumentEvents, DocumentEnumerations>, Initialize,
                  Finalize>("PDFDocument", nullptr, sizeof(DocumentData));

}  // namespace quillbar
