#include <gtest/gtest.h>
#include <sys/stat.h>

#include "RigProcess.h"
#include "helper/RigLeaseFile.h"
#include "rig/RigWire.h"

namespace wakeloft {
namespace {

using namespace std::chrono_literals;
using testing::inSeconds;
using testing::RigClient;
using testing::RigProcess;

std::string revoke() { return std::string(RigWire::revokeLine); }

class LeaseRigTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(rig.waitForSocket()) << rig.log(); }
  bool leaseEndsSoon() { return rig.waitUntil([&] { return !rig.leaseFileExists(); }, 2s); }

  RigProcess rig;
};

TEST_F(LeaseRigTest, ALapsedLeaseEndsWithoutAnyRequest) {
  RigClient client(rig.socketPath);
  EXPECT_EQ(client.ask(RigWire::renewLine(inSeconds(0.5))), "");
  EXPECT_TRUE(rig.leaseFileExists());
  EXPECT_TRUE(leaseEndsSoon());
}

TEST_F(LeaseRigTest, SigtermPutsTheSettingBackBeforeTheHelperExits) {
  RigClient client(rig.socketPath);
  EXPECT_EQ(client.ask(RigWire::renewLine(inSeconds(20))), "");
  kill(rig.pid, SIGTERM);
  EXPECT_EQ(rig.waitForExit(5s), 0);
  EXPECT_FALSE(rig.leaseFileExists());
}

TEST_F(LeaseRigTest, AForeignLineClosesOnlyItsSendersConnectionAndEndsOnlyItsTerm) {
  RigClient good(rig.socketPath), bad(rig.socketPath);
  EXPECT_EQ(good.ask(RigWire::renewLine(inSeconds(20))), "");
  EXPECT_EQ(bad.ask(RigWire::renewLine(inSeconds(25))), "");
  bad.send("hello\n");
  EXPECT_TRUE(bad.closedByPeer());
  EXPECT_TRUE(rig.waitUntil([&] {
    const auto end = RigLeaseFile::read(rig.leasePath);
    return end && end->secondsSince1970 < inSeconds(21);
  }, 2s));
  EXPECT_NE(rig.log().find("closed: it sent an unknown request"), std::string::npos) << rig.log();
  EXPECT_EQ(good.ask(RigWire::renewLine(inSeconds(20))), "");
}

TEST(LeaseRigStartTest, BadArgumentsGetTheUsageAndStatus2) {
  RigProcess rig(std::vector<std::string>{"--rig", "--socket", "/tmp/x.sock", "--allow-uid", "nobody"});
  EXPECT_EQ(rig.waitForExit(5s), 2);
  EXPECT_NE(rig.log().find("usage: WakeloftLidHelper --rig --socket PATH"), std::string::npos) << rig.log();
}

TEST(LeaseRigStartTest, AnUnusableSocketPathGetsAClearErrorAndStatus1) {
  const std::pair<const char*, const char*> cases[] = {
      {"/nonexistent-folder/rig.sock", "cannot serve on /nonexistent-folder/rig.sock"},
      {"/etc/hostname", "a file that is not a socket is in the way"},
  };
  for (const auto& [path, error] : cases) {
    RigProcess rig(std::vector<std::string>{"--rig", "--socket", path});
    EXPECT_EQ(rig.waitForExit(5s), 1) << path;
    EXPECT_NE(rig.log().find(error), std::string::npos) << rig.log();
  }
}

TEST(LeaseRigStartTest, ASecondHelperLeavesALiveOneItsSocketAndItsLeaseAlone) {
  RigProcess first;
  ASSERT_TRUE(first.waitForSocket()) << first.log();
  RigClient client(first.socketPath);
  ASSERT_EQ(client.ask(RigWire::renewLine(inSeconds(20))), "");
  const auto lease = RigLeaseFile::read(first.leasePath);
  struct stat before {};
  ASSERT_EQ(stat(first.socketPath.c_str(), &before), 0);

  RigProcess second(std::vector<std::string>{"--rig", "--socket", first.socketPath, "--rig-file", first.leasePath});
  EXPECT_EQ(second.waitForExit(5s), 1);
  EXPECT_NE(second.log().find("another helper is answering there; it was left alone"), std::string::npos)
      << second.log();
  struct stat after {};
  ASSERT_EQ(stat(first.socketPath.c_str(), &after), 0);
  EXPECT_EQ(after.st_ino, before.st_ino);
  EXPECT_EQ(RigLeaseFile::read(first.leasePath), lease);
  EXPECT_EQ(RigClient(first.socketPath).ask(revoke()), "");
}

TEST(LeaseRigStartTest, ANewHelperReplacesADeadOnesSocketAndCleansItsLease) {
  RigProcess dead;
  ASSERT_TRUE(dead.waitForSocket());
  RigClient holder(dead.socketPath);
  ASSERT_EQ(holder.ask(RigWire::renewLine(inSeconds(20))), "");
  kill(dead.pid, SIGKILL);  // leaves its socket and its lease behind
  dead.waitForExit(5s);

  RigProcess replacement(std::vector<std::string>{"--rig", "--socket", dead.socketPath, "--rig-file", dead.leasePath});
  ASSERT_TRUE(replacement.waitUntil([&] { return replacement.log().find("helper starting") != std::string::npos; }));
  EXPECT_FALSE(dead.leaseFileExists());
  EXPECT_EQ(RigClient(dead.socketPath).ask(revoke()), "");
}

TEST(LeaseRigStartTest, AHelperRunningAsRootServesTheUserItAllows) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can serve another user";
  constexpr uid_t nobody = 65534;
  RigProcess rig(std::nullopt, {.moreArguments = {"--allow-uid", std::to_string(nobody)}});
  ASSERT_TRUE(rig.waitForSocket()) << rig.log();
  std::filesystem::permissions(rig.folder, std::filesystem::perms::others_exec, std::filesystem::perm_options::add);

  // That user's client, in a process of its own.
  const std::string request = RigWire::renewLine(inSeconds(20));
  const pid_t child = fork();
  if (child == 0) {
    if (setgid(nobody) != 0 || setuid(nobody) != 0) _exit(2);
    RigClient client(rig.socketPath);
    _exit(client.ask(request) == "" ? 0 : 5);  // an empty line: granted
  }
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(WEXITSTATUS(status), 0) << rig.log();
}

}  // namespace
}  // namespace wakeloft
