#pragma once

#include <optional>

#include "glyph/GlyphGeometry.h"
#include "glyph/SystemSymbol.h"

namespace wakeloft {

// How large the platform draws a symbol, in points; empty when it has no
// symbol of that name. Images that place symbols need it to lay them out.
class SymbolMetrics {
 public:
  virtual ~SymbolMetrics() = default;
  virtual std::optional<GlyphSize> size(const SystemSymbol& symbol) const = 0;
};

}  // namespace wakeloft
