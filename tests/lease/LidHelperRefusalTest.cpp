#include "lease/LidHelperRefusal.h"

#include <gtest/gtest.h>

namespace wakeloft {
namespace {

using Kind = LidHelperRefusal::Kind;

// Details keep their own bytes, non-ASCII and empty ones too.
TEST(LidHelperRefusalTest, EveryKnownRefusalSurvivesTheTripAsTextAndOnesThatOnlyResembleThemAreKeptWhole) {
  const LidHelperRefusal refusals[] = {
      LidHelperRefusal::settingUnreadable("pmset \u201Cfailed\u201D"),
      LidHelperRefusal::settingUnwritten(""),
      LidHelperRefusal::settingNotPutBack("Read-only file system"),
      LidHelperRefusal::unrecognized("A sentence from a newer helper."),
      LidHelperRefusal::deadlineNotANumber(),
      LidHelperRefusal::settingOnElsewhere(),
      LidHelperRefusal::settingTurnedOffElsewhere(),
  };
  for (const auto& refusal : refusals) EXPECT_EQ(LidHelperRefusal::fromReason(refusal.reason()), refusal);

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
