// rig-check: shows, as it happens, what the lease rig's file says: the end of
// the lease the helper holds, or that the setting is back at 0.
//
//   rig-check [PATH]     (default /tmp/wakeloft-lid-rig.lease)

#include <gio/gio.h>
#include <glib-unix.h>

#include <cmath>
#include <cstdio>
#include <ctime>
#include <string>

#include "clock/SystemDateProvider.h"
#include "helper/RigLeaseFile.h"

using namespace wakeloft;

namespace {

std::string clockTime(Date date) {
  const auto seconds = static_cast<time_t>(std::floor(date.secondsSince1970));
  tm local{};
  localtime_r(&seconds, &local);
  char text[16];
  std::strftime(text, sizeof text, "%H:%M:%S", &local);
  return text;
}

void show(const std::string& path) {
  const Date now = SystemDateProvider().now();
  if (const auto end = RigLeaseFile::read(path)) {
    std::printf("%s  setting 1: lease held until %s (%.1f s from now)\n", clockTime(now).c_str(),
                clockTime(*end).c_str(), end->secondsSince(now));
  } else if (g_file_test(path.c_str(), G_FILE_TEST_EXISTS)) {
    std::printf("%s  setting 1: the file does not hold a lease end\n", clockTime(now).c_str());
  } else {
    std::printf("%s  setting 0: no rig file\n", clockTime(now).c_str());
  }
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 2) {
    std::fprintf(stderr, "usage: rig-check [PATH]\n");
    return 2;
  }
  static std::string path = argc == 2 ? argv[1] : std::string(RigLeaseFile::defaultPath);
  GFile* file = g_file_new_for_path(path.c_str());
  GError* error = nullptr;
  GFileMonitor* monitor = g_file_monitor_file(file, G_FILE_MONITOR_WATCH_MOVES, nullptr, &error);
  if (!monitor) {
    std::fprintf(stderr, "rig-check: cannot watch %s: %s\n", path.c_str(), error->message);
    return 1;
  }
  g_signal_connect(monitor, "changed", G_CALLBACK(+[](GFileMonitor*, GFile*, GFile*, GFileMonitorEvent event, gpointer) {
                     if (event == G_FILE_MONITOR_EVENT_CHANGES_DONE_HINT || event == G_FILE_MONITOR_EVENT_DELETED ||
                         event == G_FILE_MONITOR_EVENT_RENAMED || event == G_FILE_MONITOR_EVENT_MOVED_IN ||
                         event == G_FILE_MONITOR_EVENT_CREATED) {
                       show(path);
                     }
                   }),
                   nullptr);
  show(path);

  GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
  const auto quit = +[](gpointer running) -> gboolean {
    g_main_loop_quit(static_cast<GMainLoop*>(running));
    return G_SOURCE_REMOVE;
  };
  g_unix_signal_add(SIGINT, quit, loop);
  g_unix_signal_add(SIGTERM, quit, loop);
  g_main_loop_run(loop);
  g_object_unref(monitor);
  g_object_unref(file);
  g_main_loop_unref(loop);
  return 0;
}
