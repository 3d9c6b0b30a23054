#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

#include "RigProcess.h"
#include "clock/SystemDateProvider.h"
#include "helper/RigLeaseFile.h"
#include "lease/LidLeaseStatus.h"
#include "rig/RigWire.h"

namespace wakeloft {
namespace {

using namespace std::chrono_literals;
using testing::RigClient;
using testing::RigProcess;

constexpr const char* turnedOff =
    "The sleep setting was turned off by something other than Wakeloft, and was left off.";
constexpr const char* alreadyOn =
    "The sleep setting is already on, set by something other than Wakeloft, and was left as it is.";

double inSeconds(double seconds) { return SystemDateProvider().now().adding(seconds).secondsSince1970; }

class LeaseRigTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(rig.waitForSocket()) << rig.log(); }

  std::optional<Date> leaseEnd() const { return RigLeaseFile::read(rig.leasePath); }

  RigProcess rig;
};

TEST_F(LeaseRigTest, AGrantedLeaseCutToThirtySecondsIsHeldInTheRigFileUntilRevoked) {
  RigClient client(rig.socketPath);
  ASSERT_TRUE(client.connected());
  const double deadline = inSeconds(20);
  EXPECT_EQ(client.ask(RigWire::renewLine(deadline)), "");
  EXPECT_EQ(leaseEnd(), Date{deadline});

  // A renewal further out than a lease may reach is cut to 30 s from now.
  const double tooFar = inSeconds(3600);
  EXPECT_EQ(client.ask(RigWire::renewLine(tooFar)), "");
  ASSERT_TRUE(leaseEnd().has_value());
  EXPECT_LE(leaseEnd()->secondsSince1970, inSeconds(30));
  EXPECT_GT(leaseEnd()->secondsSince1970, inSeconds(25));

  EXPECT_EQ(client.ask(std::string(RigWire::revokeLine)), "");
  EXPECT_FALSE(rig.leaseFileExists());
}

TEST_F(LeaseRigTest, AStatusRequestNeverCreatesOrExtendsALease) {
  RigClient asker(rig.socketPath), holder(rig.socketPath);
  const auto status = [](RigClient& client) { return LidLeaseStatus::read(client.ask(std::string(RigWire::statusLine)).value_or("")); };
  EXPECT_EQ(status(asker), (LidLeaseStatus{LidLeaseStatus::Setting::off, "", std::nullopt}));
  EXPECT_FALSE(rig.leaseFileExists());

  const double deadline = inSeconds(1);
  ASSERT_EQ(holder.ask(RigWire::renewLine(deadline)), "");
  const auto held = status(holder);
  ASSERT_TRUE(held && held->leaseRemaining) << rig.log();
  EXPECT_EQ(held->setting, LidLeaseStatus::Setting::on);
  EXPECT_LE(*held->leaseRemaining, 1.0);
  // Asked over and over by both, the lease still ends on its own term.
  EXPECT_TRUE(rig.waitUntil([&] {
    status(asker);
    status(holder);
    return !rig.leaseFileExists();
  }, 3s));
  EXPECT_EQ(status(asker), (LidLeaseStatus{LidLeaseStatus::Setting::off, "", std::nullopt}));
}

TEST_F(LeaseRigTest, ALeaseEndsWithItsClientOrItsTermAsksForSleepWithTheLidShutAndSigtermPutsTheSettingBack) {
  RigClient stays(rig.socketPath);
  {
    RigClient vanishes(rig.socketPath);
    EXPECT_EQ(vanishes.ask(RigWire::renewLine(inSeconds(20))), "");
    EXPECT_TRUE(rig.leaseFileExists());
  }
  EXPECT_TRUE(rig.waitUntil([&] { return !rig.leaseFileExists(); }, 2s));
  EXPECT_EQ(stays.ask(std::string(RigWire::revokeLine)), "");  // still served

  // A lapsed lease ends without any request.
  EXPECT_EQ(stays.ask(RigWire::renewLine(inSeconds(0.5))), "");
  EXPECT_TRUE(rig.leaseFileExists());
  EXPECT_TRUE(rig.waitUntil([&] { return !rig.leaseFileExists(); }, 2s));

  RigClient client(rig.socketPath);
  std::ofstream(rig.lidPath) << "closed\n";
  EXPECT_EQ(client.ask(RigWire::renewLine(inSeconds(20))), "");
  EXPECT_EQ(rig.log().find("asked the system to sleep"), std::string::npos);
  EXPECT_EQ(client.ask(std::string(RigWire::revokeLine)), "");
  EXPECT_NE(rig.log().find("asked the system to sleep"), std::string::npos) << rig.log();

  EXPECT_EQ(client.ask(RigWire::renewLine(inSeconds(20))), "");
  kill(rig.pid, SIGTERM);
  EXPECT_EQ(rig.waitForExit(5s), 0);
  EXPECT_FALSE(rig.leaseFileExists());
}

