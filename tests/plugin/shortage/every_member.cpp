// SPDX-License-Identifier: MIT
#include "tests/plugin/shortage/every_member.h"

#include <array>

#include "tests/support/jpeg_maker.h"
#include "tests/support/real_fonts.h"
#include "tests/support/utf8_path.h"

namespace quillbar::test {

namespace {

using host::Value;

std::set<std::string> &Used() {
  static std::set<std::string> members;
  return members;
}

// A variable whose members do nothing where a factory gave Nil.
class Variable {
 public:
  Variable(const char *className, host::Host &host, host::ObjectHandle handle)
      : className_(className), host_(&host), handle_(std::move(handle)) {}

  bool IsNil() const { return handle_.IsNil(); }
  operator Value() const { return handle_; }  // NOLINT: objects are arguments
  const host::ObjectHandle &handle() const { return handle_; }

  template <class... Arguments>
  Value Call(const char *method, const Arguments &...arguments) const {
    Note(method);
    return IsNil() ? Value() : host_->Call(handle_, method, {Value(arguments)...});
  }
  template <class... Arguments>
  Variable Make(const char *className, const char *method, const Arguments &...arguments) const {
    const Value made = Call(method, arguments...);
    return {className, *host_, IsNil() ? host::ObjectHandle() : made.AsObject()};
  }
  template <std::size_t Count>
  void CallByRef(const char *method, std::array<Value, Count> arguments) const {
    Note(method);
    if (!IsNil()) host_->CallByRef(handle_, method, arguments);
  }
  void Get(const char *property) const {
    Note(property);
    if (!IsNil()) host_->Get(handle_, property);
  }
  void Set(const char *property, const Value &value) const {
    Note(property);
    if (!IsNil()) host_->Set(handle_, property, value);
  }
  void SetAndGet(const char *property, const Value &value) const {
    Set(property, value);
    Get(property);
  }

 private:
  void Note(const char *member) const { Used().insert(std::string(className_) + "." + member); }

