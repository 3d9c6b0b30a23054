#pragma once

#include <optional>
#include <variant>
#include <vector>

#include "glyph/GlyphDrawing.h"
#include "glyph/GlyphGeometry.h"
#include "glyph/SystemSymbol.h"

namespace wakeloft {

// An image as a description that each platform renders: its size in points,
// whether it is a template (only its alpha counts; the system tints it), and
// its parts, drawn in order, each in a frame in the image's points.
struct GlyphImage {
  // The vessel on the laptop, turned into path operations only when the
  // device scale is known, since the level of detail and the pixel snapping
  // depend on it.
  struct VesselOnLaptop {
    bool filled = false;
    friend bool operator==(const VesselOnLaptop&, const VesselOnLaptop&) = default;
  };

  struct Part {
    // `erase` clears the part's ink out of what was drawn before it.
    enum class Blend { draw, erase };

    std::variant<VesselOnLaptop, SystemSymbol> content;
    GlyphRect frame;
    Blend blend = Blend::draw;

    // The path operations of a vessel part at this device scale; empty for
    // a symbol, which the platform draws itself.
    std::optional<GlyphDrawing> drawing(double deviceScale) const;

    friend bool operator==(const Part&, const Part&) = default;
  };

  GlyphSize size;
  bool isTemplate = true;
  std::vector<Part> parts;

  static GlyphImage empty() { return {}; }
  bool isEmpty() const { return size.isEmpty(); }

  // The parts moved by an offset, for composing this image into another.
  std::vector<Part> partsOffsetBy(double dx, double dy) const;

  friend bool operator==(const GlyphImage&, const GlyphImage&) = default;
};

}  // namespace wakeloft
