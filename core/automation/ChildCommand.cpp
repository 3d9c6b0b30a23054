#include "automation/ChildCommand.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <system_error>

extern char** environ;

namespace wakeloft::ChildCommand {

namespace {

constexpr std::array forwarded = {SIGINT, SIGTERM};

// What the handler may touch: lock-free atomics only.
std::atomic<pid_t> child{0};
// A signal that came before the command had a pid, passed on once it has.
std::atomic<int> early{0};

void forward(int signal) {
  const int saved = errno;
  if (const pid_t pid = child.load(); pid > 0) {
    ::kill(pid, signal);
  } else {
    early.store(signal);
  }
  errno = saved;
}

// Installs the forwarding for the life of a run and puts the old handling
// back after it.
class Forwarding {
 public:
  Forwarding() {
    child.store(0);
    early.store(0);
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
  }
  Forwarding(const Forwarding&) = delete;
  Forwarding& operator=(const Forwarding&) = delete;

  // The handled signals go back to their default in the command, and none is
  // blocked there.
  void prepare(posix_spawnattr_t& attributes) const {
    sigset_t defaults;
    sigemptyset(&defaults);
    for (std::size_t i = 0; i < forwarded.size(); ++i) {
      if (installed_[i]) sigaddset(&defaults, forwarded[i]);
    }
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
  }

 private:
  std::array<struct sigaction, forwarded.size()> previous_{};
  std::array<bool, forwarded.size()> installed_{};
};

}  // namespace

Outcome run(const std::vector<std::string>& command, const std::function<void(pid_t)>& started) {
  if (command.empty()) return {127, "there is no command to run"};
  Forwarding forwarding;
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  forwarding.prepare(attributes);

  std::vector<std::string> copies(command);
  std::vector<char*> argv;
  for (auto& argument : copies) argv.push_back(argument.data());
  argv.push_back(nullptr);
  pid_t pid = 0;
  const int error = ::posix_spawnp(&pid, argv[0], nullptr, &attributes, argv.data(), environ);
  posix_spawnattr_destroy(&attributes);
  if (error != 0) {
    const std::string reason = command.front() + ": " + std::generic_category().message(error);
    return {error == ENOENT ? 127 : 126, reason};
  }
  child.store(pid);
  if (const int signal = early.exchange(0); signal != 0) ::kill(pid, signal);

  if (started) started(pid);

  int status = 0;
  while (::waitpid(pid, &status, 0) == -1) {
    if (errno != EINTR) return {1, "the end of " + command.front() + " could not be followed"};
  }
  if (WIFSIGNALED(status)) return {128 + WTERMSIG(status), {}};
  return {WEXITSTATUS(status), {}};
}

}  // namespace wakeloft::ChildCommand
