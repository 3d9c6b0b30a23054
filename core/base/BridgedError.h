#pragma once

#include <stdexcept>
#include <string>

namespace wakeloft {

// An error with a domain and a code, described the way the platform describes
// an error type that gives no words of its own.
class BridgedError : public std::runtime_error {
 public:
  BridgedError(std::string domain, long code)
      : std::runtime_error("The operation couldn\u2019t be completed. (" + domain + " error " + std::to_string(code) + ".)"),
        domain_(std::move(domain)),
        code_(code) {}

  const std::string& domain() const { return domain_; }
  long code() const { return code_; }

 private:
  std::string domain_;
  long code_;
};

}  // namespace wakeloft
