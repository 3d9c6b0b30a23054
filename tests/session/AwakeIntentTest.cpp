#include "session/AwakeIntent.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "session/AwakeDuration.h"
#include "session/InMemoryAwakeIntentStore.h"

namespace wakeloft {
namespace {

TEST(AwakeIntentTest, DeadlineIsNowPlusSecondsWhileItIsAUsableDateEqualityLooksAtItAndTheInMemoryStoreReadsIt) {
  const Date now{1'700'000'000};
  EXPECT_EQ(AwakeIntent::deadline(0, now), now);
  EXPECT_EQ(AwakeIntent::deadline(1800, now), now.adding(1800));
  EXPECT_EQ(AwakeIntent::deadline(-60, now), now.adding(-60));
  EXPECT_EQ(AwakeIntent::deadline(std::numeric_limits<double>::infinity(), now), std::nullopt);
  EXPECT_EQ(AwakeIntent::deadline(std::nan(""), now), std::nullopt);
  EXPECT_EQ(AwakeIntent::deadline(Date::distantFuture().secondsSince(now), now), Date::distantFuture());
  EXPECT_EQ(AwakeIntent::deadline(Date::distantFuture().secondsSince(now) + 1, now), std::nullopt);
  EXPECT_EQ(AwakeIntent::deadline(std::numeric_limits<double>::max(), now), std::nullopt);

  EXPECT_NE(AwakeIntent::until(Date{5}), AwakeIntent::until(Date{6}));
  EXPECT_NE(AwakeIntent::until(Date{5}), AwakeIntent::indefinite());
  EXPECT_NE(AwakeIntent::off(), AwakeIntent::indefinite());

  InMemoryAwakeIntentStore store(StoredAwakeIntent::unreadableDeadline());
  EXPECT_TRUE(store.isAwakeRequested());
  EXPECT_EQ(store.awakeUntil(), std::nullopt);
  store.save(AwakeIntent::until(Date{42}));
  EXPECT_EQ(store.awakeUntil(), Date{42});
  store.save(AwakeIntent::off());
  EXPECT_FALSE(store.isAwakeRequested());
}

}  // namespace
}  // namespace wakeloft
