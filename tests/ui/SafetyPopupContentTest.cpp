#include "ui/SafetyPopupContent.h"

#include <gtest/gtest.h>

#include "TestControllers.h"

namespace wakeloft {
namespace {

using Setting = SafetyPopupContent::Setting;

TEST(SafetyPopupContentTest, ShowsTheStoredChoicesAndStoresAndAppliesChanges) {
  testing::TestControllers app;
  app.guardrails->setSettings({.batteryFloor = 30, .stopsWhenLidOpens = true});
  app.start();
  auto content = SafetyPopupContent::current(*app.lid, "en_US");
  EXPECT_EQ(content.chosenFloor, 30);
  ASSERT_EQ(content.floors.size(), 5u);
  EXPECT_EQ(content.floors[0].label.english(), "Never");
  EXPECT_EQ(content.floors[4].label.english(), "At 50%");
  ASSERT_EQ(content.switches.size(), 3u);
  EXPECT_TRUE(content.switches[0].isOn);
  EXPECT_TRUE(content.switches[1].isOn);
  EXPECT_FALSE(content.switches[2].isOn);

  SafetyPopupContent::chooseFloor(25, *app.lid);  // not one on offer
  SafetyPopupContent::chooseFloor(0, *app.lid);
  SafetyPopupContent::set(Setting::stopsInLowPowerMode, false, *app.lid);
  SafetyPopupContent::set(Setting::onlyOnPowerAdapter, true, *app.lid);
  const DeepwakeGuardrails::Settings expected{.batteryFloor = 0, .stopsInLowPowerMode = false,
                                              .stopsWhenLidOpens = true, .onlyOnPowerAdapter = true};
  EXPECT_EQ(app.guardrails->settings(), expected);
  content = SafetyPopupContent::current(*app.lid, "en_US");
  ASSERT_EQ(content.switches.size(), 3u);
  EXPECT_EQ(content.chosenFloor, 0);
  EXPECT_FALSE(content.switches[0].isOn);
  EXPECT_TRUE(content.switches[2].isOn);
}

TEST(SafetyPopupContentTest, WhatAProfileSetsIsDisabledKeptAndTakenUpWhenItChanges) {
  testing::TestControllers app;
  app.guardrails->setSettings({.batteryFloor = 30, .stopsWhenLidOpens = true});
  app.guardrails->forcedSettings = {.batteryFloor = true, .stopsWhenLidOpens = true};
  app.start();
  SafetyPopupContent::chooseFloor(10, *app.lid);
  SafetyPopupContent::set(Setting::stopsWhenLidOpens, false, *app.lid);
  SafetyPopupContent::set(Setting::onlyOnPowerAdapter, true, *app.lid);
  auto content = SafetyPopupContent::current(*app.lid, "en_US");
  EXPECT_EQ(content.chosenFloor, 30);
  EXPECT_TRUE(content.isFloorForced);
  EXPECT_TRUE(content.switches[1].isOn);
  EXPECT_TRUE(content.switches[1].isForced);
  EXPECT_FALSE(content.switches[2].isForced);
  EXPECT_TRUE(content.switches[2].isOn);

  // A profile that changes while the app runs counts from the next refresh.
  app.guardrails->setSettings({.batteryFloor = 50});
  app.lid->refresh();
  EXPECT_EQ(SafetyPopupContent::current(*app.lid, "en_US").chosenFloor, 50);
}

}  // namespace
}  // namespace wakeloft
