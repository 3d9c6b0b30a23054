#include "session/UserDefaultsAwakeIntentStore.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "base/InMemoryDefaultsDomain.h"

namespace wakeloft {
namespace {

constexpr const char* requested = "com.wakeloft.isAwakeRequested";
constexpr const char* until = "com.wakeloft.awakeUntil";

class UserDefaultsAwakeIntentStoreTest : public ::testing::Test {
 protected:
  StoredAwakeIntent loadWithDeadline(DefaultsValue deadline) {
    defaults.set(requested, true);
    defaults.set(until, std::move(deadline));
    return store.load();
  }

  InMemoryDefaultsDomain defaults;
  UserDefaultsAwakeIntentStore store{defaults};
};

TEST_F(UserDefaultsAwakeIntentStoreTest, EachIntentIsWrittenUnderBothKeysAsItIsRead) {
  store.save(AwakeIntent::until(Date{1'700'000'000.25}));
  EXPECT_EQ(defaults.object(until), DefaultsValue(1'700'000'000.25));
  EXPECT_EQ(defaults.object(requested), DefaultsValue(true));
  for (const auto& intent :
       {AwakeIntent::until(Date{1'700'000'000.25}), AwakeIntent::indefinite(), AwakeIntent::off()}) {
    store.save(intent);
    EXPECT_EQ(store.load(), StoredAwakeIntent::intent(intent));
  }
  EXPECT_FALSE(defaults.object(requested).has_value());
}

// Any number that is a date is a deadline, whether or not it has passed
// (that is not the store's business); anything else is unreadable.
TEST_F(UserDefaultsAwakeIntentStoreTest, OnlyANumberThatIsADateReadsAsADeadline) {
  const auto deadline = [](double seconds) { return StoredAwakeIntent::intent(AwakeIntent::until(Date{seconds})); };
  const auto unreadable = StoredAwakeIntent::unreadableDeadline();
  const std::vector<std::pair<DefaultsValue, StoredAwakeIntent>> cases = {
      {std::int64_t{1'700'000'123}, deadline(1'700'000'123)},
      {12.0, deadline(12)},
      {true, unreadable},
      {Date{1'700'000'000}, unreadable},
      {std::numeric_limits<double>::infinity(), unreadable},
      {std::nan(""), unreadable},
      {Date::distantFuture().secondsSince1970 + 1, unreadable},
      {std::numeric_limits<std::int64_t>::max(), unreadable},
  };
  for (const auto& [stored, read] : cases) EXPECT_EQ(loadWithDeadline(stored), read);
}

}  // namespace
}  // namespace wakeloft
