#pragma once

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "clock/SystemDateProvider.h"

namespace wakeloft::testing {

// The deadline a client sends for `seconds` from now.
inline double inSeconds(double seconds) { return SystemDateProvider().now().adding(seconds).secondsSince1970; }

struct RigSetup {
  rlim_t openFileLimit = 0;  // the helper's descriptors, when not 0
  std::vector<std::string> moreArguments = {};
};

// A real WakeloftLidHelper --rig in a folder of its own, its log in a file.
class RigProcess {
 public:
  // With no arguments, a rig whose socket, lease file and lid file lie in
  // its folder; otherwise exactly the arguments given.
  explicit RigProcess(std::optional<std::vector<std::string>> arguments = std::nullopt, RigSetup setup = {})
      : openFileLimit_(setup.openFileLimit) {
    char pattern[] = "/tmp/wakeloft-rig-test-XXXXXX";
    folder = mkdtemp(pattern);
    socketPath = folder / "rig.sock";
    leasePath = folder / "rig.lease";
    lidPath = folder / "lid";
    logPath = folder / "helper.log";
    std::vector<std::string> argv = {WAKELOFT_LID_HELPER_PATH};
    const auto given = arguments.value_or(std::vector<std::string>{
        "--rig", "--socket", socketPath, "--rig-file", leasePath, "--lid-file", lidPath});
    argv.insert(argv.end(), given.begin(), given.end());
    argv.insert(argv.end(), setup.moreArguments.begin(), setup.moreArguments.end());
    start(argv);
  }

  ~RigProcess() {
    if (pid > 0) {
      kill(pid, SIGKILL);
      waitpid(pid, nullptr, 0);
    }
    std::filesystem::remove_all(folder);
  }

  void start(const std::vector<std::string>& arguments) {
    pid = fork();
    if (pid == 0) {
      // Dies with the test, and keeps none of its output pipes open, so a
      // crashed test never leaves a helper behind for ctest to wait on.
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      const int log = ::open(logPath.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
      dup2(log, STDERR_FILENO);
      const int nothing = ::open("/dev/null", O_RDWR);
      dup2(nothing, STDOUT_FILENO);
      dup2(nothing, STDIN_FILENO);
      if (openFileLimit_ > 0) {
        const rlimit limit{openFileLimit_, openFileLimit_};
        setrlimit(RLIMIT_NOFILE, &limit);
      }
      std::vector<char*> argv;
      for (const auto& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
      argv.push_back(nullptr);
      execv(argv[0], argv.data());
      _exit(127);
    }
  }

  bool waitUntil(const std::function<bool()>& done, std::chrono::milliseconds limit = std::chrono::seconds(5)) const {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!done()) {
      if (std::chrono::steady_clock::now() >= end) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
  }

  bool waitForSocket() const {
    return waitUntil([&] { return std::filesystem::exists(socketPath) && log().find("helper starting") != std::string::npos; });
  }

  std::string log() const {
    std::stringstream text;
    text << std::ifstream(logPath).rdbuf();
    return text.str();
  }

  bool leaseFileExists() const { return std::filesystem::exists(leasePath); }
  bool logSays(const std::string& text) const { return log().find(text) != std::string::npos; }

  // Exit status once the process ended, within the limit.
  std::optional<int> waitForExit(std::chrono::milliseconds limit) {
    int status = 0;
    if (!waitUntil([&] { return waitpid(pid, &status, WNOHANG) == pid; }, limit)) return std::nullopt;
    pid = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }

  std::filesystem::path folder, socketPath, leasePath, lidPath, logPath;
  pid_t pid = -1;

 private:
  rlim_t openFileLimit_ = 0;
};

// One connection to the rig, speaking its wire. Made without waiting, it
// fails at once instead of blocking when the helper's backlog is full.
class RigClient {
 public:
  explicit RigClient(const std::string& socketPath, bool withoutWaiting = false) {
    fd_ = socket(AF_UNIX, SOCK_STREAM | (withoutWaiting ? SOCK_NONBLOCK : 0), 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, socketPath.c_str(), sizeof address.sun_path - 1);
    connected_ = connect(fd_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
  }
  ~RigClient() { close(); }

  bool connected() const { return connected_; }
  int fd() const { return fd_; }
  void close() {
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
  }
  void send(const std::string& bytes) { (void)::send(fd_, bytes.data(), bytes.size(), MSG_NOSIGNAL); }

  // The next reply line without its "\n"; absent on end of stream or time-out.
  std::optional<std::string> readLine(std::chrono::milliseconds limit = std::chrono::seconds(3)) {
    for (;;) {
      if (const auto end = buffer_.find('\n'); end != std::string::npos) {
        std::string line = buffer_.substr(0, end);
        buffer_.erase(0, end + 1);
        return line;
      }
      pollfd ready{fd_, POLLIN, 0};
      if (poll(&ready, 1, static_cast<int>(limit.count())) <= 0) return std::nullopt;
      char chunk[512];
      const ssize_t received = recv(fd_, chunk, sizeof chunk, 0);
      if (received <= 0) return std::nullopt;
      buffer_.append(chunk, static_cast<std::size_t>(received));
    }
  }

  // True when the helper closed its side.
  bool closedByPeer(std::chrono::milliseconds limit = std::chrono::seconds(3)) {
    pollfd ready{fd_, POLLIN, 0};
    if (poll(&ready, 1, static_cast<int>(limit.count())) <= 0) return false;
    char byte;
    return recv(fd_, &byte, 1, MSG_PEEK) == 0;
  }

  std::optional<std::string> ask(const std::string& line) {
    send(line);
    return readLine();
  }

 private:
  int fd_ = -1;
  bool connected_ = false;
  std::string buffer_;
};

}  // namespace wakeloft::testing
