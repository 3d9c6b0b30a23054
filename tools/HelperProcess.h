#pragma once

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>

namespace wakeloft::bench {

// A real WakeloftLidHelper --rig for a benchmark, in a folder of its own
// under `parent`, its log kept there. Ended with SIGTERM, as a service
// manager would, when dropped.
class HelperProcess {
 public:
  HelperProcess(const std::string& program, const std::filesystem::path& parent) {
    std::string pattern = (parent / "wakeloft-bench-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("cannot make a folder in " + parent.string());
    folder = pattern;
    socketPath = folder / "rig.sock";
    leasePath = folder / "rig.lease";
    const auto log = folder / "helper.log";
    pid = fork();
    if (pid == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      const int fd = ::open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
      dup2(fd, STDERR_FILENO);
      execl(program.c_str(), program.c_str(), "--rig", "--socket", socketPath.c_str(), "--rig-file", leasePath.c_str(),
            static_cast<char*>(nullptr));
      _exit(127);
    }
    // Ready once it accepts a connection.
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!accepts()) {
      if (std::chrono::steady_clock::now() > end) throw std::runtime_error("the helper did not start: " + program);
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }

  ~HelperProcess() {
    if (pid > 0) {
      kill(pid, SIGTERM);
      waitpid(pid, nullptr, 0);
    }
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }

  HelperProcess(const HelperProcess&) = delete;
  HelperProcess& operator=(const HelperProcess&) = delete;

  // A connected stream socket to `path`, or -1.
  static int connectTo(const std::string& path) {
    const int fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    if (connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
      ::close(fd);
      return -1;
    }
    return fd;
  }

  std::filesystem::path folder, socketPath, leasePath;
  pid_t pid = -1;

 private:
  bool accepts() const {
    const int fd = connectTo(socketPath);
    if (fd < 0) return false;
    ::close(fd);
    return true;
  }
};

}  // namespace wakeloft::bench
