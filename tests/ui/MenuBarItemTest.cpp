#include "ui/MenuBarItem.h"

#include <gtest/gtest.h>

#include "AppTables.h"
#include "TestControllers.h"

namespace wakeloft {
namespace {

using testing::TestControllers;

std::string label(const TestControllers& app) {
  return MenuBarItem::iconLabel(MenuBarItem::icon(*app.awake, *app.lid)).english();
}

TEST(MenuBarItemTest, TheIconFollowsSessionTimerAndDeepwake) {
  TestControllers app;
  app.start();
  EXPECT_EQ(MenuBarItem::icon(*app.awake, *app.lid), MenuBarIcon{});
  EXPECT_EQ(label(app), "Wakeloft: off");

  app.awake->turnOn(std::nullopt);
  EXPECT_EQ(label(app), "Wakeloft: on");
  app.awake->turnOn(600);
  EXPECT_EQ(MenuBarItem::icon(*app.awake, *app.lid), (MenuBarIcon{true, true, false}));
  EXPECT_EQ(label(app), "Wakeloft: on, timer running");

  app.turnOnDeepwake();
  EXPECT_EQ(label(app), "Wakeloft: Deepwake on, timer running");
  app.awake->turnOn(std::nullopt);
  EXPECT_EQ(label(app), "Wakeloft: Deepwake on");

  app.awake->turnOff();
  EXPECT_EQ(label(app), "Wakeloft: off");  // whatever Deepwake has not yet noticed
}

TEST(MenuBarItemTest, AWaitingUpdateShowsItsDotInAnyStateAndIsSaidAfterTheStateInTheSameLanguage) {
  TestControllers app;
  app.start();
  const auto off = MenuBarItem::icon(*app.awake, *app.lid, /*isUpdateWaiting=*/true);
  EXPECT_EQ(off, (MenuBarIcon{false, false, false, true}));
  EXPECT_EQ(MenuBarItem::iconLabel(off).english(), "Wakeloft: off, update waiting");

  app.awake->turnOn(600);
  const auto timed = MenuBarItem::icon(*app.awake, *app.lid, true);
  EXPECT_EQ(timed, (MenuBarIcon{true, true, false, true}));
  const testing::LanguageTables german("de");
  EXPECT_EQ(MenuBarItem::iconLabel(timed, german.lookup()).resolved(german.lookup()),
            "Wakeloft: ein, Timer läuft, Update wartet");
}


}  // namespace
}  // namespace wakeloft
