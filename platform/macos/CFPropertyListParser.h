#pragma once

#include "base/PropertyListParser.h"

namespace wakeloft {

// Property lists in every format Core Foundation reads (XML, binary,
// OpenStep).
class CFPropertyListParser final : public PropertyListParser {
 private:
  PropertyList parseChecked(std::span<const std::uint8_t> bytes) const override;
};

}  // namespace wakeloft
