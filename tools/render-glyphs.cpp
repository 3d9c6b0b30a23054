// render-glyphs: draws every status glyph with Cairo into PNG files, so the
// glyphs can be looked at and compared on Linux.
//
//   render-glyphs FOLDER
//
// Writes the awake glyph (the vessel on the laptop and the two mugs, filled
// and outlined) at 16, 18, 22, 32 and 64 points, and every menu-bar icon at
// its own size in both layout directions, each at 1x and 2x. The images are
// templates: black ink on a transparent ground.
//
// Linux has no SF Symbols, so the system's "mug", "mug.fill", "clock.fill"
// and "circle.fill" are drawn here as simple look-alikes of about the system's
// size; the vessel on the laptop is the app's own drawing, exactly as the
// Mac draws it.

#include <cairo.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <numbers>
#include <optional>
#include <string>
#include <system_error>
#include <type_traits>
#include <variant>

#include "glyph/AwakeGlyph.h"
#include "glyph/GlyphDrawing.h"
#include "glyph/GlyphImage.h"
#include "glyph/LayoutDirection.h"
#include "glyph/SymbolMetrics.h"
#include "status/MenuBarIcon.h"

using namespace wakeloft;

namespace {

// Look-alikes of the four system symbols, in proportion to the point size.
class LookAlikeSymbols final : public SymbolMetrics {
 public:
  std::optional<GlyphSize> size(const SystemSymbol& symbol) const override {
    if (!(symbol.pointSize > 0)) return std::nullopt;
    if (symbol.name == "mug" || symbol.name == "mug.fill") return GlyphSize{symbol.pointSize * 1.17, symbol.pointSize * 0.93};
    if (symbol.name == "clock.fill") return GlyphSize{symbol.pointSize * 1.08, symbol.pointSize * 1.08};
    if (symbol.name == "circle.fill") return GlyphSize{symbol.pointSize * 1.08, symbol.pointSize * 1.08};
    return std::nullopt;
  }

  // Drawn in the frame's points, unit 1.
  static GlyphDrawing drawing(const SystemSymbol& symbol, GlyphRect frame) {
    GlyphDrawing drawing(1, {0, 0});
    const double line = frame.height * 0.1;
    if (symbol.name == "circle.fill") {
      drawing.ellipse(frame);
      drawing.fill();
      return drawing;
    }
    if (symbol.name == "clock.fill") {
      drawing.ellipse(frame);
      drawing.fill();
      // Hands cut out of the face, pointing to ten past twelve.
      const double cx = frame.x + frame.width / 2;
      const double cy = frame.y + frame.height / 2;
      drawing.roundedRect({cx - line / 2, cy - line / 2, line, frame.height * 0.32 + line / 2}, line / 2, line / 2);
      drawing.erase();
      drawing.roundedRect({cx - line / 2, cy - line / 2, frame.width * 0.24 + line / 2, line}, line / 2, line / 2);
      drawing.erase();
      return drawing;
    }
    const bool filled = symbol.name == "mug.fill";
    const GlyphRect body{frame.x + line / 2, frame.y + line / 2, frame.width * 0.74, frame.height - line};
    const GlyphRect handle{body.maxX() - line * 1.5, body.y + body.height * 0.28, frame.maxX() - line / 2 - (body.maxX() - line * 1.5),
                           body.height * 0.46};
    drawing.ellipse(handle);
    drawing.stroke(line);
    drawing.roundedRect(body, body.width * 0.18, line / 2);
    if (filled) {
      drawing.fill();
    } else {
      drawing.erase();
      drawing.roundedRect(body, body.width * 0.18, line / 2);
      drawing.stroke(line);
    }
    return drawing;
  }
};

void replay(cairo_t* cairo, const GlyphDrawing& drawing) {
  cairo_save(cairo);
  cairo_translate(cairo, drawing.origin().x, drawing.origin().y);
  cairo_scale(cairo, drawing.unitSize(), drawing.unitSize());
  cairo_set_line_join(cairo, CAIRO_LINE_JOIN_ROUND);
  cairo_set_line_cap(cairo, CAIRO_LINE_CAP_ROUND);
  cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_WINDING);
  cairo_new_path(cairo);
  for (const auto& operation : drawing.operations()) {
    std::visit(
        [&](const auto& op) {
          using Op = std::decay_t<decltype(op)>;
          if constexpr (std::is_same_v<Op, GlyphDrawing::MoveTo>) {
            cairo_move_to(cairo, op.to.x, op.to.y);
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::LineTo>) {
            cairo_line_to(cairo, op.to.x, op.to.y);
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::CurveTo>) {
            cairo_curve_to(cairo, op.control1.x, op.control1.y, op.control2.x, op.control2.y, op.to.x, op.to.y);
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::Ellipse>) {
            if (!(op.in.width > 0 && op.in.height > 0)) return;
            cairo_save(cairo);
            cairo_translate(cairo, op.in.x + op.in.width / 2, op.in.y + op.in.height / 2);
            cairo_scale(cairo, op.in.width / 2, op.in.height / 2);
            cairo_new_sub_path(cairo);
            cairo_arc(cairo, 0, 0, 1, 0, 2 * std::numbers::pi);
            cairo_close_path(cairo);
            cairo_restore(cairo);
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::ClosePath>) {
            cairo_close_path(cairo);
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::Stroke>) {
            cairo_set_line_width(cairo, op.width);
            cairo_stroke(cairo);
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::Fill>) {
            cairo_fill(cairo);
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::Erase>) {
            const auto previous = cairo_get_operator(cairo);
            cairo_set_operator(cairo, CAIRO_OPERATOR_CLEAR);
            cairo_fill(cairo);
            cairo_set_operator(cairo, previous);
          }
        },
        operation);
  }
  cairo_new_path(cairo);
  cairo_restore(cairo);
}