  const char *className_;
  host::Host *host_;
  host::ObjectHandle handle_;
};

Variable NewObject(host::Host &host, const char *className, std::initializer_list<Value> arguments = {}) {
  Used().insert(std::string(className) + ".Constructor");
  return {className, host, host.Create(className, arguments)};
}

Value FolderItem(host::Host &host, const std::filesystem::path &path) {
  return host.Create("FolderItem", {Utf8(path)});
}

Value Bytes(std::string_view bytes) { return host::StringHandle::FromBytes(bytes, TextEncoding::kRawBytes); }

const std::string &Jpeg() {
  static const std::string file = MakeJpeg({});
  return file;
}

void Draw(const Variable &page) {
  for (const char *property : {"Height", "Width"}) page.SetAndGet(property, 700.0F);
  page.Call("SetSize", 3, 0);
  page.Get("GraphicsMode");
  page.SetAndGet("TransformCoordinates", true);
  page.SetAndGet("FillColor", host::Value(0x336699));
  page.SetAndGet("StrokeColor", host::Value(0x993366));
  page.SetAndGet("LineWidth", 2.0F);
  page.SetAndGet("LineCapType", 1);
  page.SetAndGet("LineJoinType", 1);
  page.Call("SetCMYKFill", 0.1F, 0.2F, 0.3F, 0.4F);
  page.Call("SetCMYKStroke", 0.1F, 0.2F, 0.3F, 0.4F);
  page.Call("SetRGBFill", 0.1F, 0.2F, 0.3F);
  page.Call("SetRGBStroke", 0.1F, 0.2F, 0.3F);
  host::ArrayHandle dashes = host::ArrayHandle::Create(host::TypeKind::kUInt16, 2);
  dashes.Set(0, 3);
  dashes.Set(1, 2);
  page.Call("SetDashPattern", dashes, 1);
  page.Call("ResetDashPattern");
  page.Call("SaveState");
  page.Call("ConcatMatrix", 1.0F, 0.0F, 0.0F, 1.0F, 5.0F, 5.0F);
  page.Call("MoveTo", 10.0F, 10.0F);
  page.Call("LineTo", 20.0F, 10.0F);
  page.Call("CurveTo", 20.0F, 20.0F, 30.0F, 30.0F, 40.0F, 40.0F);
  page.Call("CurveTo2", 20.0F, 20.0F, 30.0F, 30.0F);
  page.Call("CurveTo3", 20.0F, 20.0F, 30.0F, 30.0F);
  page.Call("Draw");
  page.Call("Rectangle", 10.0F, 10.0F, 50.0F, 20.0F);
  page.Call("Fill");
  page.Call("Ellipse", 100.0F, 100.0F, 20.0F, 10.0F);
  page.Call("FillAndDraw");
  page.Call("Arc", 100.0F, 100.0F, 20.0F, 0.0F, 90.0F);
  page.Call("Clip");
  page.Call("EndPath");
  page.Call("RestoreState");
}

void Show(const Variable &page, const Variable &font, const char *text) {
  page.Call("BeginText");
  page.Call("SetFont", font, 12.0F);
  page.SetAndGet("TextLeading", 14.0F);
  page.SetAndGet("TextRise", 0.0F);
  page.SetAndGet("WordSpace", 1.0F);
  page.SetAndGet("TextRenderingMode", 0);
  page.Call("SuggestedTextLeading");
  page.Call("MoveTextPosition", 50.0F, 50.0F);
  page.Call("ShowText", text);
  page.Call("MoveTextPositionNextLine");
  page.Call("ShowTextNextLine", text);
  page.Call("MeasureText", text, 100.0F, true);
  page.CallByRef("MeasureText", std::array<Value, 4>{Value(text), Value(100.0F), Value(false), Value(0.0F)});
  page.CallByRef("TextRectMeasure", std::array<Value, 3>{Value(text), Value(40.0F), Value(0)});
  page.CallByRef("TextRect", std::array<Value, 7>{Value(text), Value(50.0F), Value(200.0F), Value(120.0F),
                                                  Value(300.0F), Value(3), Value(0)});
  page.CallByRef("TextRectBaseline", std::array<Value, 7>{Value(text), Value(50.0F), Value(400.0F), Value(90.0F),
                                                          Value(60.0F), Value(2), Value(0)});
  page.CallByRef("GetCurrentTextPosition", std::array<Value, 2>{Value(0.0F), Value(0.0F)});
  page.Call("SetTextMatrix", 1.0F, 0.0F, 0.0F, 1.0F, 50.0F, 500.0F);
  page.Call("SetTextRotation", 30.0F, 50.0F, 500.0F);
  page.Call("ShowText", text);
  page.Call("EndText");
}

void Describe(const Variable &font) {
  for (const char *property :
       {"Descent", "Ascent", "Name", "BoundingBoxLeft", "BoundingBoxRight", "BoundingBoxTop", "BoundingBoxBottom"}) {
    font.Get(property);
  }
}

void AddPictures(host::Host &host, const Variable &document, const Variable &page) {
  const Variable raster = NewObject(host, "PixelRaster", {5, 4, 4});
  raster.Call("Fill", 0x80FF0000);
  for (const Variable &image :
       {document.Make("Image", "LoadImage", raster), document.Make("Image", "LoadJPEGImage", Bytes(Jpeg()))}) {
    image.Get("Height");
    image.Get("Width");
    if (!image.IsNil()) page.Call("DrawImage", image, 10.0F, 10.0F, 20.0F, 20.0F);
  }
}

void AddState(const Variable &document, const Variable &page) {
  const Variable state = document.Make("ExtendedGraphicsState", "CreateExtendedGraphicsState");
  state.Call("SetAlphaFill", 0.5F);
  state.Call("SetAlphaStroke", 0.5F);
  state.Call("SetBlendMode", 1);
  page.Call("SetExtendedState", state);
}

void AddNavigation(const Variable &document, const Variable &page) {
  const Variable destination = page.Make("Destination", "CreateDestination");
  destination.Call("SetLocation", 0.0F, 100.0F, 1.0F);
  const Variable chapter = document.Make("Outline", "CreateOutline", Value::Nil(), "Überschrift");
  chapter.Call("SetDestination", destination);
  chapter.SetAndGet("Opened", false);
  document.Make("Outline", "CreateOutline", chapter, "Below").Call("SetDestination", destination);
  const Variable note = page.Make("TextAnnotation", "CreateTextAnnotation", "Größe", 10.0F, 10.0F, 50.0F, 50.0F);
  note.Call("SetIcon", 1);
  note.Call("SetColor", Value(0xFFFF00));
  note.Call("SetOpened", true);
  page.Call("CreateURLAnnotation", "https://example.com/", 10.0F, 10.0F, 50.0F, 50.0F);
  page.Call("CreateLinkAnnotation", destination, 10.0F, 10.0F, 50.0F, 50.0F);
}

}  // namespace

std::set<std::string> UsedMembers() { return Used(); }

ScriptResult UseDocument(host::Host &host, const std::filesystem::path &folder, void (*grant)()) {
  ScriptResult result;
  const Variable compressor = NewObject(host, "CompressorHandle");
  const Variable document = NewObject(host, "PDFDocument", {compressor});
  host.SetEventHandler(document.handle(), "ErrorLog", [&](const host::ObjectHandle &, std::span<Value> arguments) {
    result.failures.push_back(
        {static_cast<std::uint32_t>(arguments[0].AsInteger()), static_cast<std::uint32_t>(arguments[1].AsInteger())});
    return Value();
  });
  // Before anyone could be told, a document that is only half made notes it.
  if (const auto number = static_cast<std::uint32_t>(host.Get(document.handle(), "LastErrorNumber").AsInteger())) {
    result.failures.push_back({number, 0});
  }
  const Variable unicode = document.Make("Font", "LoadTrueTypeFont", FolderItem(host, kDejaVuSans));
  host.SetEventHandler(document.handle(), "ResolveFont",
                       [&](const host::ObjectHandle &, std::span<Value>) { return Value(unicode); });
  document.SetAndGet("Mode", 1);
  for (const char *property : {"Author", "Title", "Subject", "Creator", "KeyWords"}) {
    document.SetAndGet(property, "Größe Ж");
  }
  const Variable page = document.Make("Page", "AddPage");
  Draw(page);
  const Variable type1 =
      document.Make("Font", "LoadType1Font", FolderItem(host, kRomanMetrics), FolderItem(host, kRomanProgram), 25);
  Describe(type1);
  Show(page, document.Make("Font", "GetFont", "Helvetica", 2), "plain text of words");
  Show(page, type1, "text of a program");
  Show(page, unicode, "Größe שלום ABC السلام नमस्ते");
  Show(page, document.Make("Font", "GetFont", "Times-Roman", 100), "mixed 日本語 Ж 한국어 text");
  const Variable second = document.Make("Page", "AddPage");
  AddPictures(host, document, second);
  AddState(document, second);
  AddNavigation(document, second);
  document.Call("SaveToString");
  document.Call("SetPassword", "owner", "");
  document.Call("SetEncryptionMode", 3, 16);
  document.Call("SaveToMemoryBlock");
  document.Call("Save", FolderItem(host, folder / "saved.pdf"));
  for (const char *property : {"LastErrorNumber", "LastErrorDetailNumber"}) document.Get(property);
  document.Call("ClearError");
  grant();
  result.file = std::string(document.Call("SaveToString").AsString().Bytes());
  document.Call("ClearError");
  page.Call("MoveTo", 1.0F, 1.0F);
  page.Call("EndPath");
  result.hasDocument = !page.IsNil();
  return result;
}

void UseRasters(host::Host &host, const std::filesystem::path &picture) {
  const Value file = FolderItem(host, picture);
  const Variable rasters[] = {NewObject(host, "PixelRaster"),
                              NewObject(host, "PixelRaster", {5, 4, 3}),
                              NewObject(host, "PixelRaster", {5, 4, 4, 16}),
                              NewObject(host, "PixelRaster", {5, 4, 2, true, 8}),
                              NewObject(host, "PixelRaster", {0, 0, 0}),
                              NewObject(host, "PixelRaster", {file})};
  for (const Variable &raster : rasters) {
    for (const char *property :
         {"Width", "Height", "ChannelCount", "BitsPerComponent", "HasAlpha", "ColorModel", "ErrorMessage"}) {
      raster.Get(property);
    }
    raster.Call("Fill", 0x336699);
    raster.Call("SetColorAt", 1, 1, 0x996633);
    raster.Call("ColorAt", 1, 1);
    raster.Call("SetComponent", 1, 1, 0, 7);
    raster.Call("Component", 1, 1, 0);
    const Variable block = raster.Make("MemoryBlock", "ToMemoryBlock");
    raster.Call("FromMemoryBlock", block);
  }
  rasters[0].Call("LoadFromString", Bytes(Jpeg()));
  rasters[0].Call("LoadFromString", Bytes("no picture"));
  rasters[0].Get("ErrorMessage");
  rasters[1].Call("Load", file);
}

}  // namespace quillbar::test
