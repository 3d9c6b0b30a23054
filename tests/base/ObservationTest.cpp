#include "base/Observation.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

#include "base/Date.h"
#include "base/WeakSelf.h"

namespace wakeloft {
namespace {

TEST(ObservationTest, PublishedValuesSignalOnlyRealChanges) {
  ChangeSignal published;
  Published<std::optional<Date>> until(published, std::nullopt);
  int publishedChanges = 0;
  const auto publishedSubscription = published.observe([&] { ++publishedChanges; });

  until.set(std::nullopt);
  EXPECT_EQ(publishedChanges, 0);
  until.set(Date{10});
  until.set(Date{10});
  EXPECT_EQ(publishedChanges, 1);
}

TEST(ObservationTest, ObserversMayCancelThemselvesOthersOrTheirSubscriptionsAtAnyTime) {
  ChangeSignal signal;
  int changes = 0;
  auto subscription = signal.observe([&] { ++changes; });
  signal.notify();
  subscription = Subscription();
  signal.notify();
  EXPECT_EQ(changes, 1);

  {
    ChangeSignal shortLived;
    subscription = shortLived.observe([] {});
  }
  subscription.cancel();  // must not touch the signal that is gone

  int first = 0, second = 0;
  Subscription secondSubscription;
  auto firstSubscription = signal.observe([&] {
    ++first;
    secondSubscription.cancel();
  });
  secondSubscription = signal.observe([&] { ++second; });
  signal.notify();
  signal.notify();
  EXPECT_EQ(first, 2);
  EXPECT_EQ(second, 0);
}

TEST(WeakSelfTest, CallbacksDoNothingOnceTheObjectIsGone) {
  struct Counter {
    int calls = 0;
    WeakSelf<Counter> weakSelf{this};
  };
  auto counter = std::make_unique<Counter>();
  int* calls = &counter->calls;
  auto callback = counter->weakSelf([](Counter& self, int by) { self.calls += by; });
  callback(2);
  EXPECT_EQ(*calls, 2);
  counter.reset();
  callback(2);  // would write freed memory if it still reached the object
}

}  // namespace
}  // namespace wakeloft
