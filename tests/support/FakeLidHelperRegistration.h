#pragma once

#include <exception>
#include <optional>

#include "lid/LidHelperRegistration.h"

namespace wakeloft::testing {

// A registration whose status the test sets, counting what is asked of it.
class FakeLidHelperRegistration final : public LidHelperRegistration {
 public:
  LidHelperStatus status() const override { return current; }
  void registerHelper() override {
    ++registrations;
    if (afterRegistering) current = *afterRegistering;
    if (registrationError) std::rethrow_exception(registrationError);
  }
  void unregisterHelper() override {
    ++unregistrations;
    if (unregistrationError) std::rethrow_exception(unregistrationError);
    current = LidHelperStatus::notRegistered;
  }

  LidHelperStatus current = LidHelperStatus::enabled;
  std::optional<LidHelperStatus> afterRegistering;
  std::exception_ptr registrationError;
  std::exception_ptr unregistrationError;
  int registrations = 0;
  int unregistrations = 0;
};

}  // namespace wakeloft::testing
