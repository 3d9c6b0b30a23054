#include "status/QuitConfirmation.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>
#include <vector>

namespace wakeloft {
namespace {

// Deepwake is asked about even with the session off; time left is told in
// whole minutes, and under a minute or not finite is no time at all.
TEST(QuitConfirmationTest, TheQuestionAndTheTimeItTells) {
  using Q = QuitConfirmation;
  const std::vector<std::tuple<bool, bool, std::optional<double>, Q>> cases = {
      {false, true, std::nullopt, Q::deepwake(std::nullopt)},
      {true, true, 59, Q::deepwake(std::nullopt)},
      {false, false, 600, Q::quitNow()},
      {true, false, 7199, Q::awakeMode(7140)},
      {true, false, 60, Q::awakeMode(60)},
      {true, false, 59.99, Q::awakeMode(std::nullopt)},
      {true, false, std::numeric_limits<double>::quiet_NaN(), Q::awakeMode(std::nullopt)},
  };
  for (const auto& [awake, deepwake, remaining, question] : cases) {
    EXPECT_EQ(Q::asked(awake, deepwake, remaining), question);
  }
}

}  // namespace
}  // namespace wakeloft
