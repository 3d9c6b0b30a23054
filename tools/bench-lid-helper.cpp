// bench-lid-helper: what the lease rig's helper costs, measured against a
// bare Unix-socket echo server run side by side in the same run.
//
//   bench-lid-helper [--helper PATH] [--dir DIR] [--samples N] [--idle S] [--lease S]
//
// 1. Context switches and CPU time over an idle stretch (10 s), no client.
// 2. Renewal round trip: one client sends "renew <deadline>" lines and reads
//    each reply, taking turns in blocks between the helper and the echo;
//    median and p99 of both, and their ratio.
// 3. A lease held for 60 s with a renewal every 10 s as the app sends them,
//    the same lines sent to the echo: context switches, CPU time per
//    lease-minute and resident memory.
//
// The rig file lies in DIR (default /tmp, where the rig's default file lies),
// so its cost is that of the file system it will really use. Two helpers are
// compared in two runs, not in one: one helper's file system work slows the
// other's down.

#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "HelperProcess.h"
#include "ProcessFigures.h"
#include "clock/SystemDateProvider.h"
#include "lease/LidSleepLease.h"
#include "rig/RigWire.h"

using namespace wakeloft;
using namespace wakeloft::bench;
using Clock = std::chrono::steady_clock;

namespace {

struct Options {
  std::string helper = WAKELOFT_LID_HELPER_PATH;
  std::filesystem::path dir = "/tmp";
  int samples = 5000;
  double idleSeconds = 10;
  double leaseSeconds = 60;
};

// Echoes every byte back on each connection, one connection at a time: the
// least a server can do for a line.
class EchoServer {
 public:
  explicit EchoServer(const std::filesystem::path& folder) : path((folder / "echo.sock").string()) {
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    if (bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 || listen(listener, 16) != 0) {
      throw std::runtime_error("cannot serve the echo on " + path);
    }
    pid = fork();
    if (pid == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      for (;;) {
        const int client = accept(listener, nullptr, nullptr);
        if (client < 0) continue;
        char buffer[4096];
        for (ssize_t got; (got = read(client, buffer, sizeof buffer)) > 0;) {
          if (write(client, buffer, static_cast<std::size_t>(got)) != got) break;
        }
        ::close(client);
      }
    }
    ::close(listener);
  }
  ~EchoServer() {
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
    unlink(path.c_str());
  }

  std::string path;
  pid_t pid = -1;
};

// One request line out, one reply line back.
class LineClient {
 public:
  explicit LineClient(const std::string& path) : fd_(HelperProcess::connectTo(path)) {
    if (fd_ < 0) throw std::runtime_error("cannot connect to " + path);
  }
  ~LineClient() { ::close(fd_); }

