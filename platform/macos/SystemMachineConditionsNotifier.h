#pragma once

#include <functional>
#include <memory>

#include "lid/MachineConditionsNotifier.h"

namespace wakeloft {

// Tells its handler when the display configuration changes (the default
// centre's screen-parameter notification), when any power source changes,
// the battery's charge among it (an IOKit run-loop source on the main run
// loop, also while a menu is being tracked), when Low Power Mode or the
// thermal state changes (the process information's notifications), and when
// the lid opens or closes (the root power domain's clamshell message). None
// of it polls. Main thread only.
class SystemMachineConditionsNotifier final : public MachineConditionsNotifier {
 public:
  SystemMachineConditionsNotifier();
  ~SystemMachineConditionsNotifier() override;
  SystemMachineConditionsNotifier(const SystemMachineConditionsNotifier&) = delete;
  SystemMachineConditionsNotifier& operator=(const SystemMachineConditionsNotifier&) = delete;

  // Replaces the earlier observation: one of each observer at a time.
  void observe(std::function<void()> handler) override;

 private:
  struct Observation;  // the handler and what watches for it

  void observeClamshell(void* context);
  void stopObserving();

  std::unique_ptr<Observation> observation_;
};

}  // namespace wakeloft
