#pragma once

#include <cstdint>
#include <span>

#include "base/PropertyList.h"
#include "base/PropertyListError.h"
#include "base/PropertyListNesting.h"

namespace wakeloft {

// Reads a serialized property list in any format the platform knows. The
// system implementations are `LibplistPropertyListParser` (Linux) and
// `CFPropertyListParser` (macOS).
class PropertyListParser {
 public:
  virtual ~PropertyListParser() = default;

  // Throws PropertyListError for anything that is not a whole property list.
  // Lists nested too deeply are refused before the platform's reader sees
  // them.
  PropertyList parse(std::span<const std::uint8_t> bytes) const {
    PropertyListNesting::check(bytes);
    return parseChecked(bytes);
  }

 private:
  // The platform's reading, of bytes whose nesting is within bounds.
  virtual PropertyList parseChecked(std::span<const std::uint8_t> bytes) const = 0;
};

}  // namespace wakeloft
