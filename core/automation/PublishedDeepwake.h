#pragma once

#include <memory>

#include "base/DefaultsDomain.h"
#include "base/Observation.h"
#include "lid/LidAwakeController.h"

namespace wakeloft {

// Whether Deepwake is on, in the app's defaults for the command to read.
// Deepwake is never restored, so nothing else stores it; this only mirrors
// the controller while the app runs (and says off at launch), and the
// command believes it only while the app runs. Main thread only.
class PublishedDeepwake {
 public:
  static constexpr const char* key = "com.wakeloft.isDeepwakeOn";

  // `defaults` must outlive this.
  PublishedDeepwake(std::shared_ptr<LidAwakeController> lid, DefaultsDomain& defaults);

  // Only a stored true is on.
  static bool read(const DefaultsDomain& defaults);

 private:
  void publish();

  std::shared_ptr<LidAwakeController> lid_;
  DefaultsDomain& defaults_;
  bool published_ = false;
  Subscription changes_;
};

}  // namespace wakeloft
