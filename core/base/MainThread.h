#pragma once

#include <cstdio>
#include <cstdlib>

namespace wakeloft {

// True on the process's main thread, the one that runs the main loop.
// Defined by the platform layer.
bool isMainThread();

// Main-thread confinement is a programming contract, not a runtime condition:
// breaking it stops the program with a message naming the operation.
inline void requireMainThread(const char* what) {
  if (isMainThread()) return;
  std::fprintf(stderr, "Wakeloft: %s must run on the main thread; it was called from another thread.\n", what);
  std::fflush(stderr);
  std::abort();
}

}  // namespace wakeloft
