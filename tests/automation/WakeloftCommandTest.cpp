// The command against real child processes, with the app's side recorded.

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <sys/stat.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <tuple>

#include "automation/AutomationAddress.h"
#include "automation/CommandOptions.h"
#include "automation/InProcessAutomationOutcomeChannel.h"
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

  // The app answers the last address it was handed.
  void answer(AutomationOutcome::Kind kind, std::string reason = {}, pid_t released = 0) {
    const auto request = std::get<AutomationRequest>(AutomationAddress::parse(app.opened.back()));
    channel.publish({kind, request.requestId, released, std::move(reason)});
  }

  RecordingApp app;
  InProcessAutomationOutcomeChannel channel;
  testing::SystemProcessTable processes;
  testing::SystemProcessExitWatcher watcher;
  Date now{1'700'000'000};
  std::ostringstream out, err;
  // Waits are bounded here, so a lost event fails the test instead of hanging it.
  std::optional<double> waited;
  WakeloftCommand::System system{app,
                                 channel,
                                 processes,
                                 watcher,
                                 [this](const std::function<bool()>& done, std::optional<double> seconds) {
                                   // The command's own timeouts are only noted: a missing answer shows at once.
                                   waited = seconds;
                                   return testing::pumpMainLoopUntil(done, seconds ? 0.05 : 10);
                                 },
                                 [this] { return now; },
                                 out,
                                 err,
                                 "1.2.3"};
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
    const auto held = std::get<AutomationRequest>(AutomationAddress::parse(app.opened[0]));
    EXPECT_EQ(held.action, AutomationRequest::Action::hold);
    EXPECT_EQ(held.duration == AwakeDuration{3600} && held.deepwake, status == 3) << app.opened[0];
  }
  EXPECT_EQ(run({"run", "wakeloft-test-no-such-command"}), 127);
  EXPECT_NE(err.str().find("wakeloft-test-no-such-command: No such file or directory"), std::string::npos);
  EXPECT_EQ(run({"run", "/dev/null"}), 126);

  // A command started from a shell that ignores interrupts ignores them too.
  app.whenOpened = [] { raise(SIGINT); };
  struct sigaction ignore {}, previous {};
  ignore.sa_handler = SIG_IGN;
  sigaction(SIGINT, &ignore, &previous);
  EXPECT_EQ(run({"run", "sh", "-c", "kill -INT $$; exit 5"}), 5);
  sigaction(SIGINT, &previous, nullptr);
}

TEST_F(WakeloftCommandTest, RunsAScriptWithoutInterpreterLineWithTheShell) {
  const std::string script = ::testing::TempDir() + "wakeloft-test-script";
  std::ofstream(script) << "exit 7\n";
  chmod(script.c_str(), 0700);
  EXPECT_EQ(run({"run", script}), 7) << err.str();
  std::remove(script.c_str());
}

TEST_F(WakeloftCommandTest, AsksTheAppWithCheckedAddressesOrSaysWhyNot) {
  struct Case {
    std::vector<std::string> arguments;
    int status;
    std::string opened, said;
  };
  const std::string usage = CommandOptions::usage;
  app.whenOpened = [this] { answer(AutomationOutcome::Kind::accepted); };
  for (const auto& c : std::vector<Case>{
           {{"start", "5400"}, 0, "wakeloft://start?for=1h30m", ""},
           {{"stop"}, 0, "wakeloft://stop", ""},
           {{"deepwake", "off"}, 0, "wakeloft://deepwake?on=0", ""},
           {{"snooze"}, 64, "", "wakeloft: unknown command \"snooze\"\n" + usage},
       }) {
    app.opened.clear();
    EXPECT_EQ(run(c.arguments), c.status);
    std::vector<std::string> opened;
    for (const auto& address : app.opened) {
      auto request = std::get<AutomationRequest>(AutomationAddress::parse(address));
      EXPECT_EQ(request.requestId.size(), AutomationAddress::longestRequestID) << address;
      request.requestId.clear();
      opened.push_back(AutomationAddress::write(request));
    }
    EXPECT_EQ(opened, c.opened.empty() ? std::vector<std::string>{} : std::vector<std::string>{c.opened});
    EXPECT_EQ(err.str(), c.said);
  }

  // The work goes on when the app cannot be reached; a mere request fails.
  app.unreachable = "no app";
  EXPECT_EQ(run({"run", "sh", "-c", "exit 4"}), 4);
  EXPECT_EQ(err.str(), "wakeloft: sh runs without keeping the Mac awake: the app could not be reached: no app\n");
  EXPECT_EQ(run({"start"}), WakeloftCommand::unavailable);
  EXPECT_EQ(err.str(), "wakeloft: the app could not be reached: no app\n");
}

