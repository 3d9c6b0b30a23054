#include <gtest/gtest.h>

#include <utility>

#include "release/SparkleVersionOrder.h"

namespace wakeloft {
namespace {

using Pair = std::pair<const char*, const char*>;

TEST(SparkleVersionOrderTest, OrdersVersionsAsSparklesComparatorTestsDo) {
  // Sparkle's own comparator cases, each pair oldest first.
  const Pair ascending[] = {
      {"1.0", "1.1"}, {"0.0.1", "0.1"}, {"0.1", "0.1.2"}, {"1.9", "1.10"}, {"1.5.5-335d3e2", "1.5.6-b252311"},
      {"1.5.5", "1.5.6a1"}, {"1.1.0b1", "1.1.0b2"}, {"1.1.1b2", "1.1.2a1"}, {"1.0a1", "1.0b1"}, {"1.0b1", "1.0"},
      {"0.9", "1.0a1"}, {"1.0b", "1.0b2"}, {"1.0b9", "1.0b10"}, {"1.0rc", "1.0"}, {"1.0pre1", "1.0"},
      {"1.0 (1234)", "1.0 (1235)"}, {"1.0b1 (1234)", "1.0 (1234)"}, {"1.0b5 (1234)", "1.0.1b5 (1234)"},
      {"1.1.1.1818", "2.0.0.2430"}, {"3.3 (5847)", "3.3.1b1 (5902)"}, {"201210251627", "201211051041"},
  };
  const Pair same[] = {
      {"1.0", "1.0.0"}, {"1.5.5-335d3e2", "1.5.5-a655360"}, {"1.5-335d3e2", "1.5.0-335d3e2"},
      {"1.0pre1", "1.0.0pre1"}, {"3.3b1 (5902)", "3.3.0b1 (5902)"}, {"201210251627.0", "201210251627"},
      // Numbers too large for a long long all read as its largest value.
      {"99999999999999999999", "99999999999999999998"},
  };
  for (const auto& [older, newer] : ascending) {
    EXPECT_EQ(SparkleVersionOrder::compare(older, newer), std::strong_ordering::less) << older << " < " << newer;
  }
  for (const auto& [a, b] : same) {
    EXPECT_EQ(SparkleVersionOrder::compare(a, b), std::strong_ordering::equal) << a << " = " << b;
  }
}

}  // namespace
}  // namespace wakeloft
