#include "automation/ChildCommand.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <system_error>
#include <thread>

#include "clock/MainRunLoop.h"

namespace wakeloft::ChildCommand {

namespace {

constexpr std::array forwarded = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

// What the handler may touch: lock-free atomics only.
std::atomic<pid_t> child{0};
// A signal that came before the command had a pid, passed on once it has.
std::atomic<int> early{0};
// The terminal handed to the command's group, or -1.
std::atomic<int> handedTerminal{-1};

// A hang-up of the terminal the command holds reaches the command from the
// kernel once the session's leader exits; passing on the leader's SIGHUP as
// well would make two. When this process is the leader, it is the only way.
bool hangUpReachesTheCommandAnyway() {
  const int terminal = handedTerminal.load();
  return terminal >= 0 && getsid(0) != getpid() && tcgetpgrp(terminal) == -1;
}

void forward(int signal) {
  const int saved = errno;
  if (const pid_t pid = child.load(); pid > 0) {
    if (signal != SIGHUP || !hangUpReachesTheCommandAnyway()) ::kill(-pid, signal);
  } else {
    early.store(signal);
  }
  errno = saved;
}

// The terminal whose foreground group this process's group is, or -1.
int foregroundTerminal() {
  for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (isatty(fd) && tcgetpgrp(fd) == getpgrp()) return fd;
  }
  return -1;
}

// Installs the forwarding for the life of a run and puts the old handling
// back after it.
class Forwarding {
 public:
  Forwarding() {
    child.store(0);
    early.store(0);
    handedTerminal.store(-1);
    struct sigaction action {};
    action.sa_handler = forward;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < forwarded.size(); ++i) {
      ::sigaction(forwarded[i], nullptr, &previous_[i]);
      // An ignored signal stays ignored, for the command too.
      installed_[i] = previous_[i].sa_handler != SIG_IGN;
      if (installed_[i]) ::sigaction(forwarded[i], &action, nullptr);
    }
  }
  ~Forwarding() {
    for (std::size_t i = 0; i < forwarded.size(); ++i) {
      if (installed_[i]) ::sigaction(forwarded[i], &previous_[i], nullptr);
    }
    child.store(0);
    handedTerminal.store(-1);
  }
  Forwarding(const Forwarding&) = delete;
  Forwarding& operator=(const Forwarding&) = delete;

  // In the forked command, before exec: async-signal-safe calls only.
  void resetInChild() const {
    for (std::size_t i = 0; i < forwarded.size(); ++i) {
      if (installed_[i]) ::signal(forwarded[i], SIG_DFL);
    }
  }

 private:
  std::array<struct sigaction, forwarded.size()> previous_{};
  std::array<bool, forwarded.size()> installed_{};
};

// execvp's search, laid out before fork so the child only calls execv.
struct Program {
  std::vector<std::string> candidates;
  std::vector<std::string> arguments;
  std::vector<char*> argv;
  // /bin/sh CANDIDATE ARGUMENTS..., for a file the kernel cannot run.
  std::vector<char*> shellArgv;