TEST_F(WakeloftCommandTest, WaitsForTheAppsAnswerToItsOwnRequest) {
  using Kind = AutomationOutcome::Kind;
  struct Case {
    std::string name;
    std::function<void()> app;
    bool running;
    int status;
    std::string said;
    double waited;
  };
  const std::string refusal = "Deepwake is not allowed for scripts yet";
  for (const auto& c : std::vector<Case>{
           {"accepted", [this] { answer(Kind::accepted); }, true, 0, "", 2},
           {"refused", [&] { answer(Kind::refused, refusal); }, true, 77, "wakeloft: Wakeloft refused: " + refusal + "\n", 2},
           {"silent", [] {}, true, 0, "wakeloft: the request was delivered, but Wakeloft did not answer\n", 2},
           {"silent after a cold launch", [] {}, false, 0, "wakeloft: the request was delivered, but Wakeloft did not answer\n", 15},
           {"answering another command",
            [this] { channel.publish({Kind::refused, "another-request", 0, "no"}); }, true, 0,
            "wakeloft: the request was delivered, but Wakeloft did not answer\n", 2},
       }) {
    SCOPED_TRACE(c.name);
    app.whenOpened = c.app;
    app.running = c.running;
    EXPECT_EQ(run({"deepwake", "on"}), c.status);
    EXPECT_EQ(err.str(), c.said);
    EXPECT_EQ(waited, c.waited);
  }
}

TEST_F(WakeloftCommandTest, RunAndWaitGoOnWhenTheAppRefusesOrLetsGo) {
  using Kind = AutomationOutcome::Kind;
  app.whenOpened = [this] { answer(Kind::refused, "the process cannot be seen"); };
  EXPECT_EQ(run({"run", "sh", "-c", "sleep 0.2; exit 4"}), 4);
  EXPECT_EQ(err.str(), "wakeloft: Wakeloft refused to keep the Mac awake for sh: the process cannot be seen\n");

  app.whenOpened = [this] {
    answer(Kind::accepted);
    const auto held = std::get<AutomationRequest>(AutomationAddress::parse(app.opened.back()));
    channel.publish({Kind::released, "", held.pid, "you turned Wakeloft off"});
  };
  TestChild child({"sleep", "0.3"});
  const std::string name = std::to_string(child.pid);
  EXPECT_EQ(run({"wait", name}), 0);
  EXPECT_EQ(err.str(), "wakeloft: Wakeloft no longer keeps the Mac awake for sleep (pid " + name +
                           "): you turned Wakeloft off\n");
  EXPECT_FALSE(processes.find(child.pid)) << "returned before the process ended";

  // Without the app (on Linux) wait waits all the same.
  app.unreachable = "no app";
  TestChild another({"sleep", "0.2"});
  EXPECT_EQ(run({"wait", std::to_string(another.pid)}), 0);
  EXPECT_FALSE(processes.find(another.pid)) << "returned before the process ended";
}

TEST_F(WakeloftCommandTest, WaitHoldsUntilAnExistingProcessEnds) {
  TestChild child({"sleep", "0.3"});
  ASSERT_GT(child.pid, 0);
  EXPECT_EQ(run({"wait", std::to_string(child.pid), "--for", "2h"}), 0);
  ASSERT_EQ(app.opened.size(), 1u);
  EXPECT_TRUE(app.opened[0].starts_with("wakeloft://hold?pid=" + std::to_string(child.pid) + "&for=2h&id="));
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
  const std::string self = live.name + " (pid " + std::to_string(live.identity.pid) + ")";
  // Running, the stored intent, the processes held, Deepwake published on; what is said.
  using Case = std::tuple<bool, AwakeIntent, std::vector<RunningProcess>, DefaultsValue, std::string>;
  const std::vector<Case> cases = {
      // Nothing runs without the app, whatever was left behind; only what
      // the app takes up again comes back.
      {false, AwakeIntent::indefinite(), {live}, true,
       "Wakeloft: not running\nAwake: off, back on when Wakeloft opens\nDeepwake: off\n"},
      {false, AwakeIntent::indefinite(), {gone}, false, "Wakeloft: not running\nAwake: off\nDeepwake: off\n"},
      {true, AwakeIntent::until(now.adding(5409.5)), {gone}, true,
       "Wakeloft: running\nAwake: on, 1:30:09 left, or until make (pid 4242) ends\nDeepwake: on\n"},
      // Only a boolean says Deepwake is on.
      {true, AwakeIntent::until(now.adding(-1)), {}, "1", "Wakeloft: running\nAwake: off\nDeepwake: off\n"},
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
