#include "clock/MainRunLoop.h"

#include <glib.h>

#include "base/MainThread.h"
#include "clock/BackgroundQueue.h"

namespace wakeloft::MainRunLoop {

namespace {

gboolean runWork(gpointer data) {
  requireMainThread("MainRunLoop work");
  (*static_cast<std::function<void()>*>(data))();
  return G_SOURCE_REMOVE;
}

void dropWork(gpointer data) { delete static_cast<std::function<void()>*>(data); }

}  // namespace

void perform(std::function<void()> work) {
  // Attaching to the default context wakes it, and a source attached now is
  // dispatched no earlier than the loop's next iteration, so work never runs
  // inside this call. Equal priorities keep the order of posting.
  GSource* source = g_idle_source_new();
  g_source_set_priority(source, G_PRIORITY_DEFAULT);
  g_source_set_callback(source, runWork, new std::function<void()>(std::move(work)), dropWork);
  g_source_attach(source, nullptr);
  g_source_unref(source);
}

void performAfter(double seconds, std::function<void()> work) {
  BackgroundQueue::runAfter(seconds, [work = std::move(work)]() mutable { perform(std::move(work)); });
}

}  // namespace wakeloft::MainRunLoop
