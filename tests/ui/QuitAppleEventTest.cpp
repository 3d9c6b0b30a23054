#include "ui/QuitAppleEvent.h"

#include <gtest/gtest.h>

namespace wakeloft {
namespace {

QuitAppleEvent quitEvent(std::optional<std::uint32_t> parameter, std::optional<std::uint32_t> attribute) {
  return {fourCharCode("aevt"), fourCharCode("quit"), parameter, attribute};
}

// Log out, restart, shut down and quit all, as the parameter or else the
// attribute of a quit event.
TEST(QuitAppleEventTest, OnlyTheSystemsReasonsInAQuitEventAreTheSystems) {
  const char reasons[][5] = {"quia", "rlgo", "rest", "shut", "logo"};
  for (const auto& reason : reasons) {
    EXPECT_TRUE(QuitAppleEvent::isSystemQuit(quitEvent(fourCharCode(reason), std::nullopt))) << reason;
    EXPECT_TRUE(QuitAppleEvent::isSystemQuit(quitEvent(std::nullopt, fourCharCode(reason)))) << reason;
  }
  EXPECT_TRUE(QuitAppleEvent::isSystemQuit(quitEvent(fourCharCode("rest"), fourCharCode("user"))));

  EXPECT_FALSE(QuitAppleEvent::isSystemQuit(std::nullopt));
  EXPECT_FALSE(QuitAppleEvent::isSystemQuit(quitEvent(std::nullopt, std::nullopt)));
  EXPECT_FALSE(QuitAppleEvent::isSystemQuit(quitEvent(fourCharCode("user"), std::nullopt)));
  EXPECT_FALSE(QuitAppleEvent::isSystemQuit(quitEvent(fourCharCode("user"), fourCharCode("shut"))));
  EXPECT_FALSE(QuitAppleEvent::isSystemQuit(
      QuitAppleEvent{fourCharCode("aevt"), fourCharCode("oapp"), fourCharCode("shut"), std::nullopt}));
  EXPECT_FALSE(QuitAppleEvent::isSystemQuit(
      QuitAppleEvent{fourCharCode("misc"), fourCharCode("quit"), fourCharCode("shut"), std::nullopt}));

  // Codes are packed first character highest.
  EXPECT_EQ(fourCharCode("aevt"), 0x61657674u);
}

}  // namespace
}  // namespace wakeloft
