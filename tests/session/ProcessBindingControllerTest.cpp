// Sessions bound to a process, and how the binding is remembered.

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

const RunningProcess make{{4242, 7}, "make"};

class ProcessBindingControllerTest : public ::testing::Test {
 protected:
  void start(StoredAwakeIntent intent = StoredAwakeIntent::intent(AwakeIntent::off())) {
    intents->stored = intent;
    awake = std::make_shared<AwakeController>(std::make_shared<InMemorySleepBlocker>(), intents, clocks.dates,
                                              clocks.continuous, timer,
                                              std::make_shared<testing::ManualRecheckNotifier>(), true);
    binding = std::make_unique<ProcessBindingController>(awake, store, processes, watcher, true);
  }
  // Nothing bound, nothing watched, nothing remembered.
  void expectUnbound() {
    EXPECT_EQ(binding->boundProcess(), std::nullopt);
    EXPECT_EQ(watcher->watching, std::nullopt);
    EXPECT_EQ(store->stored, StoredProcessBinding::none());
  }

  testing::ManualMachineClocks clocks;
  std::shared_ptr<InMemoryAwakeIntentStore> intents = std::make_shared<InMemoryAwakeIntentStore>();
  std::shared_ptr<ManualDeadlineScheduler> timer = std::make_shared<ManualDeadlineScheduler>();
  std::shared_ptr<InMemoryProcessBindingStore> store = std::make_shared<InMemoryProcessBindingStore>();
  std::shared_ptr<testing::SettableProcessTable> processes = std::make_shared<testing::SettableProcessTable>();
  std::shared_ptr<testing::ManualProcessExitWatcher> watcher = std::make_shared<testing::ManualProcessExitWatcher>();
  std::shared_ptr<AwakeController> awake;
  std::unique_ptr<ProcessBindingController> binding;
};

TEST_F(ProcessBindingControllerTest, ASessionHeldForAProcessEndsWithItOrItsDeadlineButOneGoneOrNotWatchedChangesNothing) {
  processes->start(4242, 7, "make");
  start();
  EXPECT_EQ(binding->hold(4242, std::nullopt), std::nullopt);
  EXPECT_TRUE(awake->isOn());
  EXPECT_EQ(awake->activeUntil(), std::nullopt);
  EXPECT_EQ(binding->boundProcess(), make);
  EXPECT_EQ(store->stored, StoredProcessBinding::bound(make));
  EXPECT_EQ(watcher->watching, 4242);
  watcher->end();
  EXPECT_FALSE(awake->isRequested());
  expectUnbound();

  // Whichever comes first: here the deadline.
  EXPECT_EQ(binding->hold(4242, 600), std::nullopt);
  EXPECT_EQ(awake->activeUntil(), clocks.now().adding(600));
  clocks.pass(600);
  timer->fire();
  EXPECT_FALSE(awake->isOn());
  expectUnbound();

  processes->start(5000, 1, "render");
  EXPECT_EQ(binding->hold(99, 600), "there is no process 99");
  watcher->refusal = "cannot watch";
  EXPECT_EQ(binding->hold(4242, 600), "cannot watch");
  // Ended just as the watch began, its pid already another process's.
  watcher->whileWatching = [this] { processes->start(4242, 8, "other"); };
  EXPECT_EQ(binding->hold(4242, 600), "process 4242 has ended");
  EXPECT_FALSE(awake->isRequested());
  expectUnbound();

  // A session already bound stays bound, and watched, when another hold fails.
  EXPECT_EQ(binding->hold(5000, std::nullopt), std::nullopt);
  watcher->refusal = "cannot watch";
  EXPECT_EQ(binding->hold(4242, 600), "cannot watch");
  EXPECT_EQ(watcher->watching, 5000);
  EXPECT_EQ(binding->boundProcess()->name, "render");
  EXPECT_EQ(awake->activeUntil(), std::nullopt);
}