TEST_F(LeaseRigTest, RefusalsComeBackAsTheirReasonTextAForeignLineClosesTheConnectionAndARemovedFileEndsTheLease) {
  RigClient client(rig.socketPath);
  // The file made behind the helper's back is the setting on elsewhere.
  RigLeaseFile::write(Date{inSeconds(100)}, rig.leasePath);
  EXPECT_EQ(client.ask(RigWire::renewLine(inSeconds(20))), alreadyOn);
  EXPECT_TRUE(rig.leaseFileExists());  // left as it is
  std::filesystem::remove(rig.leasePath);

  RigClient good(rig.socketPath), bad(rig.socketPath);
  EXPECT_EQ(good.ask(RigWire::renewLine(inSeconds(20))), "");
  EXPECT_EQ(bad.ask(RigWire::renewLine(inSeconds(25))), "");
  bad.send("hello\n");
  EXPECT_TRUE(bad.closedByPeer());
  // Its disconnect ended its term; the other client's lease stands.
  EXPECT_TRUE(rig.waitUntil([&] { return leaseEnd() && leaseEnd()->secondsSince1970 < inSeconds(21); }, 2s));
  EXPECT_NE(rig.log().find("closed: it sent an unknown request"), std::string::npos) << rig.log();

  std::filesystem::remove(rig.leasePath);
  EXPECT_EQ(good.ask(RigWire::renewLine(inSeconds(20))), turnedOff);
  EXPECT_FALSE(rig.leaseFileExists());
}

TEST(LeaseRigStartTest, BadArgumentsGetTheUsageAndStatus2AndAnUnusableSocketPathAClearErrorAndStatus1) {
  RigProcess rig(std::vector<std::string>{"--rig", "--socket", "/tmp/x.sock", "--allow-uid", "nobody"});
  EXPECT_EQ(rig.waitForExit(5s), 2);
  EXPECT_NE(rig.log().find("--allow-uid needs a user id"), std::string::npos) << rig.log();
  EXPECT_NE(rig.log().find("usage: WakeloftLidHelper --rig --socket PATH"), std::string::npos) << rig.log();

  RigProcess missingFolder(std::vector<std::string>{"--rig", "--socket", "/nonexistent-folder/rig.sock"});
  EXPECT_EQ(missingFolder.waitForExit(5s), 1);
  EXPECT_NE(missingFolder.log().find("cannot serve on /nonexistent-folder/rig.sock"), std::string::npos)
      << missingFolder.log();

  RigProcess fileInTheWay(std::vector<std::string>{"--rig", "--socket", "/etc/hostname"});
  EXPECT_EQ(fileInTheWay.waitForExit(5s), 1);
  EXPECT_NE(fileInTheWay.log().find("a file that is not a socket is in the way"), std::string::npos)
      << fileInTheWay.log();
}

TEST(LeaseRigStartTest, ASecondHelperLeavesALiveOneAndItsLeaseAloneButReplacesADeadOnesSocketAndCleansItsLease) {
  RigProcess first;
  ASSERT_TRUE(first.waitForSocket()) << first.log();
  RigClient client(first.socketPath);
  ASSERT_EQ(client.ask(RigWire::renewLine(inSeconds(20))), "");
  const auto lease = RigLeaseFile::read(first.leasePath);
  struct stat before {};
  ASSERT_EQ(stat(first.socketPath.c_str(), &before), 0);

  RigProcess second(std::vector<std::string>{"--rig", "--socket", first.socketPath, "--rig-file", first.leasePath});
  EXPECT_EQ(second.waitForExit(5s), 1);
  EXPECT_NE(second.log().find("WakeloftLidHelper: cannot serve on " + first.socketPath.string() +
                              ": another helper is answering there; it was left alone"),
            std::string::npos)
      << second.log();
  struct stat after {};
  ASSERT_EQ(stat(first.socketPath.c_str(), &after), 0);
  EXPECT_EQ(after.st_ino, before.st_ino);
  EXPECT_EQ(RigLeaseFile::read(first.leasePath), lease);
  EXPECT_EQ(client.ask(RigWire::renewLine(inSeconds(20))), "");
  RigClient another(first.socketPath);
  EXPECT_EQ(another.ask(std::string(RigWire::revokeLine)), "");

  // A dead helper's socket is replaced and its lease cleaned.
  RigProcess dead;
  ASSERT_TRUE(dead.waitForSocket());
  RigClient holder(dead.socketPath);
  ASSERT_EQ(holder.ask(RigWire::renewLine(inSeconds(20))), "");
  kill(dead.pid, SIGKILL);  // leaves its socket and its lease behind
  dead.waitForExit(5s);
  ASSERT_TRUE(dead.leaseFileExists());

  RigProcess replacement(std::vector<std::string>{"--rig", "--socket", dead.socketPath, "--rig-file", dead.leasePath});
  ASSERT_TRUE(replacement.waitUntil([&] { return replacement.log().find("helper starting") != std::string::npos; }));
  EXPECT_FALSE(dead.leaseFileExists());
  RigClient newcomer(dead.socketPath);
  EXPECT_EQ(newcomer.ask("revoke\n"), "");
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
