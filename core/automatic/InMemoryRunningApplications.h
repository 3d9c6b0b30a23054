#pragma once

#include <algorithm>
#include <utility>

#include "automatic/RunningApplications.h"

namespace wakeloft {

// Apps launched and quit by hand, for tests and the Linux build.
class InMemoryRunningApplications final : public RunningApplications {
 public:
  std::vector<std::string> bundleIdentifiers() const override { return running_; }
  void observe(std::function<void()> handler) override { handler_ = std::move(handler); }

  void launch(const std::string& bundleIdentifier) {
    running_.push_back(bundleIdentifier);
    tell();
  }
  void quit(const std::string& bundleIdentifier) {
    std::erase(running_, bundleIdentifier);
    tell();
  }

 private:
  void tell() {
    if (handler_) handler_();
  }

  std::vector<std::string> running_;
  std::function<void()> handler_;
};

}  // namespace wakeloft
