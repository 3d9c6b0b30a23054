#include "SystemDeadlineRecheckNotifier.h"

#include <gio/gio.h>
#include <unicode/timezone.h>

#include <system_error>

#include "base/MainThread.h"

namespace wakeloft {

struct SystemDeadlineRecheckNotifier::ZoneWatch {
  GFileMonitor* monitor = nullptr;
  std::function<void()> handler;

  ~ZoneWatch() {
    if (!monitor) return;
    g_signal_handlers_disconnect_by_data(monitor, this);
    g_file_monitor_cancel(monitor);
    g_object_unref(monitor);
  }

  static void changed(GFileMonitor*, GFile*, GFile*, GFileMonitorEvent event, gpointer data) {
    requireMainThread("SystemDeadlineRecheckNotifier's zone watch");
    // Setting the zone replaces the link, or rewrites the file and then says
    // it is done; the writes before that are not yet the new zone.
    switch (event) {
      case G_FILE_MONITOR_EVENT_CREATED:
      case G_FILE_MONITOR_EVENT_DELETED:
      case G_FILE_MONITOR_EVENT_MOVED_IN:
      case G_FILE_MONITOR_EVENT_MOVED_OUT:
      case G_FILE_MONITOR_EVENT_RENAMED:
      case G_FILE_MONITOR_EVENT_CHANGES_DONE_HINT: break;
      default: return;
    }
    // ICU keeps the zone it first read; the handler must see the new one.
    icu::TimeZone::adoptDefault(icu::TimeZone::detectHostTimeZone());
    // A copy: the handler may observe anew and replace itself.
    if (const auto handler = static_cast<ZoneWatch*>(data)->handler) handler();
  }
};

SystemDeadlineRecheckNotifier::SystemDeadlineRecheckNotifier(const std::string& zoneFile)
    : zone_(std::make_unique<ZoneWatch>()) {
  requireMainThread("SystemDeadlineRecheckNotifier");
  GFile* file = g_file_new_for_path(zoneFile.c_str());
  GError* error = nullptr;
  // Without following the link: the link itself is what setting the zone replaces.
  zone_->monitor = g_file_monitor_file(file, G_FILE_MONITOR_WATCH_MOVES, nullptr, &error);
  g_object_unref(file);
  if (!zone_->monitor) {
    const int code = error ? error->code : 0;
    if (error) g_error_free(error);
    throw std::system_error(code, std::generic_category(), "The time-zone file could not be watched");
  }
  g_signal_connect(zone_->monitor, "changed", G_CALLBACK(ZoneWatch::changed), zone_.get());
}

SystemDeadlineRecheckNotifier::~SystemDeadlineRecheckNotifier() = default;

void SystemDeadlineRecheckNotifier::observe(std::function<void()> handler) {
  requireMainThread("SystemDeadlineRecheckNotifier::observe");
  zone_->handler = handler;
  clock_.observe(std::move(handler));
}

}  // namespace wakeloft