  void ask(const std::string& line) {
    if (send(fd_, line.data(), line.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(line.size())) {
      throw std::runtime_error("a request could not be sent");
    }
    for (;;) {
      pollfd ready{fd_, POLLIN, 0};
      if (poll(&ready, 1, 5000) <= 0) throw std::runtime_error("no reply within 5 s");
      char buffer[256];
      const ssize_t got = recv(fd_, buffer, sizeof buffer, 0);
      if (got <= 0) throw std::runtime_error("the server closed the connection");
      if (std::memchr(buffer, '\n', static_cast<std::size_t>(got))) return;
    }
  }

 private:
  int fd_;
};

std::string renewal() {
  return RigWire::renewLine(LidSleepLease::expiry(SystemDateProvider().now()).secondsSince1970);
}

double microseconds(Clock::duration d) { return std::chrono::duration<double, std::micro>(d).count(); }

struct Spread {
  double median, p99;
};

Spread spread(std::vector<double> samples) {
  std::sort(samples.begin(), samples.end());
  const auto at = [&](double q) { return samples[static_cast<std::size_t>(q * static_cast<double>(samples.size() - 1))]; };
  return {at(0.5), at(0.99)};
}

// The servers measured side by side: the helper, then the echo.
struct Server {
  std::string name;
  pid_t pid;
  std::string socketPath;
};

void roundTrips(const Options& options, const std::vector<Server>& servers) {
  std::vector<std::unique_ptr<LineClient>> clients;
  for (const auto& server : servers) clients.push_back(std::make_unique<LineClient>(server.socketPath));
  // Warm up, then take turns in blocks so that both see the same machine,
  // while the disk work one renewal sets off mostly lands on its own kind.
  for (int i = 0; i < 200; ++i) {
    for (auto& client : clients) client->ask(renewal());
  }
  constexpr int block = 250;
  std::vector<std::vector<double>> times(servers.size());
  for (int done = 0; done < options.samples; done += block) {
    for (std::size_t s = 0; s < servers.size(); ++s) {
      for (int i = done; i < std::min(done + block, options.samples); ++i) {
        const std::string line = renewal();
        const auto start = Clock::now();
        clients[s]->ask(line);
        times[s].push_back(microseconds(Clock::now() - start));
      }
    }
  }
  for (auto& client : clients) client->ask(std::string(RigWire::revokeLine));

  std::printf("renewal round trip, %d samples each\n", options.samples);
  const auto echo = spread(times.back());
  for (std::size_t s = 0; s < servers.size(); ++s) {
    const auto own = spread(times[s]);
    std::printf("  %-8s median %8.1f us (%5.1fx echo)   p99 %8.1f us (%6.1fx echo)\n", servers[s].name.c_str(),
                own.median, own.median / echo.median, own.p99, own.p99 / echo.p99);
  }
}

void sleepFor(double seconds) { std::this_thread::sleep_for(std::chrono::duration<double>(seconds)); }

std::vector<ProcessFigures> figures(const std::vector<Server>& servers) {
  std::vector<ProcessFigures> all;
  for (const auto& server : servers) all.push_back(ProcessFigures::of(server.pid));
  return all;
}

void idle(const Options& options, const std::vector<Server>& servers) {
  const auto before = figures(servers);
  sleepFor(options.idleSeconds);
  const auto after = figures(servers);
  std::printf("idle for %.0f s, no client\n", options.idleSeconds);
  for (std::size_t s = 0; s < servers.size(); ++s) {
    const auto used = after[s] - before[s];
    std::printf("  %-8s %4lld context switches (%lld voluntary), %.3f ms CPU\n", servers[s].name.c_str(),
                used.switches(), used.voluntarySwitches, used.runSeconds * 1000);
  }
}

void leased(const Options& options, const std::vector<Server>& servers) {
  std::vector<std::unique_ptr<LineClient>> clients;
  for (const auto& server : servers) clients.push_back(std::make_unique<LineClient>(server.socketPath));
  const auto before = figures(servers);
  int renewals = 0;
  const auto end = Clock::now() + std::chrono::duration<double>(options.leaseSeconds);
  while (Clock::now() < end) {
    const std::string line = renewal();
    for (auto& client : clients) client->ask(line);
    ++renewals;
    sleepFor(std::min(LidSleepLease::renewalInterval, std::chrono::duration<double>(end - Clock::now()).count()));
  }
  const auto after = figures(servers);
  for (auto& client : clients) client->ask(std::string(RigWire::revokeLine));

  const double leaseMinutes = options.leaseSeconds / 60;
  const auto echo = after.back() - before.back();
  std::printf("lease held for %.0f s with %d renewals, the same lines echoed\n", options.leaseSeconds, renewals);
  for (std::size_t s = 0; s < servers.size(); ++s) {
    const auto used = after[s] - before[s];
    std::printf("  %-8s %4lld context switches (%4.1f per renewal, %4.1fx echo), CPU %6.2f ms per lease-minute "
                "(%2.0f ms in %.0f ms clock ticks), resident %lld KiB\n",
                servers[s].name.c_str(), used.switches(), static_cast<double>(used.switches()) / renewals,
                static_cast<double>(used.switches()) / static_cast<double>(std::max(1LL, echo.switches())),
                used.runSeconds / leaseMinutes * 1000, used.cpuSeconds / leaseMinutes * 1000,
                1000.0 / static_cast<double>(sysconf(_SC_CLK_TCK)), used.residentKiB);
  }
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  constexpr const char* usage =
      "usage: bench-lid-helper [--helper PATH] [--dir DIR] [--samples N] [--idle SECONDS] [--lease SECONDS]\n";
  for (int i = 1; i < argc; i += 2) {
    const std::string name = argv[i];
    const std::string value = i + 1 < argc ? argv[i + 1] : "";
    if (name == "--helper" && !value.empty()) {
      options.helper = value;
    } else if (name == "--dir" && !value.empty()) {
      options.dir = value;
    } else if (name == "--samples" && std::atoi(value.c_str()) >= 100) {
      options.samples = std::atoi(value.c_str());
    } else if (name == "--idle" && std::atof(value.c_str()) > 0) {
      options.idleSeconds = std::atof(value.c_str());
    } else if (name == "--lease" && std::atof(value.c_str()) > 0) {
      options.leaseSeconds = std::atof(value.c_str());
    } else {
      std::fprintf(stderr, "%s", usage);
      return 2;
    }
  }
  try {
    HelperProcess helper(options.helper, options.dir);
    std::printf("helper %s, rig file in %s\n", options.helper.c_str(), options.dir.c_str());
    std::vector<Server> servers = {{"helper", helper.pid, helper.socketPath.string()}};
    EchoServer echo(helper.folder);
    servers.push_back({"echo", echo.pid, echo.path});
    idle(options, servers);
    roundTrips(options, servers);
    leased(options, servers);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "bench-lid-helper: %s\n", error.what());
    return 1;
  }
  return 0;
}
