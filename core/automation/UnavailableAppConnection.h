#pragma once

#include <stdexcept>

#include "automation/AppConnection.h"
#include "base/InMemoryDefaultsDomain.h"

namespace wakeloft {

// Where there is no Wakeloft app, as on Linux: it never runs, has stored
// nothing, and an address has nowhere to go.
class UnavailableAppConnection final : public AppConnection {
 public:
  bool isAppRunning() const override { return false; }
  void open(const std::string&) override { throw std::runtime_error("the Wakeloft app runs on macOS only"); }
  DefaultsDomain& appDefaults() override { return nothing_; }

 private:
  InMemoryDefaultsDomain nothing_;
};

}  // namespace wakeloft
