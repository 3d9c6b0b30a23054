#pragma once

#include <functional>
#include <string>
#include <vector>

namespace wakeloft {

// The apps that run, by bundle identifier, and word when one launches or
// quits. Apps only: command-line processes are not listed, and finding them
// would mean polling the process list. Main thread only.
class RunningApplications {
 public:
  virtual ~RunningApplications() = default;
  virtual std::vector<std::string> bundleIdentifiers() const = 0;
  // Told on the main thread after an app launches or quits. Replaces any
  // earlier handler.
  virtual void observe(std::function<void()> handler) = 0;
};

}  // namespace wakeloft
