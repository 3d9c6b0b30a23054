// The built `wakeloft run` under a real pseudo-terminal, as a shell runs it,
// with a child that counts the signals it gets: each must come exactly once.

#include <fcntl.h>
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
// session's leader, or without a terminal in a process group of its own.
struct CommandRun {
  pid_t pid = 0;
  int terminal = -1;
  int output = -1;
  std::string counts = ::testing::TempDir() + "wakeloft-signal-counts-" + std::to_string(getpid());

  explicit CommandRun(bool withTerminal) {
    std::remove(counts.c_str());
    int pipeEnds[2] = {-1, -1};
    if (withTerminal) {
      pid = forkpty(&terminal, nullptr, nullptr, nullptr);
      output = terminal;
    } else if (pipe(pipeEnds) == 0) {
      pid = fork();
      output = pipeEnds[0];
    }
    if (pid == 0) {
      if (!withTerminal) {
        setpgid(0, 0);
        const int nothing = open("/dev/null", O_RDWR);
        dup2(nothing, STDIN_FILENO);
        dup2(pipeEnds[1], STDOUT_FILENO);
        dup2(nothing, STDERR_FILENO);
      }
      execl(WAKELOFT_COMMAND_PATH, "wakeloft", "run", "--", SIGNAL_COUNTER_PATH, counts.c_str(), nullptr);
      _exit(127);
    }
    if (!withTerminal) {
      setpgid(pid, pid);
      close(pipeEnds[1]);
    }
  }
  ~CommandRun() {
    if (pid > 0 && waitpid(pid, nullptr, WNOHANG) == 0) {
      kill(pid, SIGKILL);
      waitpid(pid, nullptr, 0);
    }
    if (output >= 0) close(output);
  }

  bool saw(const std::string& word) {
    std::string seen;
    char buffer[256];
    pollfd readable{output, POLLIN, 0};
    while (seen.find(word) == std::string::npos && poll(&readable, 1, 5000) == 1) {
      const ssize_t got = read(output, buffer, sizeof buffer);
      if (got <= 0) return false;
      seen.append(buffer, static_cast<std::size_t>(got));
    }
    return seen.find(word) != std::string::npos;
  }
  void type(char key) const { ASSERT_EQ(write(terminal, &key, 1), 1); }
  void hangUp() {
    close(terminal);
    terminal = output = -1;
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
  bool terminal;
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
      {"Ctrl-C", true, [](CommandRun& run) { run.type('\x03'); }, only("INT", true)},
      {"Ctrl-\\", true, [](CommandRun& run) { run.type('\x1c'); }, only("QUIT", true)},
      {"a hang-up", true, [](CommandRun& run) { run.hangUp(); }, only("HUP", false)},
      {"SIGINT to wakeloft", true, signalCommand(SIGINT), only("INT", true)},
      {"SIGTERM to wakeloft", true, signalCommand(SIGTERM), only("TERM", true)},
      {"SIGHUP to wakeloft", true, signalCommand(SIGHUP), only("HUP", true)},
      {"SIGQUIT to wakeloft", true, signalCommand(SIGQUIT), only("QUIT", true)},
      {"SIGTERM to wakeloft's group", true, [](CommandRun& run) { kill(-run.pid, SIGTERM); }, only("TERM", true)},
      {"SIGINT to the group without a terminal", false, [](CommandRun& run) { kill(-run.pid, SIGINT); },
       only("INT", false)},
      {"Ctrl-Z, then fg",
       true,
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
    CommandRun run(c.terminal);
    ASSERT_GT(run.pid, 0);
    ASSERT_TRUE(run.saw("ready"));
    c.act(run);
    const int status = run.waitFor(0);
    EXPECT_TRUE(status != -1 && WIFEXITED(status) && WEXITSTATUS(status) == 0) << "wakeloft did not end as its command";
    EXPECT_EQ(run.counted(), c.counts);
  }
}

}  // namespace
