#include "ui/FailureText.h"

#include <gtest/gtest.h>

#include <vector>

#include "ui/TextCatalog.h"

namespace wakeloft {
namespace {

std::string english(const AwakeFailure& failure) { return FailureText::describing(failure).english(); }
AwakeFailure refused(LidHelperRefusal refusal) { return AwakeFailure::LidHelperRefused{std::move(refusal)}; }

TEST(FailureTextTest, EachFailureHasItsSentenceWithItsDetailAndMessagesFromElsewhereWordForWord) {
  const std::vector<std::pair<AwakeFailure, LocalizedText>> cases = {
      {AwakeFailure::AssertionRefused{5}, {TextCatalog::assertionRefused, {std::int32_t{5}}}},
      {AwakeFailure::LidHelperUnavailable{}, TextCatalog::lidHelperUnavailable},
      {AwakeFailure::LidHelperRequiresApproval{}, TextCatalog::lidHelperRequiresApproval},
      {refused(LidHelperRefusal::settingUnreadable("pmset exited with status 1")),
       {TextCatalog::settingUnreadable, {std::string("pmset exited with status 1")}}},
      {refused(LidHelperRefusal::settingUnwritten("%d")), {TextCatalog::settingUnwritten, {std::string("%d")}}},
      {refused(LidHelperRefusal::settingNotPutBack("")), {TextCatalog::settingNotPutBack, {std::string()}}},
      {refused(LidHelperRefusal::deadlineNotANumber()), TextCatalog::deadlineNotANumber},
      {refused(LidHelperRefusal::settingOnElsewhere()), TextCatalog::settingOnElsewhere},
      {refused(LidHelperRefusal::settingTurnedOffElsewhere()), TextCatalog::settingTurnedOffElsewhere},
  };
  for (const auto& [failure, text] : cases) EXPECT_EQ(FailureText::describing(failure), text) << text.english();
  // Codes are signed, in decimal; details go inside the sentence.
  EXPECT_EQ(english(AwakeFailure::AssertionRefused{INT32_MIN}),
            "macOS couldn't keep your Mac awake (IOKit error -2147483648).");
  EXPECT_EQ(english(refused(LidHelperRefusal::settingUnwritten("%d"))),
            "Deepwake can't start because its helper couldn't change the sleep setting (%d).");

  const auto text = FailureText::describing(AwakeFailure::Reported{"The disk is full. 100% (%@)"});
  EXPECT_TRUE(text.isVerbatim());
  EXPECT_EQ(text.english(), "The disk is full. 100% (%@)");
  EXPECT_EQ(english(refused(LidHelperRefusal::unrecognized("Something new, 50%"))), "Something new, 50%");
}

}  // namespace
}  // namespace wakeloft
