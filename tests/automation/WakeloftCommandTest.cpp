// The command against real child processes, with the app's side recorded.

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <sstream>
#include <tuple>

#include "automation/CommandOptions.h"
#include "automation/PublishedDeepwake.h"
#include "automation/WakeloftCommand.h"
#include "base/InMemoryDefaultsDomain.h"
#include "session/UserDefaultsAwakeIntentStore.h"
#include "session/UserDefaultsProcessBindingStore.h"
#include "support/MainLoopPump.h"
#include "support/SystemProcesses.h"

namespace wakeloft {
namespace {

using testing::TestChild;

// The app as the command sees it: the addresses it was handed.
struct RecordingApp final : AppConnection {
  bool running = true;
  std::optional<std::string> unreachable;
  std::function<void()> whenOpened;
  std::vector<std::string> opened;
  InMemoryDefaultsDomain defaults;

  bool isAppRunning() const override { return running; }
  void open(const std::string& address) override {
    if (unreachable) throw std::runtime_error(*unreachable);
    opened.push_back(address);
    if (whenOpened) whenOpened();
  }
  DefaultsDomain& appDefaults() override { return defaults; }
};

class WakeloftCommandTest : public ::testing::Test {
 protected:
  int run(std::vector<std::string> arguments) {
    out.str({});
    err.str({});
    return WakeloftCommand::run(arguments, system);
  }

  void waitUntilEnded(pid_t pid) {
    bool ended = false;
    watcher.watch(pid, [&] { ended = true; });
    testing::pumpMainLoopUntil([&] { return ended; }, 10);
  }

