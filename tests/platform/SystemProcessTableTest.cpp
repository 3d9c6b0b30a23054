#include <gtest/gtest.h>

#include <cstdlib>

#include "support/SystemProcesses.h"

namespace wakeloft {
namespace {

// As `wakeloft run -- sudo make` binds to a process of root's.
TEST(SystemProcessTableTest, FindsAnotherUsersProcessWithItsNameAndStartTime) {
  if (std::system("sudo -n true >/dev/null 2>&1") != 0) GTEST_SKIP() << "no password-less sudo here";
  // Not ours to kill: it is reaped when its sleep ends.
  testing::TestChild root({"sudo", "-n", "sleep", "5"});
  ASSERT_GT(root.pid, 0);
  const auto found = testing::SystemProcessTable().find(root.pid);
  ASSERT_TRUE(found.has_value());
  EXPECT_EQ(found->name, "sudo");
  EXPECT_GT(found->identity.startTime, 0u);
}

}  // namespace
}  // namespace wakeloft
