#include "base/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cmath>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <thread>

extern char** environ;

namespace wakeloft::ChildProcess {

namespace {

using Clock = std::chrono::steady_clock;

// Longer than any tool is given; keeps the deadline arithmetic finite.
constexpr double longestTimeout = 24 * 60 * 60;

std::string systemMessage(int code) { return std::generic_category().message(code); }

class Descriptor {
 public:
  explicit Descriptor(int fd = -1) : fd_(fd) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { close(); }

  int get() const { return fd_; }
  void close() {
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
  }

 private:
  int fd_;
};

// Closed across exec, and above the three standard descriptors so that
// putting a copy on 1 and 2 always makes a copy that stays open in the child.
int privateDescriptor(int fd) {
  if (::fcntl(fd, F_SETFD, FD_CLOEXEC) == -1) {
    const int error = errno;
    ::close(fd);
    errno = error;
    return -1;
  }
  if (fd > STDERR_FILENO) return fd;
  const int moved = ::fcntl(fd, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  const int error = errno;
  ::close(fd);
  errno = error;
  return moved;
}

struct SpawnSetup {
  posix_spawn_file_actions_t actions;
  posix_spawnattr_t attributes;

  SpawnSetup() {
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attributes);
  }
  ~SpawnSetup() {
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
  }
  SpawnSetup(const SpawnSetup&) = delete;
  SpawnSetup& operator=(const SpawnSetup&) = delete;
};

void killAndReap(pid_t pid) {
  ::kill(pid, SIGKILL);
  while (::waitpid(pid, nullptr, 0) == -1 && errno == EINTR) {
  }
}

// Kills and reaps the child on any way out that has not reaped it.
struct RunningChild {
  pid_t pid;
  bool reaped = false;

  ~RunningChild() {
    if (!reaped) killAndReap(pid);
  }
  [[noreturn]] void stop(ChildProcessError::Kind kind, const std::string& description) {
    killAndReap(pid);
    reaped = true;
    throw ChildProcessError(kind, description);
  }
};

int millisecondsUntil(Clock::time_point deadline) {
  const auto left = std::chrono::duration<double, std::milli>(deadline - Clock::now()).count();
  if (left <= 0) return 0;
  return static_cast<int>(std::min(std::ceil(left), static_cast<double>(INT_MAX)));
}

}  // namespace

std::string describeSeconds(double seconds) {
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << seconds << (seconds == 1 ? " second" : " seconds");
  return text.str();
}

Result run(const std::vector<std::string>& arguments, double timeoutSeconds) {
  if (arguments.empty()) throw std::invalid_argument("ChildProcess::run needs the program to run");
  const std::string& program = arguments.front();
  const double timeout = timeoutSeconds > 0 ? std::min(timeoutSeconds, longestTimeout) : 0;  // NaN gives 0
  const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(timeout));

  int ends[2];
  if (::pipe(ends) == -1) {
    throw ChildProcessError(ChildProcessError::Kind::notStarted,
                            program + " could not be started: " + systemMessage(errno));
  }
  Descriptor readEnd(privateDescriptor(ends[0]));
  const int readError = errno;
  Descriptor writeEnd(privateDescriptor(ends[1]));
  if (readEnd.get() < 0 || writeEnd.get() < 0) {
    const int error = readEnd.get() < 0 ? readError : errno;
    throw ChildProcessError(ChildProcessError::Kind::notStarted, program + " could not be started: " + systemMessage(error));
  }

  SpawnSetup setup;
  posix_spawn_file_actions_addopen(&setup.actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&setup.actions, writeEnd.get(), STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&setup.actions, writeEnd.get(), STDERR_FILENO);
  // The caller may ignore or block signals (the helper ignores SIGTERM to take
  // it through a dispatch source); the tool must not inherit that.
  sigset_t noSignals;
  sigemptyset(&noSignals);
  sigset_t defaults;
  sigemptyset(&defaults);
  for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGALRM, SIGTERM, SIGCHLD, SIGUSR1, SIGUSR2}) {
    sigaddset(&defaults, signal);
  }
  posix_spawnattr_setsigmask(&setup.attributes, &noSignals);
  posix_spawnattr_setsigdefault(&setup.attributes, &defaults);
  short flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
#ifdef POSIX_SPAWN_CLOEXEC_DEFAULT
  // Where the system offers it, nothing but the three set up above crosses.
  flags |= POSIX_SPAWN_CLOEXEC_DEFAULT;
#endif
  posix_spawnattr_setflags(&setup.attributes, flags);

  std::vector<std::string> copies(arguments);
  std::vector<char*> argv;
  argv.reserve(copies.size() + 1);
  for (auto& argument : copies) argv.push_back(argument.data());
  argv.push_back(nullptr);

  pid_t pid = 0;
  const int spawnError = ::posix_spawn(&pid, program.c_str(), &setup.actions, &setup.attributes, argv.data(), environ);
  if (spawnError != 0) {
    throw ChildProcessError(ChildProcessError::Kind::notStarted,
                            program + " could not be started: " + systemMessage(spawnError));
  }
  RunningChild child{pid};
  // Only the child holds the write end now, so its end shows as end of file.
  writeEnd.close();

  const std::string tooSlow = program + " did not finish within " + describeSeconds(timeout) + " and was stopped";
  Result result;
  for (bool atEnd = false; !atEnd;) {
    pollfd ready{readEnd.get(), POLLIN, 0};
    const int waiting = millisecondsUntil(deadline);
    if (waiting == 0) child.stop(ChildProcessError::Kind::timedOut, tooSlow);
    const int polled = ::poll(&ready, 1, waiting);
    if (polled == -1) {
      if (errno == EINTR) continue;
      child.stop(ChildProcessError::Kind::lost, program + "'s output could not be read: " + systemMessage(errno));
    }
    if (polled == 0) continue;
    char buffer[4096];
    const ssize_t got = ::read(readEnd.get(), buffer, sizeof buffer);
    if (got > 0) {
      const auto room = maximumOutput - result.output.size();
      result.output.append(buffer, std::min(static_cast<std::size_t>(got), room));
    } else if (got == 0) {
      atEnd = true;
    } else if (errno != EINTR && errno != EAGAIN) {
      child.stop(ChildProcessError::Kind::lost, program + "'s output could not be read: " + systemMessage(errno));
    }
  }

  // A tool that has closed its output is normally gone a moment later; wait
  // for that in short naps, still no longer than the deadline.
  for (;;) {
    int status = 0;
    const pid_t ended = ::waitpid(pid, &status, WNOHANG);
    if (ended == pid) {
      child.reaped = true;
      if (WIFEXITED(status)) {
        result.exitStatus = WEXITSTATUS(status);
        return result;
      }
      const int signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
      throw ChildProcessError(ChildProcessError::Kind::signalled,
                              program + " was ended by signal " + std::to_string(signal));
    }
    if (ended == -1 && errno != EINTR) {
      child.stop(ChildProcessError::Kind::lost, program + "'s end could not be followed: " + systemMessage(errno));
    }
    if (ended == 0) {
      if (millisecondsUntil(deadline) == 0) child.stop(ChildProcessError::Kind::timedOut, tooSlow);
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  }
}

}  // namespace wakeloft::ChildProcess
