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

// Any number that is a date is a deadline, whether or not it has passed
// (that is not the store's business); anything else is unreadable.
TEST_F(UserDefaultsAwakeIntentStoreTest, SavingWritesBothKeysTheWayTheyAreReadAndReadingTakesOnlyNumbersThatAreDatesAsDeadlines) {
  store.save(AwakeIntent::until(Date{1'700'000'000.25}));
  EXPECT_EQ(defaults.object(until), DefaultsValue(1'700'000'000.25));
  EXPECT_EQ(defaults.object(requested), DefaultsValue(true));
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::until(Date{1'700'000'000.25})));

  store.save(AwakeIntent::indefinite());
  EXPECT_FALSE(defaults.object(until).has_value());
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::indefinite()));

  store.save(AwakeIntent::until(Date{1'700'000'000}));
  store.save(AwakeIntent::off());
  EXPECT_FALSE(defaults.object(requested).has_value());
  EXPECT_EQ(defaults.object(until), DefaultsValue(1'700'000'000.0));
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::off()));

  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::off()));
  defaults.set(until, 1'700'000'000.0);
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::off()));
  defaults.set(requested, false);
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::off()));
  defaults.set(requested, true);
  defaults.remove(until);
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::indefinite()));
  // A garbled flag reads as the domain converts it.
  defaults.set(requested, "no");
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::off()));
  defaults.set(requested, std::int64_t{2});
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::indefinite()));

  const auto deadline = [](double seconds) { return StoredAwakeIntent::intent(AwakeIntent::until(Date{seconds})); };
  const auto unreadable = StoredAwakeIntent::unreadableDeadline();
  const double infinity = std::numeric_limits<double>::infinity();
  const std::vector<std::pair<DefaultsValue, StoredAwakeIntent>> cases = {
      {std::int64_t{1'700'000'123}, deadline(1'700'000'123)},
      {1'700'000'123.5, deadline(1'700'000'123.5)},
      {12.0, deadline(12)},
      {Date::distantFuture().secondsSince1970, deadline(Date::distantFuture().secondsSince1970)},
      {true, unreadable},
      {"1700000000", unreadable},
      {Date{1'700'000'000}, unreadable},
      {DefaultsValue::Data{1, 2}, unreadable},
      {DefaultsValue::Array{DefaultsValue(1.0)}, unreadable},
      {infinity, unreadable},
      {-infinity, unreadable},
      {std::nan(""), unreadable},
      {Date::distantFuture().secondsSince1970 + 1, unreadable},
      {std::numeric_limits<std::int64_t>::max(), unreadable},
  };
  for (const auto& [stored, read] : cases) EXPECT_EQ(loadWithDeadline(stored), read);
}

}  // namespace
}  // namespace wakeloft
