#pragma once

#include <string>

namespace wakeloft {

// One of the platform's named symbol images at a point size, in regular
// weight. Only macOS has them; the Linux renderer draws look-alikes.
struct SystemSymbol {
  std::string name;
  double pointSize = 0;

  static SystemSymbol mug(double pointSize) { return {"mug", pointSize}; }
  static SystemSymbol mugFill(double pointSize) { return {"mug.fill", pointSize}; }
  static SystemSymbol clockFill(double pointSize) { return {"clock.fill", pointSize}; }
  static SystemSymbol circleFill(double pointSize) { return {"circle.fill", pointSize}; }

  friend bool operator==(const SystemSymbol&, const SystemSymbol&) = default;
};

}  // namespace wakeloft
