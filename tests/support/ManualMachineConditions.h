#pragma once

#include <functional>
#include <utility>

#include "lid/MachineConditions.h"
#include "lid/MachineConditionsNotifier.h"

namespace wakeloft::testing {

// Machine conditions a test can change.
struct SettableMachineConditions final : MachineConditions {
  MachineConditionsSnapshot current;
  bool isOnBattery() const override { return current.isOnBattery; }
  bool hasExternalDisplay() const override { return current.hasExternalDisplay; }
  std::optional<int> batteryCharge() const override { return current.batteryCharge; }
  bool isLowPowerModeOn() const override { return current.isLowPowerModeOn; }
  ThermalState thermalState() const override { return current.thermalState; }
  std::optional<bool> isLidClosed() const override { return current.isLidClosed; }
};

// A conditions notifier that tells its handler only when the test posts.
struct ManualConditionsNotifier final : MachineConditionsNotifier {
  std::function<void()> handler;
  void observe(std::function<void()> newHandler) override { handler = std::move(newHandler); }
  void post() {
    if (handler) handler();
  }
};

}  // namespace wakeloft::testing
