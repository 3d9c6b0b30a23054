// Sessions held for processes, beside the user's own, and how the claims are
// remembered.

#include "session/ProcessBindingController.h"

#include <gtest/gtest.h>

#include <tuple>

#include "base/InMemoryDefaultsDomain.h"
#include "session/UserDefaultsProcessBindingStore.h"
#include "ui/TestControllers.h"

namespace wakeloft {
namespace {

using Release = ProcessBindingController::Release;

const RunningProcess make{{4242, 7}, "make"};
const RunningProcess render{{5000, 1}, "render"};

class ProcessBindingControllerTest : public ::testing::Test {
 protected:
  ProcessBindingControllerTest() {
    app.processes->start(4242, 7, "make");
    app.processes->start(5000, 1, "render");
  }
  // A launch over what is stored.
  void start(StoredAwakeIntent intent = StoredAwakeIntent::intent(AwakeIntent::off())) {
    app.intents->stored = intent;
    app.start();
    app.binding->observeReleases(
        [this](const RunningProcess& process, Release why) { released.emplace_back(process.name, why); });
  }
  std::vector<std::string> held() const {
    std::vector<std::string> names;
    for (const auto& hold : app.binding->holds()) names.push_back(hold.process.name);
    return names;
  }
  // Nothing held, nothing watched, nothing remembered.
  void expectUnbound() {
    EXPECT_TRUE(app.binding->holds().empty());
    EXPECT_TRUE(app.processWatcher->watching.empty());
    EXPECT_EQ(app.bindingStore->stored, StoredProcessBinding::none());
  }

