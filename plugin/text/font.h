// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// `Font`: its life and its metrics.
namespace quillbar::text {

/// Class constructor: no document, no faces parked.
void Initialize(Object font);
/// Class destructor: lets the document go. The library's fonts belong to their document.
void Finalize(Object font);
/// "Constructor()": a font that belongs to no document.
void Constructor(Font *font);

/// In 1/1000 of the font size, of the face that the font was made with; 0 when the library has none.
Integer GetAscent(Font *font);
Integer GetDescent(Font *font);

/// The library's name of that face, by which `GetFont` finds it again; empty when the library has none.
String GetName(Font *font);

/// The box that holds every glyph, in 1/1000 of the font size. It is taken from the face in use when one of
/// the four is read first, and then kept. 0 for a font without a document.
Single GetBoundingBoxLeft(Font *font);
Single GetBoundingBoxRight(Font *font);
Single GetBoundingBoxTop(Font *font);
Single GetBoundingBoxBottom(Font *font);

}  // namespace quillbar::text
