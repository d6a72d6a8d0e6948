// SPDX-License-Identifier: MIT
#include "plugin/engine/fonts/shaping/shaper.h"

#include <hb-ot.h>

#include <array>
#include <new>

#include "plugin/engine/fonts/shaping/shaping_memory.h"

namespace quillbar::engine {

namespace {

template <auto Destroy>
struct Destroyer {
  template <typename T>
  void operator()(T *object) const {
    Destroy(object);
  }
};

template <typename T, auto Destroy>
using Owned = std::unique_ptr<T, Destroyer<Destroy>>;

constexpr hb_feature_t Off(hb_tag_t tag) { return {tag, 0, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END}; }

// Letters of simple scripts keep their advance widths: their marks are placed, nothing else.
constexpr std::array kMarksOnly = {Off(HB_TAG('k', 'e', 'r', 'n')), Off(HB_TAG('l', 'i', 'g', 'a')),
                                   Off(HB_TAG('c', 'l', 'i', 'g'))};

// Takes an outline from HarfBuzz, whose functions no exception may pass.
struct Drawing {
  OutlineReceiver &receiver;
  bool hasFailed = false;

  template <typename Step>
  static void Take(void *data, Step step) {
    Drawing &drawing = *static_cast<Drawing *>(data);
    if (drawing.hasFailed) return;
    try {
      step(drawing.receiver);
    } catch (const std::bad_alloc &) {
      drawing.hasFailed = true;
    }
  }
};

void MoveTo(hb_draw_funcs_t *, void *data, hb_draw_state_t *, float x, float y, void *) {
  Drawing::Take(data, [&](OutlineReceiver &receiver) { receiver.MoveTo(x, y); });
}
void LineTo(hb_draw_funcs_t *, void *data, hb_draw_state_t *, float x, float y, void *) {
  Drawing::Take(data, [&](OutlineReceiver &receiver) { receiver.LineTo(x, y); });
}
void CurveTo(hb_draw_funcs_t *, void *data, hb_draw_state_t *, float x1, float y1, float x2, float y2, float x3,
             float y3, void *) {
  Drawing::Take(data, [&](OutlineReceiver &receiver) { receiver.CurveTo(x1, y1, x2, y2, x3, y3); });
}

}  // namespace

// What HarfBuzz has of a font, made when it is needed.
struct Shaper::Handles {
  explicit Handles(Bytes bytes) : file(bytes) {}

  void Open();

  // Has HarfBuzz work. Where it was refused memory on the way, what it found can't be relied on, now or later: it is
  // given up, and made again the next time.
  template <typename Work>
  auto Run(Work work) {
    if (face == nullptr) Open();
    const unsigned refusedBefore = RefusedShapingBlocks();
    const auto result = work();
    if (RefusedShapingBlocks() != refusedBefore) Fail();
    return result;
  }

  [[noreturn]] void Fail() {
    buffer.reset();
    font.reset();
    face.reset();
    throw std::bad_alloc();
  }

  Bytes file;
  Owned<hb_face_t, hb_face_destroy> face;
  Owned<hb_font_t, hb_font_destroy> font;
  Owned<hb_buffer_t, hb_buffer_destroy> buffer;
};

namespace {

// What HarfBuzz makes once for all fonts.
void MakeWhatAllFontsShare() {
  static bool isMade = false;
  if (isMade) return;
  const ShapingReserve reserve;
  hb_unicode_funcs_get_default();
  const Owned<hb_font_t, hb_font_destroy> font(hb_font_create(hb_face_get_empty()));
  hb_ot_font_set_funcs(font.get());
  hb_glyph_extents_t extents{};
  hb_font_get_glyph_extents(font.get(), 0, &extents);
  isMade = true;
}

}  // namespace

void Shaper::Handles::Open() {
  MakeWhatAllFontsShare();
  const unsigned refusedBefore = RefusedShapingBlocks();
  const Owned<hb_blob_t, hb_blob_destroy> blob(hb_blob_create(reinterpret_cast<const char *>(file.data()),
                                                              static_cast<unsigned>(file.size()),
                                                              HB_MEMORY_MODE_READONLY, nullptr, nullptr));
  face.reset(hb_face_create(blob.get(), 0));
  font.reset(hb_font_create(face.get()));
  buffer.reset(hb_buffer_create());
  if (RefusedShapingBlocks() != refusedBefore) Fail();
}

Shaper::Shaper(Bytes file) : handles_(std::make_unique<Handles>(file)) { handles_->Open(); }

Shaper::~Shaper() = default;
Shaper::Shaper(Shaper &&) noexcept = default;
Shaper &Shaper::operator=(Shaper &&) noexcept = default;

void Shaper::Shape(std::u32string_view text, const ScriptRun &run, std::vector<ShapedGlyph> &glyphs) const {
  const bool isShaped = handles_->Run([&] {
    hb_buffer_t *buffer = handles_->buffer.get();
    hb_buffer_clear_contents(buffer);
    hb_buffer_add_utf32(buffer, reinterpret_cast<const std::uint32_t *>(text.data()), static_cast<int>(text.size()),
                        run.first, static_cast<int>(run.count));
    hb_buffer_set_direction(buffer, run.isRightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer, static_cast<hb_script_t>(run.script));
    const bool marksOnly = run.layout == RunLayout::kMarks;
    return hb_shape_full(handles_->font.get(), buffer, marksOnly ? kMarksOnly.data() : nullptr,
                         marksOnly ? static_cast<unsigned>(kMarksOnly.size()) : 0, nullptr) != 0 &&
           hb_buffer_allocation_successful(buffer) != 0;
  });
  // A buffer that has failed once stays so.
  if (!isShaped) handles_->Fail();
  unsigned count = 0;
  hb_buffer_t *const buffer = handles_->buffer.get();
  const hb_glyph_info_t *infos = hb_buffer_get_glyph_infos(buffer, &count);
  const hb_glyph_position_t *positions = hb_buffer_get_glyph_positions(buffer, nullptr);
  glyphs.reserve(glyphs.size() + count);
  for (unsigned i = 0; i < count; ++i) {
    glyphs.push_back({static_cast<std::uint16_t>(infos[i].codepoint), infos[i].cluster, positions[i].x_advance,
                      positions[i].x_offset, positions[i].y_offset});
  }
}

void Shaper::Draw(std::uint16_t glyph, OutlineReceiver &receiver) const {
  const bool isDrawn = handles_->Run([&] {
    const Owned<hb_draw_funcs_t, hb_draw_funcs_destroy> functions(hb_draw_funcs_create());
    hb_draw_funcs_set_move_to_func(functions.get(), MoveTo, nullptr, nullptr);
    hb_draw_funcs_set_line_to_func(functions.get(), LineTo, nullptr, nullptr);
    hb_draw_funcs_set_cubic_to_func(functions.get(), CurveTo, nullptr, nullptr);
    Drawing drawing{receiver};
    hb_font_draw_glyph(handles_->font.get(), glyph, functions.get(), &drawing);
    return !drawing.hasFailed;
  });
  if (!isDrawn) throw std::bad_alloc();
}

GlyphExtents Shaper::ExtentsOf(std::uint16_t glyph) const {
  hb_glyph_extents_t extents{};
  const bool hasOutline =
      handles_->Run([&] { return hb_font_get_glyph_extents(handles_->font.get(), glyph, &extents) != 0; });
  if (!hasOutline) return {};
  return {extents.x_bearing, extents.y_bearing + extents.height, extents.x_bearing + extents.width, extents.y_bearing};
}

}  // namespace quillbar::engine
