#pragma once

#include <functional>
#include <memory>

#include "lid/MachineConditionsNotifier.h"

namespace wakeloft {

// Tells its handler when the display configuration changes (the default
// centre's screen-parameter notification) and when any power source changes
// (an IOKit run-loop source on the main run loop, also while a menu is being
// tracked). Main thread only.
class SystemMachineConditionsNotifier final : public MachineConditionsNotifier {
 public:
  SystemMachineConditionsNotifier();
  ~SystemMachineConditionsNotifier() override;
  SystemMachineConditionsNotifier(const SystemMachineConditionsNotifier&) = delete;
  SystemMachineConditionsNotifier& operator=(const SystemMachineConditionsNotifier&) = delete;

  // Replaces the earlier observation: one screen observer and one power
  // source at a time.
  void observe(std::function<void()> handler) override;

 private:
  struct Observation;  // the handler, the power source and the screen token

  void stopObserving();

  std::unique_ptr<Observation> observation_;
};

}  // namespace wakeloft
