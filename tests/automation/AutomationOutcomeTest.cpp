// The line on which the app tells the command what it did.

#include <gtest/gtest.h>

#include "automation/AutomationOutcome.h"

namespace wakeloft {
namespace {

using Kind = AutomationOutcome::Kind;

TEST(AutomationOutcomeTest, EncodesEveryKindAndReadsItBack) {
  const std::vector<std::pair<AutomationOutcome, std::string>> cases = {
      {{Kind::accepted, "ab-12", 0, ""}, "accepted;id=ab-12;pid=0;reason="},
      {{Kind::refused, "x", 0, "Deepwake is not allowed; ask first"}, "refused;id=x;pid=0;reason=Deepwake is not allowed; ask first"},
      {{Kind::released, "", 4242, "you turned Wakeloft off"}, "released;id=;pid=4242;reason=you turned Wakeloft off"},
  };
  for (const auto& [outcome, line] : cases) {
    EXPECT_EQ(outcome.encode(), line);
    const auto parsed = AutomationOutcome::parse(line);
    ASSERT_TRUE(std::holds_alternative<AutomationOutcome>(parsed)) << std::get<AutomationError>(parsed).reason;
    EXPECT_EQ(std::get<AutomationOutcome>(parsed), outcome);
  }
}

TEST(AutomationOutcomeTest, EncodingKeepsToOneReadableLine) {
  const AutomationOutcome multiline{Kind::refused, "a", 0, "two\nlines"};
  EXPECT_EQ(multiline.encode(), "refused;id=a;pid=0;reason=two lines");
  // "é" is two bytes; the cut falls between them and backs off to before it.
  const std::string prefix = "refused;id=a;pid=0;reason=";
  const AutomationOutcome tooLong{Kind::refused, "a", 0,
                                  std::string(AutomationOutcome::longest - prefix.size() - 1, 'x') + "\xC3\xA9"};
  const auto line = tooLong.encode();
  EXPECT_EQ(line.size(), AutomationOutcome::longest - 1);
  EXPECT_TRUE(std::holds_alternative<AutomationOutcome>(AutomationOutcome::parse(line)));
}

TEST(AutomationOutcomeTest, RefusesGarbage) {
  for (const std::string& line : std::vector<std::string>{"", "granted;id=a;pid=0;reason=", "accepted;id=a;pid=0",
                                 "accepted;pid=0;id=a;reason=", "accepted;id=a_b;pid=0;reason=",
                                 "accepted;id=a;pid=01;reason=", "refused;id=x;pid=-0;reason=no",
                                 "released;id=a;pid=0;reason=gone", "refused;id=a;pid=7;reason=no",
                                 "refused;id=a;pid=0;reason=a	b", "accepted;id=a;pid=0;reason=but", std::string(2000, 'a')}) {
    EXPECT_TRUE(std::holds_alternative<AutomationError>(AutomationOutcome::parse(line))) << line;
  }
}

}  // namespace
}  // namespace wakeloft
