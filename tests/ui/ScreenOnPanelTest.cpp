// The panel's "Keep the Screen On" switch.

#include <gtest/gtest.h>

#include "TestControllers.h"
#include "session/InMemoryScreenLockNotifier.h"
#include "session/InMemoryScreenOnStore.h"
#include "ui/AwakePanelContent.h"

namespace wakeloft {
namespace {

TEST(ScreenOnPanelTest, TheSwitchKeepsTheScreenOnAndARefusalShowsItsCode) {
  testing::TestControllers app;
  app.start();
  auto controllers = app.controllers();
  auto display = std::make_shared<InMemorySleepBlocker>();
  display->nextRefusal = -536870201;
  controllers.screenOn = std::make_shared<ScreenOnController>(
      app.awake, display, std::make_shared<InMemoryScreenOnStore>(), app.machine,
      std::make_shared<testing::ManualConditionsNotifier>(),
      std::make_shared<ScreenLockState>(std::make_shared<InMemoryScreenLockNotifier>()),
      std::make_shared<testing::ManualRecheckNotifier>());
  app.awake->turnOn(std::nullopt);
  const auto before = AwakePanelContent::current(controllers, "en_US", {14, 0, 0}).screenOn;
  ASSERT_TRUE(before && !before->toggle.isOn);
  perform(before->toggle.action(true), controllers, nullptr);
  const auto after = AwakePanelContent::current(controllers, "en_US", {14, 0, 0}).screenOn;
  ASSERT_TRUE(after && after->toggle.isOn && after->failure);
  EXPECT_EQ(after->failure->text, LocalizedText(TextCatalog::screenOnRefused, {std::int32_t{-536870201}}));
}

}  // namespace
}  // namespace wakeloft
