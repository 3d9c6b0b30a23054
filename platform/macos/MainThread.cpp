#include "base/MainThread.h"

#include <pthread.h>

namespace wakeloft {

// 1 on the process's initial thread, 0 elsewhere, -1 before threads exist.
bool isMainThread() { return pthread_main_np() == 1; }

}  // namespace wakeloft
