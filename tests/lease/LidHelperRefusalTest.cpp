#include "lease/LidHelperRefusal.h"

#include <gtest/gtest.h>

namespace wakeloft {
namespace {

using Kind = LidHelperRefusal::Kind;

TEST(LidHelperRefusalTest, ReasonTextsAreTheHelpersOwnWords) {
  EXPECT_EQ(LidHelperRefusal::settingUnreadable("no pmset").reason(),
            "The sleep setting could not be read, so it was left as it is: no pmset");
  EXPECT_EQ(LidHelperRefusal::settingUnwritten("denied").reason(), "The sleep setting could not be written: denied");
  EXPECT_EQ(LidHelperRefusal::settingNotPutBack("busy").reason(),
            "The sleep setting could not be put back, and the helper is still trying: busy");
  EXPECT_EQ(LidHelperRefusal::unrecognized("Something new.").reason(), "Something new.");
  EXPECT_EQ(LidHelperRefusal::deadlineNotANumber().reason(), "The lease deadline is not a number.");
  EXPECT_EQ(LidHelperRefusal::settingOnElsewhere().reason(),
            "The sleep setting is already on, set by something other than Wakeloft, and was left as it is.");
  EXPECT_EQ(LidHelperRefusal::settingTurnedOffElsewhere().reason(),
            "The sleep setting was turned off by something other than Wakeloft, and was left off.");
}

// Details keep their own bytes, non-ASCII and empty ones too.
TEST(LidHelperRefusalTest, EveryKnownRefusalSurvivesTheTripAsText) {
  const LidHelperRefusal refusals[] = {
      LidHelperRefusal::settingUnreadable("pmset timed out"),
      LidHelperRefusal::settingUnreadable("pmset \u201Cfailed\u201D"),
      LidHelperRefusal::settingUnwritten(""),
      LidHelperRefusal::settingUnwritten("Operation not permitted"),
      LidHelperRefusal::settingNotPutBack("Read-only file system"),
      LidHelperRefusal::unrecognized("A sentence from a newer helper."),
      LidHelperRefusal::deadlineNotANumber(),
      LidHelperRefusal::settingOnElsewhere(),
      LidHelperRefusal::settingTurnedOffElsewhere(),
  };
  for (const auto& refusal : refusals) EXPECT_EQ(LidHelperRefusal::fromReason(refusal.reason()), refusal);
  EXPECT_NE(LidHelperRefusal::settingUnwritten("a"), LidHelperRefusal::settingUnwritten("b"));
  EXPECT_NE(LidHelperRefusal::settingUnwritten("a"), LidHelperRefusal::settingNotPutBack("a"));
}

TEST(LidHelperRefusalTest, TextsThatOnlyResembleKnownOnesAreKeptWhole) {
  const std::string laterPrefix = "Note: The sleep setting could not be written: denied";
  EXPECT_EQ(LidHelperRefusal::fromReason(laterPrefix), LidHelperRefusal::unrecognized(laterPrefix));
  // The prefix without its trailing blank is not the prefix.
  const std::string noBlank = "The sleep setting could not be written:denied";
  EXPECT_EQ(LidHelperRefusal::fromReason(noBlank).kind(), Kind::unrecognized);
  // A fixed text is matched exactly, not as a prefix.
  const std::string longer = "The lease deadline is not a number. Really.";
  EXPECT_EQ(LidHelperRefusal::fromReason(longer), LidHelperRefusal::unrecognized(longer));
  EXPECT_EQ(LidHelperRefusal::fromReason(""), LidHelperRefusal::unrecognized(""));
}

}  // namespace
}  // namespace wakeloft
