#include "base/MainThread.h"

#include <unistd.h>

namespace wakeloft {

// The main thread is the one whose thread id is the process id.
bool isMainThread() { return gettid() == getpid(); }

}  // namespace wakeloft
