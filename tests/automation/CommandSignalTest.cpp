// The built `wakeloft run` under a real pseudo-terminal, as a shell runs it,
// with a child that counts the signals it gets: each must come exactly once.

#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>
#if defined(__APPLE__)
#include <util.h>
#else
#include <pty.h>
#endif

#include <fstream>
#include <functional>
#include <sstream>
#include <string>

namespace {

// wakeloft run -- signal-counter FILE, started under a new terminal as its
// session's leader.
struct CommandRun {
  pid_t pid = 0;
  int terminal = -1;
  std::string counts = ::testing::TempDir() + "wakeloft-signal-counts-" + std::to_string(getpid());

  CommandRun() {
    std::remove(counts.c_str());
    pid = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (pid == 0) {
      execl(WAKELOFT_COMMAND_PATH, "wakeloft", "run", "--", SIGNAL_COUNTER_PATH, counts.c_str(), nullptr);
      _exit(127);
    }
  }
  ~CommandRun() {
    if (pid > 0 && waitpid(pid, nullptr, WNOHANG) == 0) {
      kill(pid, SIGKILL);
      waitpid(pid, nullptr, 0);
    }
    if (terminal >= 0) close(terminal);
  }

  bool saw(const std::string& word) {
    std::string seen;
    char buffer[256];
    pollfd readable{terminal, POLLIN, 0};
    while (seen.find(word) == std::string::npos && poll(&readable, 1, 5000) == 1) {
      const ssize_t got = read(terminal, buffer, sizeof buffer);
      if (got <= 0) return false;
      seen.append(buffer, static_cast<std::size_t>(got));
    }
    return seen.find(word) != std::string::npos;
  }
  void type(char key) const { ASSERT_EQ(write(terminal, &key, 1), 1); }
  void hangUp() {
    close(terminal);
    terminal = -1;
  }
  // Its wait status once it has ended or stopped, within 10 s; -1 otherwise.
  int waitFor(int options) {
    int status = 0;
    for (int tries = 0; tries < 500; ++tries) {
      if (waitpid(pid, &status, WNOHANG | options) == pid) return status;
      usleep(20'000);
    }
    return -1;
  }
  std::string counted() const {
    std::ostringstream text;
    text << std::ifstream(counts).rdbuf();
    return text.str();
  }
};

struct Case {
  std::string name;
  std::function<void(CommandRun&)> act;
  std::string counts;
};

TEST(CommandSignalTest, EachSignalReachesTheCommandOnce) {
  const std::string none = "INT=0 QUIT=0 HUP=0 TERM=0 CONT=0 ";
  const auto only = [&none](const std::string& name, bool foreground) {
    std::string text = none;
    text.replace(text.find(name + "=0"), name.size() + 2, name + "=1");
    return text + "foreground=" + (foreground ? "1" : "0");
  };
  const auto signalCommand = [](int signal) { return [signal](CommandRun& run) { kill(run.pid, signal); }; };
  const std::vector<Case> cases = {
      {"Ctrl-C", [](CommandRun& run) { run.type('\x03'); }, only("INT", true)},
      {"Ctrl-\\", [](CommandRun& run) { run.type('\x1c'); }, only("QUIT", true)},
      {"a hang-up", [](CommandRun& run) { run.hangUp(); }, only("HUP", false)},
      {"SIGINT to wakeloft", signalCommand(SIGINT), only("INT", true)},
      {"SIGTERM to wakeloft", signalCommand(SIGTERM), only("TERM", true)},
      {"SIGHUP to wakeloft", signalCommand(SIGHUP), only("HUP", true)},
      {"SIGQUIT to wakeloft", signalCommand(SIGQUIT), only("QUIT", true)},
      {"SIGTERM to wakeloft's group", [](CommandRun& run) { kill(-run.pid, SIGTERM); }, only("TERM", true)},
      {"Ctrl-Z, then fg",
       [](CommandRun& run) {
         run.type('\x1a');
         const int stopped = run.waitFor(WUNTRACED);
         EXPECT_TRUE(stopped != -1 && WIFSTOPPED(stopped)) << "wakeloft did not stop with its command";
         kill(run.pid, SIGCONT);
       },
       only("CONT", true)},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    CommandRun run;
    ASSERT_GT(run.pid, 0);
    ASSERT_TRUE(run.saw("ready"));
    c.act(run);
    const int status = run.waitFor(0);
    EXPECT_TRUE(status != -1 && WIFEXITED(status) && WEXITSTATUS(status) == 0) << "wakeloft did not end as its command";
    EXPECT_EQ(run.counted(), c.counts);
  }
}

}  // namespace