  testing::TestControllers app;
  std::vector<std::pair<std::string, Release>> released;
};

TEST_F(ProcessBindingControllerTest, AHeldSessionIsRememberedAndEndsWithItsProcess) {
  start();
  EXPECT_EQ(app.binding->hold(4242, std::nullopt), std::nullopt);
  EXPECT_EQ(app.bindingStore->stored, StoredProcessBinding::bound({std::nullopt, {{make, std::nullopt}}}));
  app.processWatcher->end(4242);
  EXPECT_FALSE(app.awake->isRequested());
  expectUnbound();
}

TEST_F(ProcessBindingControllerTest, ATimedHoldEndsWithItsTime) {
  start();
  EXPECT_EQ(app.binding->hold(4242, 600), std::nullopt);
  app.clocks.pass(600);
  app.sessionTimer->fire();
  EXPECT_EQ(released, (std::vector<std::pair<std::string, Release>>{{"make", Release::timeRanOut}}));
  expectUnbound();
}

TEST_F(ProcessBindingControllerTest, ARefusedHoldSaysWhyAndChangesNothing) {
  start();
  EXPECT_EQ(app.binding->hold(99, 600), "there is no process 99");
  EXPECT_EQ(app.binding->hold(4242, 1e300), "the session cannot last that long");
  app.processWatcher->refusal = "cannot watch";
  EXPECT_EQ(app.binding->hold(4242, 600), "cannot watch");
  app.processWatcher->refusal.reset();
  // Ended just as the watch began, its pid already another process's.
  app.processWatcher->whileWatching = [this] { app.processes->start(4242, 8, "other"); };
  EXPECT_EQ(app.binding->hold(4242, 600), "process 4242 has ended");
  EXPECT_FALSE(app.awake->isRequested());
  expectUnbound();
}

TEST_F(ProcessBindingControllerTest, OneHoldsOwnEndLetsGoOfItAlone) {
  start();
  ASSERT_EQ(app.binding->hold(4242, std::nullopt), std::nullopt);
  ASSERT_EQ(app.binding->hold(5000, 600), std::nullopt);
  app.clocks.pass(600);
  app.holdTimer->fire();
  EXPECT_EQ(held(), std::vector<std::string>{"make"});
  EXPECT_FALSE(app.processWatcher->isWatching(5000));
  EXPECT_TRUE(app.awake->isOn());
}

TEST_F(ProcessBindingControllerTest, TimedHoldsKeepTheSessionUntilTheLaterEnd) {
  start();
  ASSERT_EQ(app.binding->hold(5000, 300), std::nullopt);
  ASSERT_EQ(app.binding->hold(4242, 900), std::nullopt);
  EXPECT_EQ(app.awake->activeUntil(), app.clocks.now().adding(900));
  app.processWatcher->end(4242);
  EXPECT_EQ(app.awake->activeUntil(), app.clocks.now().adding(300));
}

TEST_F(ProcessBindingControllerTest, AHoldNeverEndsTheUsersSession) {
  start();
  app.awake->turnOn(1800);
  const auto usersEnd = app.awake->activeUntil();
  ASSERT_EQ(app.binding->hold(4242, std::nullopt), std::nullopt);
  EXPECT_EQ(app.awake->activeUntil(), std::nullopt);
  app.processWatcher->end(4242);
  EXPECT_EQ(app.awake->activeUntil(), usersEnd);
}

TEST_F(ProcessBindingControllerTest, TheUsersStartReplacesOnlyTheUsersClaim) {
  start();
  ASSERT_EQ(app.binding->hold(4242, 600), std::nullopt);
  app.awake->turnOn(60);
  EXPECT_EQ(held(), std::vector<std::string>{"make"});
  EXPECT_EQ(app.awake->activeUntil(), app.clocks.now().adding(600));
}

TEST_F(ProcessBindingControllerTest, ALaunchTakesUpOnlyTheVeryProcessesStillRunning) {
  const auto until = AwakeIntent::until(app.clocks.now().adding(60));
  const SessionClaims both{std::nullopt, {{make, std::nullopt}, {render, std::nullopt}}};
  const SessionClaims withTheUsers{UserClaim{}, {{make, std::nullopt}}};
  // What was stored, whose pid now runs another process, the session asked
  // for; the processes taken up and whether the session stays on.
  using Case = std::tuple<StoredProcessBinding, std::optional<pid_t>, AwakeIntent, std::vector<std::string>, bool>;
  for (const auto& [stored, reused, intent, kept, on] : std::vector<Case>{
           {StoredProcessBinding::bound(both), std::nullopt, AwakeIntent::indefinite(), {"make", "render"}, true},
           {StoredProcessBinding::bound(both), 4242, AwakeIntent::indefinite(), {"render"}, true},
           {StoredProcessBinding::bound({std::nullopt, {{make, std::nullopt}}}), 4242, until, {}, false},
           {StoredProcessBinding::bound(withTheUsers), 4242, AwakeIntent::indefinite(), {}, true},
           {StoredProcessBinding::unreadable(), std::nullopt, AwakeIntent::indefinite(), {}, false},
           {StoredProcessBinding::bound(both), std::nullopt, AwakeIntent::off(), {}, false},  // its session over
       }) {
    app.processes->start(4242, 7, "make");
    if (reused) app.processes->start(*reused, 8, "other");
    app.bindingStore->stored = stored;
    app.processWatcher->watching.clear();
    start(StoredAwakeIntent::intent(intent));
    EXPECT_EQ(held(), kept);
    EXPECT_EQ(app.awake->isOn(), on);
    EXPECT_EQ(app.processWatcher->watching.size(), kept.size());
    EXPECT_EQ(app.bindingStore->stored == StoredProcessBinding::none(), kept.empty()) << "stored while nothing is held";
  }
}

TEST(SessionClaimsTest, EndingLastNamesTheProcessesTheSessionMayWaitForLongest) {
  const Date now{1'700'000'000};
  const ProcessHold untilEnds{make, std::nullopt};
  const ProcessHold forAMinute{render, now.adding(60)};
  const ProcessHold forAnHour{make, now.adding(3600)};
  using Case = std::tuple<std::optional<UserClaim>, std::vector<ProcessHold>, std::vector<RunningProcess>>;
  for (const auto& [user, holds, named] : std::vector<Case>{
           {std::nullopt, {untilEnds}, {make}},
           {UserClaim{}, {untilEnds}, {}},
           {UserClaim{now.adding(600)}, {untilEnds, forAMinute}, {make, render}},
           {UserClaim{now.adding(600)}, {forAMinute}, {}},
           {UserClaim{now.adding(600)}, {forAMinute, forAnHour}, {make}},
       }) {
    EXPECT_EQ((SessionClaims{user, holds}.endingLast()), named);
  }
}

TEST(UserDefaultsProcessBindingStoreTest, ReadsOnlyWhatItWritesAndNamesItCanShow) {
  InMemoryDefaultsDomain defaults;
  UserDefaultsProcessBindingStore store(defaults);
  const SessionClaims claims{UserClaim{Date{2e9}}, {{make, Date{1e9}}, {render, std::nullopt}}};
  store.save(claims);
  EXPECT_EQ(store.load(), StoredProcessBinding::bound(claims));

  using Dictionary = DefaultsValue::Dictionary;
  const auto hold = [](std::int64_t pid, DefaultsValue start, DefaultsValue name) {
    return DefaultsValue(Dictionary{{"pid", pid}, {"startTime", std::move(start)}, {"name", std::move(name)}});
  };
  const auto record = [](std::vector<DefaultsValue> holds) {
    return DefaultsValue(Dictionary{{"holds", DefaultsValue::Array(std::move(holds))}});
  };
  const std::vector<DefaultsValue> garbled = {
      DefaultsValue("make"),
      record({}),
      record(std::vector<DefaultsValue>(33, hold(4242, std::int64_t{7}, "make"))),
      record({hold(4242, std::int64_t{7}, "make"), hold(4242, std::int64_t{8}, "make")}),
      record({DefaultsValue(Dictionary{{"pid", std::int64_t{4242}}, {"name", "make"}})}),
      record({hold(1, std::int64_t{7}, "make")}),
      record({hold(4242, std::int64_t{-7}, "make")}),
      record({hold(4242, std::int64_t{7}, "ma\x01ke")}),
      record({hold(4242, std::int64_t{7}, std::string(65, 'm'))}),
  };
  for (const auto& value : garbled) {
    defaults.set(UserDefaultsProcessBindingStore::key, value);
    EXPECT_EQ(store.load(), StoredProcessBinding::unreadable());
  }
  store.save(std::nullopt);
  EXPECT_EQ(defaults.object(UserDefaultsProcessBindingStore::key), std::nullopt);

  // Whatever the system calls a process, the name shown and stored reads back.
  for (const auto& [raw, shown] : std::vector<std::pair<std::string, std::string>>{
           {"make", "make"}, {"ma\x01ke\xFF", "ma?ke?"}, {"", "4242"}, {std::string(70, 'x'), std::string(64, 'x')}}) {
    EXPECT_EQ(ProcessBindingController::shownName(raw, 4242), shown);
    EXPECT_TRUE(UserDefaultsProcessBindingStore::isStorableName(shown));
  }
}

}  // namespace
}  // namespace wakeloft
