// SPDX-License-Identifier: MIT
#pragma once

/// HarfBuzz's memory. What it can't get it does without, says nothing, and often remembers: tables of a font then count
/// as absent for good, and text is shown unshaped. So failures are counted here, and whoever had HarfBuzz work can tell.
namespace quillbar::engine {

/// How often HarfBuzz was refused memory since the library was loaded.
unsigned RefusedShapingBlocks();

/// While one of these lives, HarfBuzz gets what the system refuses from a reserve: for what it makes once for all fonts,
/// some 2 KB, and never makes again.
class ShapingReserve {
 public:
  ShapingReserve();
  ~ShapingReserve();
  ShapingReserve(const ShapingReserve &) = delete;
  ShapingReserve &operator=(const ShapingReserve &) = delete;
};

}  // namespace quillbar::engine
