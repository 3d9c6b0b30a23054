#pragma once

#include <cstdio>

namespace wakeloft::fuzz {

// A broken invariant is a finding like a crash: say which one, then stop so
// that libFuzzer keeps the input that broke it.
inline void require(bool holds, const char* invariant) {
  if (holds) return;
  std::fprintf(stderr, "invariant broken: %s\n", invariant);
  __builtin_trap();
}

}  // namespace wakeloft::fuzz
