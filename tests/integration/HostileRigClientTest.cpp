// The real helper against a client of the allowed user that means harm: it
// must go on serving the others, and no lease may outlive its holder.

#include <gtest/gtest.h>

#include <fstream>

#include "RigProcess.h"
#include "rig/RigWire.h"

namespace wakeloft {
namespace {

using namespace std::chrono_literals;
using testing::inSeconds;
using testing::RigClient;
using testing::RigProcess;

std::size_t occurrences(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

TEST(HostileRigClientTest, ABurstPastTheOpenFileLimitLeavesTheHelperServing) {
  RigProcess rig(std::nullopt, {.openFileLimit = 64});
  ASSERT_TRUE(rig.waitForSocket()) << rig.log();
  std::ofstream(rig.lidPath) << "closed\n";
  RigClient holder(rig.socketPath);
  ASSERT_EQ(holder.ask(RigWire::renewLine(inSeconds(20))), "");

  // Stopped, the helper accepts nothing: the whole burst waits in its backlog.
  kill(rig.pid, SIGSTOP);
  std::vector<std::unique_ptr<RigClient>> burst;
  for (int i = 0; i < 70; ++i) burst.push_back(std::make_unique<RigClient>(rig.socketPath, true));
  kill(rig.pid, SIGCONT);
  for (const auto& connection : burst) EXPECT_TRUE(connection->connected());

  // Those past the limit are closed at once, said once.
  const std::string full = "connections are open, as many as this helper serves";
  ASSERT_TRUE(rig.waitUntil([&] { return rig.logSays(full); })) << rig.log();
  EXPECT_EQ(holder.ask(RigWire::renewLine(inSeconds(25))), "") << rig.log();
  EXPECT_EQ(occurrences(rig.log(), full), 1u) << rig.log();

  // Its lease ends with it, and the helper still has the descriptors to look at the lid.
  holder.close();  // as when its process is killed
  EXPECT_TRUE(rig.waitUntil([&] { return !rig.leaseFileExists(); }, 2s)) << rig.log();
  EXPECT_TRUE(rig.waitUntil([&] { return rig.logSays("asked the system to sleep"); }))
      << rig.log();

  burst.clear();
  RigClient late(rig.socketPath);
  EXPECT_EQ(late.ask(RigWire::renewLine(inSeconds(20))), "") << rig.log();
  EXPECT_TRUE(rig.leaseFileExists());
}

TEST(HostileRigClientTest, OutOfDescriptorsAllTheSameItWaitsForOneInsteadOfSpinning) {
  RigProcess rig;
  ASSERT_TRUE(rig.waitForSocket()) << rig.log();
  RigClient holder(rig.socketPath);
  ASSERT_EQ(holder.ask(RigWire::renewLine(inSeconds(20))), "");
  // A limit lowered behind its back: connections now run it out of descriptors.
  const rlimit low{32, 32};
  ASSERT_EQ(prlimit(rig.pid, RLIMIT_NOFILE, &low, nullptr), 0) << std::strerror(errno);
  std::vector<std::unique_ptr<RigClient>> burst;
  for (int i = 0; i < 40; ++i) burst.push_back(std::make_unique<RigClient>(rig.socketPath, true));

  const std::string refused = "connections not accepted for now: Error accepting connection: Too many open files";
  ASSERT_TRUE(rig.waitUntil([&] { return rig.logSays(refused); })) << rig.log();
  EXPECT_EQ(holder.ask(RigWire::renewLine(inSeconds(25))), "") << rig.log();
  EXPECT_EQ(occurrences(rig.log(), refused), 1u) << rig.log();

  burst.clear();
  RigClient late(rig.socketPath);
  EXPECT_EQ(late.ask(std::string(RigWire::revokeLine)), "") << rig.log();
  holder.close();
  EXPECT_TRUE(rig.waitUntil([&] { return !rig.leaseFileExists(); }, 2s)) << rig.log();
}

TEST(HostileRigClientTest, AClientThatNeverReadsIsHeldBackWhileOthersAreServed) {
  RigProcess rig;
  ASSERT_TRUE(rig.waitForSocket()) << rig.log();
  RigClient flooder(rig.socketPath, true);
  const std::string renewal = RigWire::renewLine(inSeconds(20));
  ASSERT_EQ(::send(flooder.fd(), renewal.data(), renewal.size(), MSG_NOSIGNAL), static_cast<ssize_t>(renewal.size()));
  ASSERT_TRUE(rig.waitUntil([&] { return rig.leaseFileExists(); }));

  // Requests whose replies it never reads, until the helper stops taking them.
  std::string requests;
  for (int i = 0; i < 1000; ++i) requests += "renew nan\n";
  std::size_t pushed = 0;
  bool heldBack = false;
  const auto end = std::chrono::steady_clock::now() + 5s;
  while (!heldBack && pushed < (64u << 20) && std::chrono::steady_clock::now() < end) {
    const std::size_t at = pushed % requests.size();  // lines stay whole across partial sends
    const ssize_t sent = ::send(flooder.fd(), requests.data() + at, requests.size() - at, MSG_NOSIGNAL);
    if (sent > 0) {
      pushed += static_cast<std::size_t>(sent);
    } else {
      ASSERT_EQ(errno, EAGAIN) << std::strerror(errno);
      pollfd writable{flooder.fd(), POLLOUT, 0};
      heldBack = poll(&writable, 1, 500) == 0;
    }
  }
  EXPECT_TRUE(heldBack) << pushed << " bytes taken";
  EXPECT_LT(pushed, 4u << 20);

  RigClient other(rig.socketPath);
  EXPECT_EQ(other.ask(RigWire::renewLine(inSeconds(20))), "");
  EXPECT_EQ(other.ask(std::string(RigWire::revokeLine)), "");
  EXPECT_TRUE(rig.leaseFileExists());  // the flooder's own lease stands

  // Not read from, its end still shows: its lease ends with it.
  flooder.close();
  EXPECT_TRUE(rig.waitUntil([&] { return !rig.leaseFileExists(); }, 2s)) << rig.log();
}

}  // namespace
}  // namespace wakeloft
