#include "ui/QuitAppleEvent.h"

#include <gtest/gtest.h>

namespace wakeloft {
namespace {

QuitAppleEvent quitEvent(std::optional<std::uint32_t> parameter, std::optional<std::uint32_t> attribute) {
  return {fourCharCode("aevt"), fourCharCode("quit"), parameter, attribute};
}

TEST(QuitAppleEventTest, CodesArePackedFirstCharacterHighest) {
  EXPECT_EQ(fourCharCode("aevt"), 0x61657674u);
  EXPECT_EQ(fourCharCode("why?"), 0x7768793Fu);
}

TEST(QuitAppleEventTest, LogOutRestartShutDownAndQuitAllAreTheSystems) {
  for (const char* reason : {"quia", "rlgo", "rest", "shut", "logo"}) {
    const char code[5] = {reason[0], reason[1], reason[2], reason[3], 0};
    EXPECT_TRUE(QuitAppleEvent::isSystemQuit(quitEvent(fourCharCode(code), std::nullopt))) << reason;
    EXPECT_TRUE(QuitAppleEvent::isSystemQuit(quitEvent(std::nullopt, fourCharCode(code)))) << reason;
  }
}

TEST(QuitAppleEventTest, TheUsersQuitIsNotTheSystems) {
  EXPECT_FALSE(QuitAppleEvent::isSystemQuit(std::nullopt));
  EXPECT_FALSE(QuitAppleEvent::isSystemQuit(quitEvent(std::nullopt, std::nullopt)));
  EXPECT_FALSE(QuitAppleEvent::isSystemQuit(quitEvent(fourCharCode("user"), std::nullopt)));
  EXPECT_FALSE(QuitAppleEvent::isSystemQuit(quitEvent(0, std::nullopt)));
}

TEST(QuitAppleEventTest, OnlyAQuitEventCounts) {
  EXPECT_FALSE(QuitAppleEvent::isSystemQuit(
      QuitAppleEvent{fourCharCode("aevt"), fourCharCode("oapp"), fourCharCode("shut"), std::nullopt}));
  EXPECT_FALSE(QuitAppleEvent::isSystemQuit(
      QuitAppleEvent{fourCharCode("misc"), fourCharCode("quit"), fourCharCode("shut"), std::nullopt}));
}

TEST(QuitAppleEventTest, TheParameterOutranksTheAttribute) {
  EXPECT_FALSE(QuitAppleEvent::isSystemQuit(quitEvent(fourCharCode("user"), fourCharCode("shut"))));
  EXPECT_TRUE(QuitAppleEvent::isSystemQuit(quitEvent(fourCharCode("rest"), fourCharCode("user"))));
}

}  // namespace
}  // namespace wakeloft
