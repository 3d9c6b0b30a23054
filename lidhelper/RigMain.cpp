// WakeloftLidHelper on Linux: the lease rig. The same lease logic as the
// macOS launch daemon, served over a Unix socket, with the sleep setting
// replaced by the rig lease file.

#include <glib-unix.h>
#include <glib.h>
#include <unistd.h>

#include <chrono>
#include <climits>
#include <cstdio>
#include <memory>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "clock/ClockChangeNotifier.h"
#include "LibplistPropertyListParser.h"
#include "RigClamshell.h"
#include "RigSleepSetting.h"
#include "RigSocketServer.h"
#include "clock/BackgroundQueue.h"
#include "clock/SystemDateProvider.h"
#include "clock/SystemUptimeProvider.h"
#include "clock/TimerDeadlineScheduler.h"
#include "helper/LidHelperDaemon.h"
#include "helper/LidHelperService.h"
#include "rig/RigOptions.h"

using namespace wakeloft;

namespace {

void logLine(const std::string& line) {
  std::fprintf(stderr, "%s\n", line.c_str());
  std::fflush(stderr);
}

std::optional<std::string> executablePath() {
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  if (length <= 0 || static_cast<std::size_t>(length) >= sizeof path) return std::nullopt;
  return std::string(path, static_cast<std::size_t>(length));
}

struct Stopping {
  LidHelperDaemon* daemon;
  GMainLoop* loop;
  int status = 0;
};

gboolean stopOnSignal(gpointer data) {
  auto* stopping = static_cast<Stopping*>(data);
  // Whatever happens below, the process is gone within the exit limit.
  BackgroundQueue::runAfter(LidHelperService::exitTimeout, [] {
    logLine("helper stopping: the setting could not be put back in time; exiting anyway");
    _exit(1);
  });
  const auto start = std::chrono::steady_clock::now();
  const bool putBack = stopping->daemon->stop(
      [start] {
        return std::chrono::steady_clock::now() - start >= std::chrono::duration<double>(LidHelperService::stopRetryWindow);
      },
      [] { std::this_thread::sleep_for(std::chrono::duration<double>(LidHelperService::stopRetryPause)); });
  if (!putBack) logLine("helper stopping: the setting could not be put back");
  stopping->status = putBack ? 0 : 1;
  g_main_loop_quit(stopping->loop);
  return G_SOURCE_REMOVE;
}

}  // namespace

int main(int argc, char** argv) {
  const auto parsed = RigOptions::parse(std::vector<std::string>(argv + 1, argv + argc), getuid());
  if (const auto* error = std::get_if<RigOptions::Error>(&parsed)) {
    std::fprintf(stderr, "WakeloftLidHelper: %s\n%s\n", error->message.c_str(), RigOptions::usage);
    return 2;
  }
  const auto& options = std::get<RigOptions>(parsed);

  // The socket first: while another helper answers on it, this one must not
  // touch the rig file, which the keeper below cleans at once.
  std::unique_ptr<RigSocketServer> server;
  try {
    server = std::make_unique<RigSocketServer>(options.socketPath, options.allowedUid, logLine);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "WakeloftLidHelper: %s\n", error.what());
    return 1;
  }

  auto dates = std::make_shared<SystemDateProvider>();
  auto uptime = std::make_shared<SystemUptimeProvider>();
  std::weak_ptr<LidSleepLeaseKeeper> keeperForFile;
  auto setting = std::make_shared<RigSleepSetting>(options.rigFilePath, [&keeperForFile]() -> std::optional<Date> {
    const auto keeper = keeperForFile.lock();
    return keeper ? keeper->leaseExpiry() : std::nullopt;
  });
  auto keeper = std::make_shared<LidSleepLeaseKeeper>(setting, dates, uptime);
  keeperForFile = keeper;
  auto service = std::make_shared<LidLeaseService>(keeper, logLine);
  auto lidCheck = std::make_shared<LidSleepCheck>(std::make_shared<RigClamshell>(options.lidFilePath), logLine);
  std::shared_ptr<ClockChangeNotifier> clockChanges;
  try {
    clockChanges = std::make_shared<ClockChangeNotifier>();
  } catch (const std::system_error& error) {
    logLine(std::string("clock changes will show only when a lease's uptime ends: ") + error.what());
  }
  LidHelperDaemon daemon(keeper, service, lidCheck, std::make_shared<TimerDeadlineScheduler>(), dates, uptime,
                         [setting] { setting->followLeaseEnd(); }, clockChanges);

  server->serve(daemon.requests());

  const auto executable = executablePath();
  logLine(LidHelperService::startLine(executable, std::string(argv[0]), std::nullopt, LibplistPropertyListParser()));

  GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
  Stopping stopping{&daemon, loop};
  g_unix_signal_add(SIGTERM, stopOnSignal, &stopping);
  g_unix_signal_add(SIGINT, stopOnSignal, &stopping);
  g_main_loop_run(loop);
  g_main_loop_unref(loop);
  return stopping.status;
}
