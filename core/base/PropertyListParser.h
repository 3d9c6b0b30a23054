#pragma once

#include <cstdint>
#include <span>

#include "base/PropertyList.h"
#include "base/PropertyListError.h"

namespace wakeloft {

// Reads a serialized property list in any format the platform knows. The
// system implementations are `LibplistPropertyListParser` (Linux) and
// `CFPropertyListParser` (macOS).
class PropertyListParser {
 public:
  virtual ~PropertyListParser() = default;

  // Throws PropertyListError for anything that is not a whole property list.
  virtual PropertyList parse(std::span<const std::uint8_t> bytes) const = 0;
};

}  // namespace wakeloft