TEST_F(ProcessBindingControllerTest, AnyOtherStartOrStopOfTheSessionLetsGoOfTheProcessAndALaunchTakesUpOnlyTheVeryOne) {
  processes->start(4242, 7, "make");
  start();
  const std::vector<std::pair<std::function<void()>, bool>> actions = {
      {[&] { awake->turnOff(); }, false},
      {[&] { awake->toggle(); }, false},
      {[&] { awake->turnOn(1800); }, true},
      {[&] { awake->turnOn(std::nullopt); }, true},
  };
  for (const auto& [act, staysOn] : actions) {
    ASSERT_EQ(binding->hold(4242, 3600), std::nullopt);
    act();
    EXPECT_EQ(awake->isOn(), staysOn);
    expectUnbound();
  }
  // The process ending afterwards ends nothing.
  binding->hold(4242, std::nullopt);
  const auto oldEnd = watcher->ended;
  awake->turnOn(1800);
  oldEnd();
  EXPECT_TRUE(awake->isOn());

  // What was stored, the start time of what runs under its pid now, the
  // session asked for, and whether the binding is taken up.
  const auto until = AwakeIntent::until(clocks.now().adding(60));
  for (const auto& [stored, runningStart, intent, bound] :
       std::vector<std::tuple<StoredProcessBinding, std::optional<std::uint64_t>, AwakeIntent, bool>>{
           {StoredProcessBinding::bound(make), 7, AwakeIntent::indefinite(), true},
           {StoredProcessBinding::bound(make), 8, AwakeIntent::indefinite(), false},  // its pid reused
           {StoredProcessBinding::bound(make), std::nullopt, until, false},           // ended
           {StoredProcessBinding::unreadable(), 7, AwakeIntent::indefinite(), false},
           {StoredProcessBinding::bound(make), 7, AwakeIntent::off(), false},  // its session over
       }) {
    processes->running.clear();
    if (runningStart) processes->start(4242, *runningStart, "make");
    store->stored = stored;
    watcher->cancel();
    start(StoredAwakeIntent::intent(intent));
    EXPECT_EQ(awake->isOn(), bound);
    EXPECT_EQ(intents->isAwakeRequested(), bound);
    if (bound) {
      EXPECT_EQ(binding->boundProcess(), make);
      EXPECT_EQ(store->stored, StoredProcessBinding::bound(make));
      watcher->end();
      EXPECT_FALSE(awake->isOn());
    }
    expectUnbound();
  }
}

TEST(UserDefaultsProcessBindingStoreTest, ReadsOnlyWhatItWritesAndNamesItCanShow) {
  InMemoryDefaultsDomain defaults;
  UserDefaultsProcessBindingStore store(defaults);
  EXPECT_EQ(store.load(), StoredProcessBinding::none());
  store.save(make);
  EXPECT_EQ(store.load(), StoredProcessBinding::bound(make));

  using Dictionary = DefaultsValue::Dictionary;
  const auto entry = [](std::int64_t pid, DefaultsValue start, DefaultsValue name) {
    return DefaultsValue(Dictionary{{"pid", pid}, {"startTime", std::move(start)}, {"name", std::move(name)}});
  };
  const std::vector<DefaultsValue> garbled = {
      DefaultsValue("make"),
      DefaultsValue(Dictionary{{"pid", std::int64_t{4242}}, {"name", "make"}}),
      DefaultsValue(Dictionary{{"pid", 4242.0}, {"startTime", std::int64_t{7}}, {"name", "make"}}),
      entry(1, std::int64_t{7}, "make"),
      entry(std::int64_t{1} << 40, std::int64_t{7}, "make"),
      entry(4242, std::int64_t{-7}, "make"),
      entry(4242, true, "make"),
      entry(4242, std::int64_t{7}, ""),
      entry(4242, std::int64_t{7}, "ma\x01ke"),
      entry(4242, std::int64_t{7}, "ma\xFFke"),
      entry(4242, std::int64_t{7}, std::string(65, 'm')),
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
