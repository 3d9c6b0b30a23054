// Sessions held for processes, beside the user's own, and how the claims are
// remembered.

#include "session/ProcessBindingController.h"

#include <gtest/gtest.h>

#include <tuple>

#include "base/InMemoryDefaultsDomain.h"
#include "session/InMemoryAwakeIntentStore.h"
#include "session/InMemoryProcessBindingStore.h"
#include "session/InMemorySleepBlocker.h"
#include "session/UserDefaultsProcessBindingStore.h"
#include "support/ManualClocks.h"
#include "support/ManualProcesses.h"
#include "support/ManualScheduling.h"

namespace wakeloft {
namespace {

using testing::ManualDeadlineScheduler;
using Release = ProcessBindingController::Release;

const RunningProcess make{{4242, 7}, "make"};
const RunningProcess render{{5000, 1}, "render"};

class ProcessBindingControllerTest : public ::testing::Test {
 protected:
  ProcessBindingControllerTest() {
    processes->start(4242, 7, "make");
    processes->start(5000, 1, "render");
  }
  void start(StoredAwakeIntent intent = StoredAwakeIntent::intent(AwakeIntent::off())) {
    intents->stored = intent;
    awake = std::make_shared<AwakeController>(std::make_shared<InMemorySleepBlocker>(), intents, clocks.dates,
                                              clocks.continuous, timer,
                                              std::make_shared<testing::ManualRecheckNotifier>(), true);
    binding =
        std::make_unique<ProcessBindingController>(awake, store, processes, watcher, clocks.dates, holdTimer, true);
    binding->observeReleases(
        [this](const RunningProcess& process, Release why) { released.emplace_back(process.name, why); });
  }
  std::vector<std::string> held() const {
    std::vector<std::string> names;
    for (const auto& hold : binding->holds()) names.push_back(hold.process.name);
    return names;
  }
  // Nothing held, nothing watched, nothing remembered.
  void expectUnbound() {
    EXPECT_TRUE(binding->holds().empty());
    EXPECT_TRUE(watcher->watching.empty());
    EXPECT_EQ(store->stored, StoredProcessBinding::none());
  }

  testing::ManualMachineClocks clocks;
  std::shared_ptr<InMemoryAwakeIntentStore> intents = std::make_shared<InMemoryAwakeIntentStore>();
  std::shared_ptr<ManualDeadlineScheduler> timer = std::make_shared<ManualDeadlineScheduler>();
  std::shared_ptr<ManualDeadlineScheduler> holdTimer = std::make_shared<ManualDeadlineScheduler>();
  std::shared_ptr<InMemoryProcessBindingStore> store = std::make_shared<InMemoryProcessBindingStore>();
  std::shared_ptr<testing::SettableProcessTable> processes = std::make_shared<testing::SettableProcessTable>();
  std::shared_ptr<testing::ManualProcessExitWatcher> watcher = std::make_shared<testing::ManualProcessExitWatcher>();
  std::shared_ptr<AwakeController> awake;
  std::unique_ptr<ProcessBindingController> binding;
  std::vector<std::pair<std::string, Release>> released;
};

TEST_F(ProcessBindingControllerTest, AHeldSessionIsRememberedAndEndsWithItsProcess) {
  start();
  EXPECT_EQ(binding->hold(4242, std::nullopt), std::nullopt);
  EXPECT_EQ(store->stored, StoredProcessBinding::bound({std::nullopt, {{make, std::nullopt}}}));
  watcher->end(4242);
  EXPECT_FALSE(awake->isRequested());
  expectUnbound();
}

TEST_F(ProcessBindingControllerTest, ATimedHoldEndsWithItsTime) {
  start();
  EXPECT_EQ(binding->hold(4242, 600), std::nullopt);
  clocks.pass(600);
  timer->fire();
  EXPECT_EQ(released, (std::vector<std::pair<std::string, Release>>{{"make", Release::timeRanOut}}));
  expectUnbound();
}

TEST_F(ProcessBindingControllerTest, ARefusedHoldSaysWhyAndChangesNothing) {
  start();
  EXPECT_EQ(binding->hold(99, 600), "there is no process 99");
  EXPECT_EQ(binding->hold(4242, 1e300), "the session cannot last that long");
  watcher->refusal = "cannot watch";
  EXPECT_EQ(binding->hold(4242, 600), "cannot watch");
  watcher->refusal.reset();
  // Ended just as the watch began, its pid already another process's.
  watcher->whileWatching = [this] { processes->start(4242, 8, "other"); };
  EXPECT_EQ(binding->hold(4242, 600), "process 4242 has ended");
  EXPECT_FALSE(awake->isRequested());
  expectUnbound();
}

TEST_F(ProcessBindingControllerTest, OneProcessEndingLeavesTheOtherHoldsSession) {
  start();
  ASSERT_EQ(binding->hold(4242, std::nullopt), std::nullopt);
  ASSERT_EQ(binding->hold(5000, std::nullopt), std::nullopt);
  watcher->end(4242);
  EXPECT_TRUE(awake->isOn());
  EXPECT_EQ(held(), std::vector<std::string>{"render"});
}

TEST_F(ProcessBindingControllerTest, OneHoldsOwnEndLetsGoOfItAlone) {
  start();
  ASSERT_EQ(binding->hold(4242, std::nullopt), std::nullopt);
  ASSERT_EQ(binding->hold(5000, 600), std::nullopt);
  clocks.pass(600);
  holdTimer->fire();
  EXPECT_EQ(held(), std::vector<std::string>{"make"});
  EXPECT_FALSE(watcher->isWatching(5000));
  EXPECT_TRUE(awake->isOn());
}

TEST_F(ProcessBindingControllerTest, TimedHoldsKeepTheSessionUntilTheLaterEnd) {
  start();
  ASSERT_EQ(binding->hold(5000, 300), std::nullopt);
  ASSERT_EQ(binding->hold(4242, 900), std::nullopt);
  EXPECT_EQ(awake->activeUntil(), clocks.now().adding(900));
  watcher->end(4242);
  EXPECT_EQ(awake->activeUntil(), clocks.now().adding(300));
}

TEST_F(ProcessBindingControllerTest, AHoldNeverEndsTheUsersSession) {
  start();
  awake->turnOn(1800);
  const auto usersEnd = awake->activeUntil();
  ASSERT_EQ(binding->hold(4242, std::nullopt), std::nullopt);
  EXPECT_EQ(awake->activeUntil(), std::nullopt);
  watcher->end(4242);
  EXPECT_EQ(awake->activeUntil(), usersEnd);
}

TEST_F(ProcessBindingControllerTest, TheUsersStartReplacesOnlyTheUsersClaim) {
  start();
  ASSERT_EQ(binding->hold(4242, 600), std::nullopt);
  awake->turnOn(60);
  EXPECT_EQ(held(), std::vector<std::string>{"make"});
  EXPECT_EQ(awake->activeUntil(), clocks.now().adding(600));
}

TEST_F(ProcessBindingControllerTest, ALaunchTakesUpOnlyTheVeryProcessesStillRunning) {
  const auto until = AwakeIntent::until(clocks.now().adding(60));
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
    processes->start(4242, 7, "make");
    if (reused) processes->start(*reused, 8, "other");
    store->stored = stored;
    watcher->watching.clear();
    start(StoredAwakeIntent::intent(intent));
    EXPECT_EQ(held(), kept);
    EXPECT_EQ(awake->isOn(), on);
    EXPECT_EQ(watcher->watching.size(), kept.size());
    EXPECT_EQ(store->stored == StoredProcessBinding::none(), kept.empty()) << "stored while nothing is held";
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
