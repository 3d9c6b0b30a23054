// The real helper against a client of the allowed user that means harm: it
// must go on serving the others, and no lease may outlive its holder.

#include <gtest/gtest.h>

#include "RigProcess.h"
#include "clock/SystemDateProvider.h"
#include "rig/RigWire.h"

namespace wakeloft {
namespace {

using namespace std::chrono_literals;
using testing::RigClient;
using testing::RigProcess;

double inSeconds(double seconds) { return SystemDateProvider().now().adding(seconds).secondsSince1970; }

std::size_t occurrences(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

// A connection made without waiting: fails at once, instead of blocking, when
// the helper's backlog is full.
struct QuickConnection {
  explicit QuickConnection(const std::string& path) {
    fd = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    connected = connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
  }
  ~QuickConnection() { ::close(fd); }
  QuickConnection(const QuickConnection&) = delete;
  QuickConnection& operator=(const QuickConnection&) = delete;
  int fd = -1;
  bool connected = false;
};

TEST(HostileRigClientTest, ABurstPastTheOpenFileLimitLeavesTheHelperServing) {
  RigProcess rig(std::nullopt, /*openFileLimit=*/64);
  ASSERT_TRUE(rig.waitForSocket()) << rig.log();
  RigClient holder(rig.socketPath);
  ASSERT_EQ(holder.ask(RigWire::renewLine(inSeconds(20))), "");

  // Stopped, the helper accepts nothing: the whole burst waits in its backlog.
  kill(rig.pid, SIGSTOP);
  std::vector<std::unique_ptr<QuickConnection>> burst;
  for (int i = 0; i < 70; ++i) burst.push_back(std::make_unique<QuickConnection>(rig.socketPath));
  kill(rig.pid, SIGCONT);
  for (const auto& connection : burst) EXPECT_TRUE(connection->connected);

  const std::string refused = "connections not accepted for now: Error accepting connection: Too many open files";
  ASSERT_TRUE(rig.waitUntil([&] { return rig.log().find(refused) != std::string::npos; })) << rig.log();
  EXPECT_EQ(holder.ask(RigWire::renewLine(inSeconds(25))), "") << rig.log();
  // It waits for a descriptor to come free instead of trying again and again.
  EXPECT_EQ(occurrences(rig.log(), refused), 1u) << rig.log();

  holder.close();  // as when its process is killed
  EXPECT_TRUE(rig.waitUntil([&] { return !rig.leaseFileExists(); }, 2s)) << rig.log();

  burst.clear();
  RigClient late(rig.socketPath);
  EXPECT_EQ(late.ask(RigWire::renewLine(inSeconds(20))), "") << rig.log();
  EXPECT_TRUE(rig.leaseFileExists());
}

}  // namespace
}  // namespace wakeloft
