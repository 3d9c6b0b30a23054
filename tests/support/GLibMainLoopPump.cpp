#include <glib.h>

#include "support/MainLoopPump.h"

namespace wakeloft::testing {

bool pumpMainLoopUntil(const std::function<bool()>& done, double seconds) {
  bool timedOut = false;
  // A timeout source bounds the wait, so the loop blocks instead of spinning.
  GSource* limit = g_timeout_source_new(static_cast<guint>(seconds * 1000));
  g_source_set_callback(
      limit,
      [](gpointer flag) {
        *static_cast<bool*>(flag) = true;
        return G_SOURCE_REMOVE;
      },
      &timedOut, nullptr);
  g_source_attach(limit, nullptr);
  while (!done() && !timedOut) g_main_context_iteration(nullptr, TRUE);
  g_source_destroy(limit);
  g_source_unref(limit);
  return done();
}

void pumpMainLoopFor(double seconds) {
  pumpMainLoopUntil([] { return false; }, seconds);
}

void drainMainLoop() {
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}

}  // namespace wakeloft::testing
