#pragma once

#include <glib.h>

#include <functional>

namespace wakeloft::testing {

// Runs the real main loop (GLib's default context) on the calling thread
// until `done` answers true or `seconds` have passed; returns `done()`. A
// timeout source bounds the wait, so the loop blocks instead of spinning.
inline bool pumpMainLoopUntil(const std::function<bool()>& done, double seconds) {
  bool timedOut = false;
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

// Runs the main loop for `seconds`, whatever happens meanwhile.
inline void pumpMainLoopFor(double seconds) {
  pumpMainLoopUntil([] { return false; }, seconds);
}

// Runs everything the main loop has ready now, without waiting for more.
inline void drainMainLoop() {
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}

}  // namespace wakeloft::testing
