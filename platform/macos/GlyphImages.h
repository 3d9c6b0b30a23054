#pragma once

#import <AppKit/AppKit.h>

#include <optional>

#include "glyph/AwakeGlyph.h"
#include "glyph/GlyphImage.h"
#include "glyph/LayoutDirection.h"
#include "glyph/SymbolMetrics.h"
#include "status/MenuBarIcon.h"

namespace wakeloft {

// Glyph descriptions as NSImages: the path operations are replayed with Core
// Graphics each time AppKit draws the image, at that screen's scale, and the
// system symbols are drawn by AppKit.
struct GlyphImages {
  // The system's symbols, sized as AppKit draws them.
  class SystemSymbolMetrics final : public SymbolMetrics {
   public:
    std::optional<GlyphSize> size(const SystemSymbol& symbol) const override;
  };

  // An empty description gives an image of zero size.
  static NSImage* image(const GlyphImage& description);

  static NSImage* awakeGlyph(const AwakeGlyph& glyph, double pointSize);
  static NSImage* menuBarIcon(const MenuBarIcon& icon, LayoutDirection layoutDirection);

  // The named symbol at its point size in regular weight; nil when the
  // system has no symbol of that name.
  static NSImage* symbolImage(const SystemSymbol& symbol);
};

}  // namespace wakeloft
