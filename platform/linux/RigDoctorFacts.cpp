#include "RigDoctorFacts.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstring>
#include <stdexcept>

#include "RigSleepSetting.h"
#include "helper/RigLeaseFile.h"
#include "rig/RigWire.h"

namespace wakeloft::RigDoctorFacts {

namespace {

// For the command a user pastes into a shell, whatever the path holds.
std::string shellQuoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

struct Socket {
  int fd = -1;
  ~Socket() {
    if (fd >= 0) ::close(fd);
  }
};

// The reply line to a status request, or throws saying why there is none.
std::string askStatus(const std::string& path, double timeout) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) throw std::runtime_error("the path is too long for a socket");
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  Socket socket;
  socket.fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (socket.fd < 0) throw std::runtime_error(std::strerror(errno));
  if (::connect(socket.fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    const int error = errno;
    if (error == ENOENT) throw std::runtime_error("there is no socket");
    if (error == ECONNREFUSED) throw std::runtime_error("no helper listens there");
    throw std::runtime_error(std::strerror(error));
  }
  const std::string request(RigWire::statusLine);
  if (::send(socket.fd, request.data(), request.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(request.size())) {
    throw std::runtime_error("the request could not be sent: " + std::string(std::strerror(errno)));
  }
  const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(timeout);
  std::string line;
  for (;;) {
    if (const auto at = line.find('\n'); at != std::string::npos) return line.substr(0, at);
    if (line.size() > RigWire::maximumLineBytes) throw std::runtime_error("its answer is longer than a line may be");
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
    pollfd ready{socket.fd, POLLIN, 0};
    const int polled = left.count() > 0 ? ::poll(&ready, 1, static_cast<int>(left.count())) : 0;
    if (polled < 0 && errno == EINTR) continue;
    if (polled == 0) throw std::runtime_error("no answer within " + std::to_string(std::lround(timeout)) + " s");
    char chunk[512];
    const ssize_t received = ::recv(socket.fd, chunk, sizeof chunk, 0);
    if (received == 0) throw std::runtime_error("it closed the connection without an answer");
    if (received < 0) throw std::runtime_error(std::strerror(errno));
    line.append(chunk, static_cast<std::size_t>(received));
  }
}

}  // namespace

DoctorFacts read(const std::string& socketPath, const std::string& rigFilePath, double timeout) {
  DoctorFacts facts;
  facts.helperAddress = socketPath;
  facts.settingName = "rig file " + rigFilePath;
  facts.putBackCommand = "rm " + shellQuoted(rigFilePath);

  try {
    facts.isSettingOn = RigSleepSetting(rigFilePath, {}).readDisabled();
    if (*facts.isSettingOn) facts.recordedLeaseEnd = RigLeaseFile::read(rigFilePath);
  } catch (const std::exception& error) {
    facts.settingUnreadable = error.what();
  }

  try {
    const std::string line = askStatus(socketPath, timeout);
    facts.helperAnswer = LidLeaseStatus::read(line);
    // Not echoed: whatever answered there may send anything, terminal escapes too.
    if (!facts.helperAnswer) facts.helperSilence = "what answers there does not give a status";
  } catch (const std::exception& error) {
    facts.helperSilence = error.what();
  }
  return facts;
}

}  // namespace wakeloft::RigDoctorFacts
