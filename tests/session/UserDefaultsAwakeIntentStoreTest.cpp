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

TEST_F(UserDefaultsAwakeIntentStoreTest, NothingRequestedReadsOffWhateverTheDeadline) {
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::off()));
  defaults.set(until, 1'700'000'000.0);
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::off()));
  defaults.set(requested, false);
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::off()));
}

TEST_F(UserDefaultsAwakeIntentStoreTest, RequestWithoutDeadlineIsIndefinite) {
  defaults.set(requested, true);
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::indefinite()));
}

TEST_F(UserDefaultsAwakeIntentStoreTest, NumbersOfEitherKindAreDeadlines) {
  EXPECT_EQ(loadWithDeadline(std::int64_t{1'700'000'123}),
            StoredAwakeIntent::intent(AwakeIntent::until(Date{1'700'000'123})));
  EXPECT_EQ(loadWithDeadline(1'700'000'123.5), StoredAwakeIntent::intent(AwakeIntent::until(Date{1'700'000'123.5})));
  // Whether it has passed is not the store's business.
  EXPECT_EQ(loadWithDeadline(12.0), StoredAwakeIntent::intent(AwakeIntent::until(Date{12})));
  EXPECT_EQ(loadWithDeadline(Date::distantFuture().secondsSince1970),
            StoredAwakeIntent::intent(AwakeIntent::until(Date::distantFuture())));
}

TEST_F(UserDefaultsAwakeIntentStoreTest, AnythingButANumberIsUnreadable) {
  EXPECT_EQ(loadWithDeadline(true), StoredAwakeIntent::unreadableDeadline());
  EXPECT_EQ(loadWithDeadline("1700000000"), StoredAwakeIntent::unreadableDeadline());
  EXPECT_EQ(loadWithDeadline(Date{1'700'000'000}), StoredAwakeIntent::unreadableDeadline());
  EXPECT_EQ(loadWithDeadline(DefaultsValue::Data{1, 2}), StoredAwakeIntent::unreadableDeadline());
  EXPECT_EQ(loadWithDeadline(DefaultsValue::Array{DefaultsValue(1.0)}), StoredAwakeIntent::unreadableDeadline());
}

TEST_F(UserDefaultsAwakeIntentStoreTest, NumbersThatAreNoDateAreUnreadable) {
  EXPECT_EQ(loadWithDeadline(std::numeric_limits<double>::infinity()), StoredAwakeIntent::unreadableDeadline());
  EXPECT_EQ(loadWithDeadline(-std::numeric_limits<double>::infinity()), StoredAwakeIntent::unreadableDeadline());
  EXPECT_EQ(loadWithDeadline(std::nan("")), StoredAwakeIntent::unreadableDeadline());
  EXPECT_EQ(loadWithDeadline(Date::distantFuture().secondsSince1970 + 1), StoredAwakeIntent::unreadableDeadline());
  EXPECT_EQ(loadWithDeadline(std::numeric_limits<std::int64_t>::max()), StoredAwakeIntent::unreadableDeadline());
}

TEST_F(UserDefaultsAwakeIntentStoreTest, GarbledFlagReadsAsTheDomainConvertsIt) {
  defaults.set(requested, "YES");
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::indefinite()));
  defaults.set(requested, "no");
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::off()));
  defaults.set(requested, std::int64_t{2});
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::indefinite()));
}

TEST_F(UserDefaultsAwakeIntentStoreTest, SavingWritesBothKeysTheWayTheyAreRead) {
  store.save(AwakeIntent::until(Date{1'700'000'000.25}));
  EXPECT_EQ(defaults.object(until), DefaultsValue(1'700'000'000.25));
  EXPECT_EQ(defaults.object(requested), DefaultsValue(true));
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::until(Date{1'700'000'000.25})));

  store.save(AwakeIntent::indefinite());
  EXPECT_FALSE(defaults.object(until).has_value());
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::indefinite()));
}

TEST_F(UserDefaultsAwakeIntentStoreTest, OffRemovesOnlyTheFlag) {
  store.save(AwakeIntent::until(Date{1'700'000'000}));
  store.save(AwakeIntent::off());
  EXPECT_FALSE(defaults.object(requested).has_value());
  EXPECT_EQ(defaults.object(until), DefaultsValue(1'700'000'000.0));
  EXPECT_EQ(store.load(), StoredAwakeIntent::intent(AwakeIntent::off()));
}

}  // namespace
}  // namespace wakeloft
