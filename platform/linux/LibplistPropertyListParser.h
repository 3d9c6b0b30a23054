#pragma once

#include "base/PropertyListParser.h"

namespace wakeloft {

// XML and binary property lists, read with libplist.
class LibplistPropertyListParser final : public PropertyListParser {
 private:
  PropertyList parseChecked(std::span<const std::uint8_t> bytes) const override;
};

}  // namespace wakeloft
