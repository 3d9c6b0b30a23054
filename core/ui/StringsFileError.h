#pragma once

#include <stdexcept>
#include <string>

namespace wakeloft {

// Why some bytes are not a strings table, with the line where reading
// stopped.
class StringsFileError : public std::runtime_error {
 public:
  StringsFileError(int line, const std::string& what)
      : std::runtime_error("line " + std::to_string(line) + ": " + what), line_(line) {}

  int line() const { return line_; }

 private:
  int line_;
};

}  // namespace wakeloft