void drawPart(cairo_t* cairo, const GlyphImage::Part& part, double deviceScale) {
  // Each part is drawn on its own layer first, so that erasing inside a
  // symbol does not reach what lies beneath it.
  cairo_push_group(cairo);
  if (const auto drawing = part.drawing(deviceScale)) {
    replay(cairo, *drawing);
  } else if (const auto* symbol = std::get_if<SystemSymbol>(&part.content)) {
    replay(cairo, LookAlikeSymbols::drawing(*symbol, part.frame));
  }
  cairo_pop_group_to_source(cairo);
  cairo_set_operator(cairo, part.blend == GlyphImage::Part::Blend::erase ? CAIRO_OPERATOR_DEST_OUT : CAIRO_OPERATOR_OVER);
  cairo_paint(cairo);
  cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);
}

// Writes the image at a device scale; false, with a message, when that fails.
bool writePNG(const GlyphImage& image, double deviceScale, const std::filesystem::path& path) {
  if (image.isEmpty()) {
    std::fprintf(stderr, "render-glyphs: %s would be empty; not written\n", path.c_str());
    return false;
  }
  const int width = static_cast<int>(std::ceil(image.size.width * deviceScale));
  const int height = static_cast<int>(std::ceil(image.size.height * deviceScale));
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
  cairo_t* cairo = cairo_create(surface);
  cairo_scale(cairo, deviceScale, deviceScale);
  // Glyph coordinates point up; PNG rows go down.
  cairo_translate(cairo, 0, image.size.height);
  cairo_scale(cairo, 1, -1);
  cairo_set_source_rgb(cairo, 0, 0, 0);
  for (const auto& part : image.parts) {
    cairo_set_source_rgb(cairo, 0, 0, 0);
    drawPart(cairo, part, deviceScale);
  }
  const cairo_status_t drawn = cairo_status(cairo);
  cairo_destroy(cairo);
  const cairo_status_t written =
      drawn == CAIRO_STATUS_SUCCESS ? cairo_surface_write_to_png(surface, path.c_str()) : drawn;
  cairo_surface_destroy(surface);
  if (written != CAIRO_STATUS_SUCCESS) {
    std::fprintf(stderr, "render-glyphs: cannot write %s: %s\n", path.c_str(), cairo_status_to_string(written));
    return false;
  }
  return true;
}

std::string scaleSuffix(double deviceScale) { return "@" + std::to_string(static_cast<int>(deviceScale)) + "x.png"; }

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 || argv[1][0] == '\0' || std::string(argv[1]) == "--help") {
    std::fprintf(stderr, "usage: render-glyphs FOLDER\n");
    return 2;
  }
  const std::filesystem::path folder = argv[1];
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error || !std::filesystem::is_directory(folder)) {
    std::fprintf(stderr, "render-glyphs: cannot create the folder %s: %s\n", folder.c_str(),
                 error ? error.message().c_str() : "a file of that name is in the way");
    return 1;
  }

  const LookAlikeSymbols symbols;
  const double scales[] = {1, 2};
  int written = 0;
  bool failed = false;
  const auto write = [&](const GlyphImage& image, double scale, const std::string& name) {
    if (writePNG(image, scale, folder / (name + scaleSuffix(scale)))) {
      ++written;
    } else {
      failed = true;
    }
  };

  for (const auto vessel : {AwakeGlyph::Vessel::mug, AwakeGlyph::Vessel::doubleMug}) {
    for (const bool filled : {true, false}) {
      for (const int points : {16, 18, 22, 32, 64}) {
        const auto image = AwakeGlyph(vessel, filled).image(points, symbols);
        const std::string name = std::string("awake-") + (vessel == AwakeGlyph::Vessel::mug ? "mug" : "doublemug") +
                                 (filled ? "-filled-" : "-outlined-") + std::to_string(points) + "pt";
        for (const double scale : scales) write(image, scale, name);
      }
    }
  }

  struct IconState {
    const char* name;
    MenuBarIcon icon;
  };
  const IconState states[] = {
      {"off", {false, false, false}},
      {"on", {true, false, false}},
      {"on-timer", {true, true, false}},
      {"deepwake", {true, false, true}},
      {"deepwake-timer", {true, true, true}},
      {"off-update", {false, false, false, true}},
      {"on-timer-update", {true, true, false, true}},
      {"deepwake-timer-update", {true, true, true, true}},
  };
  for (const auto& state : states) {
    for (const auto direction : {LayoutDirection::leftToRight, LayoutDirection::rightToLeft}) {
      const auto image = state.icon.image(direction, symbols);
      const std::string name = std::string("menubar-") + state.name +
                               (direction == LayoutDirection::leftToRight ? "-ltr" : "-rtl");
      for (const double scale : scales) write(image, scale, name);
    }
  }

  std::printf("render-glyphs: wrote %d images to %s\n", written, folder.c_str());
  return failed ? 1 : 0;
}
