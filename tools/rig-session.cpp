// rig-session: a sample client of the lease rig. It holds a lease for a
// while the way the app does, asking for 30 s and renewing every 10 s, then
// gives it back.
//
//   rig-session SOCKET [SECONDS]     (default 25 s)

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <thread>

#include "clock/SystemDateProvider.h"
#include "lease/LidSleepLease.h"
#include "rig/RigWire.h"

using namespace wakeloft;

namespace {

std::optional<std::string> ask(int fd, const std::string& line) {
  if (send(fd, line.data(), line.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(line.size())) return std::nullopt;
  std::string reply;
  pollfd ready{fd, POLLIN, 0};
  const auto timeout = static_cast<int>(LidSleepLease::replyTimeout * 1000);
  char byte;
  while (poll(&ready, 1, timeout) > 0 && recv(fd, &byte, 1, 0) == 1) {
    if (byte == '\n') return reply;
    reply += byte;
  }
  return std::nullopt;
}

void report(const char* what, const std::optional<std::string>& reply) {
  if (!reply) {
    std::printf("session: %s: no answer\n", what);
  } else if (reply->empty()) {
    std::printf("session: %s: granted\n", what);
  } else {
    std::printf("session: %s: refused: %s\n", what, reply->c_str());
  }
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) {
    std::fprintf(stderr, "usage: rig-session SOCKET [SECONDS]\n");
    return 2;
  }
  const double length = argc == 3 ? std::atof(argv[2]) : 25;
  const int fd = socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, argv[1], sizeof address.sun_path - 1);
  if (connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    std::fprintf(stderr, "rig-session: cannot reach the rig at %s: %s\n", argv[1], std::strerror(errno));
    return 1;
  }

  const SystemDateProvider dates;
  const Date end = dates.now().adding(length);
  while (dates.now() < end) {
    report("renew for 30 s", ask(fd, RigWire::renewLine(LidSleepLease::expiry(dates.now()).secondsSince1970)));
    std::this_thread::sleep_for(std::chrono::duration<double>(
        std::min(LidSleepLease::renewalInterval, end.secondsSince(dates.now()))));
  }
  report("revoke", ask(fd, std::string(RigWire::revokeLine)));
  close(fd);
  return 0;
}
