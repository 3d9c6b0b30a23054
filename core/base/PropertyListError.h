#pragma once

#include <stdexcept>
#include <string>

namespace wakeloft {

// Why some bytes are not a property list, or why a value cannot be written as
// one, in words for a log.
class PropertyListError : public std::runtime_error {
 public:
  explicit PropertyListError(const std::string& what) : std::runtime_error(what) {}
};

}  // namespace wakeloft
