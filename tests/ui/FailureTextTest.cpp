#include "ui/FailureText.h"

#include <gtest/gtest.h>

#include "ui/TextCatalog.h"

namespace wakeloft {
namespace {

std::string english(const AwakeFailure& failure) { return FailureText::describing(failure).english(); }
AwakeFailure refused(LidHelperRefusal refusal) { return AwakeFailure::LidHelperRefused{std::move(refusal)}; }

TEST(FailureTextTest, AssertionCodesAreShownSignedInDecimal) {
  EXPECT_EQ(english(AwakeFailure::AssertionRefused{-536870199}),
            "macOS couldn't keep your Mac awake (IOKit error -536870199).");
  EXPECT_EQ(english(AwakeFailure::AssertionRefused{INT32_MIN}),
            "macOS couldn't keep your Mac awake (IOKit error -2147483648).");
  EXPECT_EQ(FailureText::describing(AwakeFailure::AssertionRefused{5}),
            LocalizedText(TextCatalog::assertionRefused, {std::int32_t{5}}));
}


TEST(FailureTextTest, MessagesFromElsewhereAreShownWordForWord) {
  const auto text = FailureText::describing(AwakeFailure::Reported{"The disk is full. 100% (%@)"});
  EXPECT_TRUE(text.isVerbatim());
  EXPECT_EQ(text.english(), "The disk is full. 100% (%@)");
  EXPECT_EQ(english(refused(LidHelperRefusal::unrecognized("Something new, 50%"))), "Something new, 50%");
}

TEST(FailureTextTest, RefusalsCarryTheirDetailInsideTheSentence) {
  EXPECT_EQ(english(refused(LidHelperRefusal::settingUnreadable("pmset exited with status 1"))),
            "Deepwake can't start because its helper couldn't read the sleep setting, so nothing was changed "
            "(pmset exited with status 1).");
  EXPECT_EQ(english(refused(LidHelperRefusal::settingUnwritten("%d"))),
            "Deepwake can't start because its helper couldn't change the sleep setting (%d).");
  EXPECT_EQ(english(refused(LidHelperRefusal::settingNotPutBack(""))),
            "Your Mac may stay awake with the lid closed. Deepwake's helper couldn't restore the sleep setting and "
            "is still trying ().");
}

TEST(FailureTextTest, RefusalsWithoutDetailHaveTheirOwnSentence) {
  EXPECT_EQ(english(refused(LidHelperRefusal::deadlineNotANumber())),
            "Deepwake can't start because its helper was sent an end time it couldn't read.");
  EXPECT_EQ(english(refused(LidHelperRefusal::settingOnElsewhere())),
            "Deepwake can't start because something other than Wakeloft already keeps your Mac awake with the lid "
            "closed. That setting was left as it is.");
  EXPECT_EQ(english(refused(LidHelperRefusal::settingTurnedOffElsewhere())),
            "Deepwake stopped because something other than Wakeloft changed the sleep setting. Closing the lid works "
            "as usual again.");
}


}  // namespace
}  // namespace wakeloft
