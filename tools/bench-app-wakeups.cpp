// bench-app-wakeups: how often the app's controllers wake the main loop.
//
//   bench-app-wakeups [--seconds S] [--helper PATH]     (default 60 s)
//
// The four controllers run on GLib's real main loop with the system clocks
// and timers and the in-memory system parts, in six cases at once, each in
// a process of its own: no session, a session without a timer, a session of
// an hour, Deepwake leasing from the real helper over the rig's socket, every
// automatic rule enabled with none holding (the schedule's span two hours
// ahead, the zone file watched), and as a baseline a bare GLib timer every
// 10 s, the renewal interval. A wakeup
// is a return from a poll that was allowed to sleep. The ideal is none while
// nothing is due, and one per renewal for Deepwake.

#include <glib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "clock/ClockChangeNotifier.h"
#include "HelperProcess.h"
#include "PidfdProcessExitWatcher.h"
#include "ProcfsProcessTable.h"
#include "RigLidHelperRegistration.h"
#include "SocketLidSleepBlocker.h"
#include "SystemDeadlineRecheckNotifier.h"
#include "automatic/AutomaticSessionController.h"
#include "automatic/InMemoryAutomaticSessionStore.h"
#include "automatic/InMemoryRunningApplications.h"
#include "clock/SystemContinuousTimeProvider.h"
#include "clock/SystemDateProvider.h"
#include "clock/TimerDeadlineScheduler.h"
#include "lease/LidSleepLease.h"
#include "lid/InMemoryLidAwakeStore.h"
#include "lid/InMemoryLidSleepBlocker.h"
#include "lid/LidAwakeController.h"
#include "lid/StaticMachineConditions.h"
#include "prefs/InMemoryLoginItem.h"
#include "prefs/InMemoryPresetDurationStore.h"
#include "prefs/LoginItemController.h"
#include "prefs/PresetDurationsController.h"
#include "prefs/SystemTimeZoneProvider.h"
#include "session/AwakeController.h"
#include "session/InMemoryAwakeIntentStore.h"
#include "session/InMemoryProcessBindingStore.h"
#include "session/InMemorySleepBlocker.h"
#include "session/ProcessBindingController.h"

using namespace wakeloft;