  RecordingApp app;
  testing::SystemProcessTable processes;
  testing::SystemProcessExitWatcher watcher;
  Date now{1'700'000'000};
  std::ostringstream out, err;
  WakeloftCommand::System system{
      app, processes, [this](pid_t pid) { waitUntilEnded(pid); }, [this] { return now; }, out, err, "1.2.3"};
};

TEST_F(WakeloftCommandTest, RunHoldsTheMacAwakeAndExitsAsItsCommandDidPassingOnWhatWasNotIgnored) {
  const std::vector<std::pair<std::vector<std::string>, int>> cases = {
      {{"run", "true"}, 0},
      {{"run", "--for", "1h", "--deepwake", "sh", "-c", "exit 3"}, 3},
      {{"run", "sh", "-c", "kill -TERM $$"}, 128 + SIGTERM},
  };
  for (const auto& [arguments, status] : cases) {
    app.opened.clear();
    EXPECT_EQ(run(arguments), status) << arguments.back();
    ASSERT_EQ(app.opened.size(), 1u);
    EXPECT_TRUE(app.opened[0].starts_with("wakeloft://hold?pid=")) << app.opened[0];
    EXPECT_EQ(app.opened[0].ends_with("&for=1h&deepwake=1"), status == 3) << app.opened[0];
  }
  EXPECT_EQ(run({"run", "wakeloft-test-no-such-command"}), 127);
  EXPECT_NE(err.str().find("wakeloft-test-no-such-command: No such file or directory"), std::string::npos);
  EXPECT_EQ(run({"run", "/dev/null"}), 126);

  for (const int signal : {SIGINT, SIGTERM}) {
    app.whenOpened = [signal] { raise(signal); };
    EXPECT_EQ(run({"run", "sleep", "10"}), 128 + signal);
  }
  // A command started from a shell that ignores interrupts ignores them too.
  app.whenOpened = [] { raise(SIGINT); };
  struct sigaction ignore {}, previous {};
  ignore.sa_handler = SIG_IGN;
  sigaction(SIGINT, &ignore, &previous);
  EXPECT_EQ(run({"run", "sh", "-c", "kill -INT $$; exit 5"}), 5);
  sigaction(SIGINT, &previous, nullptr);
}

TEST_F(WakeloftCommandTest, AsksTheAppWithCheckedAddressesOrSaysWhyNot) {
  struct Case {
    std::vector<std::string> arguments;
    int status;
    std::string opened, said;
  };
  const std::string usage = CommandOptions::usage;
  for (const auto& c : std::vector<Case>{
           {{"start"}, 0, "wakeloft://start", ""},
           {{"start", "5400"}, 0, "wakeloft://start?for=1h30m", ""},
           {{"stop"}, 0, "wakeloft://stop", ""},
           {{"deepwake", "on"}, 0, "wakeloft://deepwake?on=1", ""},
           {{"deepwake", "off"}, 0, "wakeloft://deepwake?on=0", ""},
           {{"snooze"}, 64, "", "wakeloft: unknown command \"snooze\"\n" + usage},
           {{"wait", "1"}, 64, "", "wakeloft: pid 1 is the system's own, not a process to wait for\n" + usage},
       }) {
    app.opened.clear();
    EXPECT_EQ(run(c.arguments), c.status);
    EXPECT_EQ(app.opened, c.opened.empty() ? std::vector<std::string>{} : std::vector<std::string>{c.opened});
    EXPECT_EQ(err.str(), c.said);
  }
  EXPECT_EQ(run({"--version"}), 0);
  EXPECT_EQ(out.str(), "wakeloft 1.2.3\n");
  EXPECT_EQ(run({"--help"}), 0);
  EXPECT_TRUE(out.str().starts_with(usage));

  // The work goes on when the app cannot be reached; a mere request fails.
  app.unreachable = "no app";
  EXPECT_EQ(run({"run", "sh", "-c", "exit 4"}), 4);
  EXPECT_EQ(err.str(), "wakeloft: sh runs without keeping the Mac awake: the app could not be reached: no app\n");
  EXPECT_EQ(run({"start"}), WakeloftCommand::unavailable);
  EXPECT_EQ(err.str(), "wakeloft: the app could not be reached: no app\n");
}

TEST_F(WakeloftCommandTest, WaitHoldsUntilAnExistingProcessEnds) {
  TestChild child({"sleep", "0.3"});
  ASSERT_GT(child.pid, 0);
  EXPECT_EQ(run({"wait", std::to_string(child.pid), "--for", "2h"}), 0);
  EXPECT_EQ(app.opened, std::vector<std::string>{"wakeloft://hold?pid=" + std::to_string(child.pid) + "&for=2h"});
  EXPECT_FALSE(processes.find(child.pid)) << "returned before the process ended";

  const pid_t gone = child.pid;
  child.reap();
  app.opened.clear();
  EXPECT_EQ(run({"wait", std::to_string(gone)}), WakeloftCommand::noSuchProcess);
  EXPECT_EQ(err.str(), "wakeloft: there is no process " + std::to_string(gone) + "\n");
  EXPECT_TRUE(app.opened.empty());
}

TEST_F(WakeloftCommandTest, StatusReadsTheAppsOwnStores) {
  UserDefaultsAwakeIntentStore intents(app.defaults);
  UserDefaultsProcessBindingStore binding(app.defaults);
  const RunningProcess gone{{4242, 99}, "make"};
  const RunningProcess live = *processes.find(getpid());
  const RunningProcess cc{{4243, 99}, "cc"};
  const std::string self = live.name + " (pid " + std::to_string(live.identity.pid) + ")";
  // Running, the stored intent, the processes held, Deepwake published on; what is said.
  using Case = std::tuple<bool, AwakeIntent, std::vector<RunningProcess>, bool, std::string>;
  const std::vector<Case> cases = {
      {false, AwakeIntent::off(), {}, false, "Wakeloft: not running\nAwake: off\nDeepwake: off\n"},
      // Nothing runs without the app, whatever was left behind; only what
      // the app takes up again comes back.
      {false, AwakeIntent::indefinite(), {live}, true,
       "Wakeloft: not running\nAwake: off, back on when Wakeloft opens\nDeepwake: off\n"},
      {false, AwakeIntent::indefinite(), {gone}, false, "Wakeloft: not running\nAwake: off\nDeepwake: off\n"},
      {true, AwakeIntent::until(now.adding(5409.5)), {gone}, true,
       "Wakeloft: running\nAwake: on, 1:30:09 left, or until make (pid 4242) ends\nDeepwake: on\n"},
      {true, AwakeIntent::indefinite(), {gone, cc}, false,
       "Wakeloft: running\nAwake: on until 2 processes end: make (pid 4242), cc (pid 4243)\nDeepwake: off\n"},
      {true, AwakeIntent::until(now.adding(-1)), {}, false, "Wakeloft: running\nAwake: off\nDeepwake: off\n"},
  };
  for (const auto& [running, intent, held, deepwake, text] : cases) {
    app.running = running;
    intents.save(intent);
    SessionClaims claims;
    for (const auto& process : held) claims.holds.push_back({process, intent.date()});
    binding.save(claims);
    app.defaults.set(PublishedDeepwake::key, deepwake);
    EXPECT_EQ(run({}), 0);
    EXPECT_EQ(out.str(), text);
  }
}

}  // namespace
}  // namespace wakeloft