  explicit Program(const std::vector<std::string>& command) : arguments(command) {
    const std::string& name = command.front();
    if (name.find('/') != std::string::npos) {
      candidates.push_back(name);
    } else {
      std::string path;
      if (const char* set = std::getenv("PATH")) {
        path = set;
      } else {
        path.resize(confstr(_CS_PATH, nullptr, 0));
        confstr(_CS_PATH, path.data(), path.size());
        path.resize(path.empty() ? 0 : path.size() - 1);
      }
      std::size_t start = 0;
      while (true) {
        const auto end = path.find(':', start);
        const std::string directory = path.substr(start, end == std::string::npos ? end : end - start);
        // An empty entry is the current directory.
        candidates.push_back(directory.empty() ? name : directory + "/" + name);
        if (end == std::string::npos) break;
        start = end + 1;
      }
    }
    for (auto& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    shellArgv = {const_cast<char*>("/bin/sh"), nullptr};
    shellArgv.insert(shellArgv.end(), argv.begin() + 1, argv.end());
  }

  // Returns only when nothing could be run, with the errno to report.
  int exec() {
    int failure = ENOENT;
    for (auto& candidate : candidates) {
      ::execv(candidate.c_str(), argv.data());
      if (errno == ENOEXEC) {
        shellArgv[1] = candidate.data();
        ::execv(shellArgv[0], shellArgv.data());
        return errno;
      }
      if (errno == EACCES) {
        failure = EACCES;
      } else if (errno != ENOENT && errno != ENOTDIR) {
        return errno;
      }
    }
    return failure;
  }
};

// Changes the terminal's foreground group even from the background: the
// calling thread blocks SIGTTOU, which would stop the process otherwise.
void giveTerminal(int terminal, pid_t group) {
  sigset_t ttou, previous;
  sigemptyset(&ttou);
  sigaddset(&ttou, SIGTTOU);
  pthread_sigmask(SIG_BLOCK, &ttou, &previous);
  tcsetpgrp(terminal, group);
  pthread_sigmask(SIG_SETMASK, &previous, nullptr);
}

// The kernel drops a terminal's stop signals for a group that no shell of
// its session watches (an orphaned group); SIGSTOP cannot be dropped.
int ownStopSignal(int commandStop) {
  const pid_t parent = getppid();
  const bool watched = getsid(parent) == getsid(0) && getpgid(parent) != getpgrp();
  return watched ? commandStop : SIGSTOP;
}

// Follows the command until it ends, as a shell follows a job: its stops
// stop this process too. Returns its wait status.
int follow(pid_t pid) {
  int status = 0;
  while (true) {
    if (::waitpid(pid, &status, WUNTRACED) == -1) {
      if (errno == EINTR) continue;
      return -1;
    }
    if (!WIFSTOPPED(status)) return status;
    const int terminal = handedTerminal.load();
    if (terminal >= 0 && tcgetpgrp(terminal) == pid) giveTerminal(terminal, getpgrp());
    // Returns once this process has been continued (fg, bg or SIGCONT).
    ::raise(ownStopSignal(WSTOPSIG(status)));
    // Only a foreground job takes the terminal; after bg it stays the shell's.
    if (const int foreground = foregroundTerminal(); foreground >= 0) {
      giveTerminal(foreground, pid);
      handedTerminal.store(foreground);
    }
    ::kill(-pid, SIGCONT);
  }
}

// The terminal comes back unless someone else (a shell after bg) holds it.
void takeTerminalBack(pid_t pid) {
  const int terminal = handedTerminal.load();
  if (terminal < 0) return;
  const pid_t holder = tcgetpgrp(terminal);
  const bool abandoned = holder == pid || (holder > 0 && ::kill(-holder, 0) == -1 && errno == ESRCH);
  if (abandoned) giveTerminal(terminal, getpgrp());
}

}  // namespace

Outcome run(const std::vector<std::string>& command, const std::function<void(pid_t)>& started,
            const LoopUntil& loopUntil) {
  if (command.empty()) return {127, "there is no command to run"};
  Program program(command);
  Forwarding forwarding;
  // Tells the parent why exec failed; closes unread when it succeeds.
  int errorPipe[2];
  if (::pipe(errorPipe) == -1) return {126, "a pipe could not be made: " + std::generic_category().message(errno)};
  for (const int fd : errorPipe) ::fcntl(fd, F_SETFD, FD_CLOEXEC);
  const int terminal = foregroundTerminal();

  const pid_t pid = ::fork();
  if (pid == 0) {
    ::close(errorPipe[0]);
    ::setpgid(0, 0);
    if (terminal >= 0) giveTerminal(terminal, getpid());
    forwarding.resetInChild();
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    const int failure = program.exec();
    while (::write(errorPipe[1], &failure, sizeof failure) == -1 && errno == EINTR) {
    }
    ::_exit(127);
  }
  ::close(errorPipe[1]);
  if (pid == -1) {
    ::close(errorPipe[0]);
    return {126, command.front() + ": " + std::generic_category().message(errno)};
  }
  // Both sides set the group and the terminal, so neither order races.
  ::setpgid(pid, pid);
  if (terminal >= 0) {
    giveTerminal(terminal, pid);
    handedTerminal.store(terminal);
  }
  int failure = 0;
  ssize_t got = 0;
  while ((got = ::read(errorPipe[0], &failure, sizeof failure)) == -1 && errno == EINTR) {
  }
  ::close(errorPipe[0]);
  if (got == sizeof failure) {
    ::waitpid(pid, nullptr, 0);
    takeTerminalBack(pid);
    return {failure == ENOENT ? 127 : 126, command.front() + ": " + std::generic_category().message(failure)};
  }
  child.store(pid);
  if (const int signal = early.exchange(0); signal != 0) ::kill(-pid, signal);

  // The follower tells the main loop through a flag the loop's work sets,
  // so the status is read on this thread after the follower is done.
  auto ended = std::make_shared<bool>(false);
  int status = 0;
  std::thread follower([pid, ended, &status] {
    sigset_t quiet;
    sigemptyset(&quiet);
    for (const int signal : forwarded) sigaddset(&quiet, signal);
    pthread_sigmask(SIG_BLOCK, &quiet, nullptr);
    status = follow(pid);
    takeTerminalBack(pid);
    MainRunLoop::perform([ended] { *ended = true; });
  });
  if (started) started(pid);
  loopUntil([&ended] { return *ended; });
  follower.join();

  if (status == -1) return {1, "the end of " + command.front() + " could not be followed"};
  if (WIFSIGNALED(status)) return {128 + WTERMSIG(status), {}};
  return {WEXITSTATUS(status), {}};
}

}  // namespace wakeloft::ChildCommand
