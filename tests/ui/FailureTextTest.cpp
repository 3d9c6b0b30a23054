#include "ui/FailureText.h"

#include <gtest/gtest.h>

#include <vector>

#include "ui/TextCatalog.h"

namespace wakeloft {
namespace {

std::string english(const AwakeFailure& failure) { return FailureText::describing(failure).english(); }
AwakeFailure refused(LidHelperRefusal refusal) { return AwakeFailure::LidHelperRefused{std::move(refusal)}; }

TEST(FailureTextTest, EachFailureHasItsSentenceWithItsDetail) {
  const std::vector<std::pair<AwakeFailure, LocalizedText>> cases = {
      {AwakeFailure::AssertionRefused{5}, {TextCatalog::assertionRefused, {std::int32_t{5}}}},
      {refused(LidHelperRefusal::settingUnreadable("pmset exited with status 1")),
       {TextCatalog::settingUnreadable, {std::string("pmset exited with status 1")}}},
      {refused(LidHelperRefusal::settingUnwritten("%d")), {TextCatalog::settingUnwritten, {std::string("%d")}}},
      {refused(LidHelperRefusal::settingNotPutBack("")), {TextCatalog::settingNotPutBack, {std::string()}}},
      {AwakeFailure::LidHelperRequiresApproval{}, TextCatalog::lidHelperRequiresApproval},
      {refused(LidHelperRefusal::settingOnElsewhere()), TextCatalog::settingOnElsewhere},
  };
  for (const auto& [failure, text] : cases) EXPECT_EQ(FailureText::describing(failure), text) << text.english();
}

// A detail is never read as a format.
TEST(FailureTextTest, DetailsAndMessagesFromElsewhereAreShownWordForWord) {
  EXPECT_EQ(english(refused(LidHelperRefusal::settingUnwritten("%d"))),
            "Deepwake can't start because its helper couldn't change the sleep setting (%d).");
  EXPECT_EQ(FailureText::describing(AwakeFailure::Reported{"100% (%@)"}), LocalizedText::verbatim("100% (%@)"));
  EXPECT_EQ(english(refused(LidHelperRefusal::unrecognized("Something new, 50%"))), "Something new, 50%");
}

}  // namespace
}  // namespace wakeloft
