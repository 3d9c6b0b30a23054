// The stored answer to whether scripts may turn Deepwake on.

#include "lid/DeepwakeAutomationConsent.h"

#include <gtest/gtest.h>

#include "base/InMemoryDefaultsDomain.h"

namespace wakeloft {
namespace {

using Answer = DeepwakeAutomationConsent::Answer;

TEST(DeepwakeAutomationConsentTest, ReadsABooleanAndAsksAgainForAnythingElseWhichIsRemoved) {
  struct Case {
    std::optional<DefaultsValue> stored;
    Answer answer;
  };
  for (const auto& [stored, answer] : std::vector<Case>{{std::nullopt, Answer::notAsked},
                                                        {true, Answer::allowed},
                                                        {false, Answer::refused},
                                                        {std::int64_t{1}, Answer::notAsked},
                                                        {"YES", Answer::notAsked}}) {
    InMemoryDefaultsDomain defaults;
    if (stored) defaults.set(DeepwakeAutomationConsent::key, *stored);
    EXPECT_EQ(DeepwakeAutomationConsent(defaults).answer(), answer);
    const bool kept = stored && stored->holds<bool>();
    EXPECT_EQ(defaults.object(DeepwakeAutomationConsent::key).has_value(), kept);
  }
}

TEST(DeepwakeAutomationConsentTest, AProfilesAnswerStandsAndAnswersARequestWaitingWhenItArrives) {
  InMemoryDefaultsDomain defaults;
  DeepwakeAutomationConsent consent(defaults);
  int carried = 0;
  consent.request([&] { ++carried; });
  defaults.force(DeepwakeAutomationConsent::key, true);
  consent.reload();
  EXPECT_EQ(carried, 1);
  consent.answer(false);
  EXPECT_EQ(consent.answer(), Answer::allowed);
  EXPECT_FALSE(defaults.values().contains(DeepwakeAutomationConsent::key));

  // What a profile says unclearly allows nothing, and stays.
  defaults.force(DeepwakeAutomationConsent::key, "sometimes");
  consent.reload();
  EXPECT_EQ(consent.answer(), Answer::refused);
  EXPECT_TRUE(defaults.isForced(DeepwakeAutomationConsent::key));
}

}  // namespace
}  // namespace wakeloft
