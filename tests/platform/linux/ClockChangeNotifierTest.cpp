#include "clock/ClockChangeNotifier.h"

#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>

#include "support/MainLoopPump.h"

// From <linux/timerfd.h>, whose other names clash with <sys/timerfd.h>.
#ifndef TFD_IOC_SET_TICKS
#define TFD_IOC_SET_TICKS _IOW('T', 0, std::uint64_t)
#endif

namespace wakeloft {
namespace {

using testing::pumpMainLoopFor;
using testing::pumpMainLoopUntil;

std::set<int> openTimers() {
  std::set<int> timers;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code ignored;
    if (std::filesystem::read_symlink(entry.path(), ignored).string() == "anon_inode:[timerfd]") {
      timers.insert(std::stoi(entry.path().filename().string()));
    }
  }
  return timers;
}

// The real clock is not the test's to set, so its timer is made to run out
// instead.
TEST(ClockChangeNotifierTest, ArmedItWakesOnlyWhenItsTimerDoesAndIsClosedWithIt) {
  const auto before = openTimers();
  int calls = 0;
  {
    ClockChangeNotifier notifier;
    notifier.observe([&] { ++calls; });
    const auto after = openTimers();
    ASSERT_EQ(after.size(), before.size() + 1);
    int fd = -1;
    for (const int timer : after) {
      if (!before.contains(timer)) fd = timer;
    }
    itimerspec armed{};
    ASSERT_EQ(timerfd_gettime(fd, &armed), 0);
    EXPECT_GT(armed.it_value.tv_sec, 100LL * 365 * 24 * 3600);  // armed, and never to run out
    pumpMainLoopFor(0.05);
    EXPECT_EQ(calls, 0);

    // Makes the timer readable as if it had run out, without touching the clock.
    std::uint64_t ticks = 1;
    if (ioctl(fd, TFD_IOC_SET_TICKS, &ticks) != 0) GTEST_SKIP() << "this kernel cannot set a timer's ticks";
    EXPECT_TRUE(pumpMainLoopUntil([&] { return calls == 1; }, 1));
    ASSERT_EQ(ioctl(fd, TFD_IOC_SET_TICKS, &ticks), 0);
    EXPECT_TRUE(pumpMainLoopUntil([&] { return calls == 2; }, 1));
  }
  EXPECT_EQ(openTimers(), before);
  pumpMainLoopFor(0.02);
  EXPECT_EQ(calls, 2);
}

}  // namespace
}  // namespace wakeloft
