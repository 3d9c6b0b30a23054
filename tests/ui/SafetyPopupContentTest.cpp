#include "ui/SafetyPopupContent.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "TestControllers.h"

namespace wakeloft {
namespace {

using Setting = SafetyPopupContent::Setting;
// Each switch on or off, and whether a profile set it.
using States = std::vector<std::pair<bool, bool>>;

class SafetyPopupContentTest : public ::testing::Test {
 protected:
  SafetyPopupContent content() { return SafetyPopupContent::current(*app.lid, "en_US", app.consent.get()); }
  States switches() {
    States states;
    for (const auto& row : content().switches) states.emplace_back(row.isOn, row.isForced);
    return states;
  }

  testing::TestControllers app;
};

TEST_F(SafetyPopupContentTest, ShowsTheStoredChoicesAndStoresChangesButOnlyFloorsOnOffer) {
  app.guardrails->setSettings({.batteryFloor = 30, .stopsWhenLidOpens = true});
  app.start();
  EXPECT_EQ(switches(), (States{{true, false}, {true, false}, {false, false}}));
  SafetyPopupContent::chooseFloor(25, *app.lid);
  EXPECT_EQ(content().chosenFloor, 30);

  SafetyPopupContent::chooseFloor(0, *app.lid);
  SafetyPopupContent::set(Setting::stopsInLowPowerMode, false, *app.lid);
  SafetyPopupContent::set(Setting::onlyOnPowerAdapter, true, *app.lid);
  EXPECT_EQ(
      app.guardrails->settings(),
      (DeepwakeGuardrails::Settings{
          .batteryFloor = 0, .stopsInLowPowerMode = false, .stopsWhenLidOpens = true, .onlyOnPowerAdapter = true}));
}

TEST_F(SafetyPopupContentTest, WhatAProfileSetsIsMarkedKeptAndTakenUpWhenItChanges) {
  app.guardrails->setSettings({.batteryFloor = 30, .stopsWhenLidOpens = true});
  app.guardrails->forcedSettings = {.batteryFloor = true, .stopsWhenLidOpens = true};
  app.start();
  SafetyPopupContent::chooseFloor(10, *app.lid);
  SafetyPopupContent::set(Setting::stopsWhenLidOpens, false, *app.lid);
  SafetyPopupContent::set(Setting::onlyOnPowerAdapter, true, *app.lid);
  EXPECT_EQ(content().chosenFloor, 30);
  EXPECT_TRUE(content().isFloorForced);
  EXPECT_EQ(switches(), (States{{true, false}, {true, true}, {true, false}}));

  app.guardrails->setSettings({.batteryFloor = 50});
  app.lid->refresh();
  EXPECT_EQ(content().chosenFloor, 50);
}

}  // namespace
}  // namespace wakeloft
