#include "ui/MenuBarItem.h"

#include <gtest/gtest.h>

#include "TestControllers.h"

namespace wakeloft {
namespace {

TEST(MenuBarItemTest, TheIconFollowsSessionTimerAndDeepwake) {
  testing::TestControllers app;
  app.start();
  const auto label = [&] { return MenuBarItem::iconLabel(MenuBarItem::icon(*app.awake, *app.lid)).english(); };
  EXPECT_EQ(label(), "Wakeloft: off");
  app.awake->turnOn(std::nullopt);
  EXPECT_EQ(label(), "Wakeloft: on");
  app.awake->turnOn(600);
  EXPECT_EQ(label(), "Wakeloft: on, timer running");
  app.turnOnDeepwake();
  EXPECT_EQ(label(), "Wakeloft: Deepwake on, timer running");
  app.awake->turnOn(std::nullopt);
  EXPECT_EQ(label(), "Wakeloft: Deepwake on");
  app.awake->turnOff();
  EXPECT_EQ(label(), "Wakeloft: off");  // whatever Deepwake has not yet noticed
}

}  // namespace
}  // namespace wakeloft
