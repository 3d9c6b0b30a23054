#pragma once

#include <map>
#include <string>

#include "glyph/SymbolMetrics.h"

namespace wakeloft {

// Symbol sizes as a test sets them, whatever the point size asked for.
class FixedSymbolMetrics final : public SymbolMetrics {
 public:
  std::map<std::string, GlyphSize> sizes;

  std::optional<GlyphSize> size(const SystemSymbol& symbol) const override {
    const auto found = sizes.find(symbol.name);
    if (found == sizes.end()) return std::nullopt;
    return found->second;
  }
};

}  // namespace wakeloft
