#pragma once

#include <glib.h>

#include <chrono>
#include <functional>

namespace wakeloft::testing {

// Turns GLib's default main context on the calling (main) thread until
// `done` holds or `limit` has passed; true when `done` held. Blocks while
// idle, so it does not spin.
inline bool turnMainLoopUntil(const std::function<bool()>& done, std::chrono::milliseconds limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  // A timeout source bounds each blocking iteration by the limit.
  GSource* guard = g_timeout_source_new(static_cast<guint>(limit.count()));
  g_source_set_callback(guard, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr, nullptr);
  g_source_attach(guard, nullptr);
  while (!done() && std::chrono::steady_clock::now() < end) g_main_context_iteration(nullptr, TRUE);
  g_source_destroy(guard);
  g_source_unref(guard);
  return done();
}

// Turns the main loop for `duration`, whatever happens.
inline void turnMainLoopFor(std::chrono::milliseconds duration) {
  turnMainLoopUntil([] { return false; }, duration);
}

}  // namespace wakeloft::testing