namespace {

// Nothing changes the machine during a run, so this never calls its
// handler; a system notifier waits on a descriptor without waking either.
struct QuietConditionsNotifier final : MachineConditionsNotifier {
  void observe(std::function<void()>) override {}
};

GPollFunc systemPoll = nullptr;
long long wakeups = 0;

gint countingPoll(GPollFD* fds, guint count, gint timeout) {
  const gint ready = systemPoll(fds, count, timeout);
  if (timeout != 0) ++wakeups;
  return ready;
}

// Runs the loop for `seconds`, then takes what is ready at its end (the
// quit's own wakeup among it) without waiting, so it does not count as the
// next run's first wakeup.
void runMainLoop(double seconds) {
  GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
  g_timeout_add(static_cast<guint>(seconds * 1000), [](gpointer data) {
    g_main_loop_quit(static_cast<GMainLoop*>(data));
    return G_SOURCE_REMOVE;
  }, loop);
  g_main_loop_run(loop);
  g_main_loop_unref(loop);
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}

struct Case {
  const char* name;
  // The wakeups that something due needs: a timer firing, a reply arriving.
  int due;
};

// Builds the controllers as the app does, starts `which` and counts the
// wakeups over `seconds`. Returns the count, or -1 when the case did not
// hold (a session that did not start, Deepwake refused).
long long measure(int which, double seconds, const std::string& helperProgram) {
  systemPoll = g_main_context_get_poll_func(nullptr);
  g_main_context_set_poll_func(nullptr, countingPoll);

  if (which == 5) {
    g_timeout_add(static_cast<guint>(LidSleepLease::renewalInterval * 1000), [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; },
                  nullptr);
    runMainLoop(1);
    wakeups = 0;
    runMainLoop(seconds);
    return wakeups - 1;  // the end of the run itself
  }

  std::unique_ptr<bench::HelperProcess> helper;
  std::shared_ptr<LidSleepBlocker> lidBlocker = std::make_shared<InMemoryLidSleepBlocker>();
  if (which == 3) {
    helper = std::make_unique<bench::HelperProcess>(helperProgram, "/tmp");
    lidBlocker = std::make_shared<SocketLidSleepBlocker>(std::make_shared<RigLidHelperRegistration>(),
                                                         helper->socketPath.string(), getuid());
  }
  auto dates = std::make_shared<SystemDateProvider>();
  auto awake = std::make_shared<AwakeController>(
      std::make_shared<InMemorySleepBlocker>(), std::make_shared<InMemoryAwakeIntentStore>(), dates,
      std::make_shared<SystemContinuousTimeProvider>(), std::make_shared<TimerDeadlineScheduler>(),
      std::make_shared<ClockChangeNotifier>(), /*restoringPreviousState=*/true);
  auto lid = std::make_shared<LidAwakeController>(
      awake, lidBlocker, std::make_shared<InMemoryLidAwakeStore>(true), std::make_shared<StaticMachineConditions>(false, true),
      std::make_shared<QuietConditionsNotifier>(), dates, std::make_shared<TimerDeadlineScheduler>(),
      std::make_shared<TimerDeadlineScheduler>());
  auto loginItem = std::make_shared<LoginItemController>(
      std::make_shared<InMemoryLoginItem>(LoginItemState::disabled, /*isAtStableLocation=*/true),
      /*repairingRegistration=*/true);
  auto presets = std::make_shared<PresetDurationsController>(std::make_shared<InMemoryPresetDurationStore>());

  // Every rule enabled, none holding: on battery without a display, the app
  // not running, the schedule's span two hours ahead every day.
  std::shared_ptr<AutomaticSessionController> automatic;
  if (which == 4) {
    auto binding = std::make_shared<ProcessBindingController>(
        awake, std::make_shared<InMemoryProcessBindingStore>(), std::make_shared<ProcfsProcessTable>(),
        std::make_shared<PidfdProcessExitWatcher>(), dates, std::make_shared<TimerDeadlineScheduler>(), true);
    const auto local = dates->now().secondsSince1970 + SystemTimeZone::current().secondsFromGMT(dates->now());
    const int minute = static_cast<int>(std::fmod(local, 86'400) / 60);
    AutomaticRules::Settings rules{true, true, true, {{"com.apple.dt.Xcode", "Xcode", ""}}, true,
                                   {Schedule::allWeekdays, (minute + 120) % Schedule::minutesPerDay,
                                    (minute + 180) % Schedule::minutesPerDay}};
    auto store = std::make_shared<InMemoryAutomaticSessionStore>();
    store->setSettings(rules);
    const AutomaticSessionController::FactSources sources{
        std::make_shared<StaticMachineConditions>(true, false), std::make_shared<QuietConditionsNotifier>(),
        std::make_shared<InMemoryRunningApplications>(), std::make_shared<SystemTimeZoneProvider>()};
    automatic = std::make_shared<AutomaticSessionController>(
        awake, std::move(binding), std::move(store), sources, dates, std::make_shared<SystemContinuousTimeProvider>(),
        std::make_shared<TimerDeadlineScheduler>(), std::make_shared<SystemDeadlineRecheckNotifier>());
  }

  if (which == 1) awake->turnOn(std::nullopt);
  if (which == 2) awake->turnOn(3600);
  if (which == 3) lid->turnOnJoiningSessionOr(7200);
  runMainLoop(1);  // the helper's first answer
  wakeups = 0;
  runMainLoop(seconds);
  bool held = true;
  if (which == 1 || which == 2) held = awake->isOn();
  if (which == 3) held = lid->isOn() && !lid->lastFailure();
  // A rule that held would measure a session instead.
  if (which == 4) held = !awake->isOn() && automatic->holding().empty();
  return held ? wakeups - 1 : -1;
}

}  // namespace

int main(int argc, char** argv) {
  double seconds = 60;
  std::string helper = WAKELOFT_LID_HELPER_PATH;
  for (int i = 1; i < argc; i += 2) {
    const std::string name = argv[i];
    const std::string value = i + 1 < argc ? argv[i + 1] : "";
    if (name == "--seconds" && std::atof(value.c_str()) >= 10) {
      seconds = std::atof(value.c_str());
    } else if (name == "--helper" && !value.empty()) {
      helper = value;
    } else {
      std::fprintf(stderr, "usage: bench-app-wakeups [--seconds S (10 or more)] [--helper PATH]\n");
      return 2;
    }
  }
  const int renewals = static_cast<int>(std::floor(seconds / LidSleepLease::renewalInterval));
  // Each renewal is a timer firing and, later, the helper's reply arriving.
  const std::vector<Case> cases = {{"no session", 0},
                                   {"session without a timer", 0},
                                   {"session of an hour", 0},
                                   {"Deepwake on the rig", 2 * renewals},
                                   {"automatic rules, none hold", 0},
                                   {"bare 10 s GLib timer", renewals}};

  // Each case in a child of its own, all at once; the count comes back
  // through a pipe.
  std::vector<std::pair<pid_t, int>> children;
  for (int which = 0; which < static_cast<int>(cases.size()); ++which) {
    int channel[2];
    if (pipe(channel) != 0) return 1;
    const pid_t pid = fork();
    if (pid == 0) {
      close(channel[0]);
      long long count = -1;
      try {
        count = measure(which, seconds, helper);
      } catch (const std::exception& error) {
        std::fprintf(stderr, "bench-app-wakeups: %s: %s\n", cases[which].name, error.what());
      }
      const std::string line = std::to_string(count);
      (void)!write(channel[1], line.data(), line.size());
      _exit(0);
    }
    close(channel[1]);
    children.emplace_back(pid, channel[0]);
  }

  std::vector<long long> counts;
  for (const auto& [pid, channel] : children) {
    char text[32] = {};
    (void)!read(channel, text, sizeof text - 1);
    close(channel);
    waitpid(pid, nullptr, 0);
    counts.push_back(std::atoll(text));
  }

  std::printf("main-loop wakeups over %.0f s (the ideal: one for each thing due)\n", seconds);
  const long long baseline = counts.back();
  for (std::size_t i = 0; i < cases.size(); ++i) {
    if (counts[i] < 0) {
      std::printf("  %-26s did not hold; no figure\n", cases[i].name);
      continue;
    }
    std::printf("  %-26s %5lld wakeups, %5.1f per minute, %d due", cases[i].name, counts[i],
                static_cast<double>(counts[i]) * 60 / seconds, cases[i].due);
    if (cases[i].due > 0 && baseline > 0) {
      std::printf(", %.1fx the bare timer", static_cast<double>(counts[i]) / static_cast<double>(baseline));
    }
    std::printf("\n");
  }
  return 0;
}
