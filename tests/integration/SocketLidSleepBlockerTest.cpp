#include "SocketLidSleepBlocker.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <cmath>
#include <limits>
#include <memory>

#include "RigLidHelperRegistration.h"
#include "RigProcess.h"
#include "clock/SystemDateProvider.h"
#include "helper/RigLeaseFile.h"
#include "lid/LidSleepBlockerError.h"
#include "support/CompletionLog.h"
#include "support/MainLoopPump.h"

namespace wakeloft {
namespace {

using namespace std::chrono_literals;
using testing::CompletionLog;
using testing::failure;
using testing::Received;
using testing::RigProcess;
using testing::success;

const Received unavailable = failure(LidSleepBlockerError::helperUnavailable());
const Received notANumber = failure(LidSleepBlockerError::helperRefused("The lease deadline is not a number."));

constexpr double shortReplyTimeout = 0.5;

class SocketLidSleepBlockerTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(rig.waitForSocket()) << rig.log(); }

  // The completion's answer, once it has come.
  Received renew(Date until) { return answered([&](auto done) { blocker->renew(until, std::move(done)); }); }
  Received revoke() { return answered([&](auto done) { blocker->revoke(std::move(done)); }); }
  Received answered(const std::function<void(LidSleepBlocker::Completion)>& ask) {
    const auto before = answers.entries.size();
    ask(answers.record("call"));
    EXPECT_TRUE(testing::pumpMainLoopUntil([&] { return answers.entries.size() > before; }, 5));
    return answers.last();
  }

  static Date inSeconds(double seconds) { return SystemDateProvider().now().adding(seconds); }
  std::optional<Date> leaseEnd() const { return RigLeaseFile::read(rig.leasePath); }

  void restartRig() {
    rig.start({WAKELOFT_LID_HELPER_PATH, "--rig", "--socket", rig.socketPath, "--rig-file", rig.leasePath,
               "--lid-file", rig.lidPath});
    ASSERT_TRUE(rig.waitUntil([&] {
      const auto log = rig.log();
      return log.find("helper starting") != log.rfind("helper starting");  // the second start line
    })) << rig.log();
  }

  RigProcess rig;
  CompletionLog answers;
  std::unique_ptr<SocketLidSleepBlocker> blocker = std::make_unique<SocketLidSleepBlocker>(
      std::make_shared<RigLidHelperRegistration>(), rig.socketPath, getuid(), shortReplyTimeout);
};

TEST_F(SocketLidSleepBlockerTest, GrantedRenewalIsInTheRigFileRevokeTakesItOutAndARefusalComesBackAsItsReason) {
  EXPECT_NO_THROW(blocker->prepare());
  const Date deadline = inSeconds(20);
  EXPECT_EQ(renew(deadline), success());
  EXPECT_EQ(leaseEnd(), deadline);
  EXPECT_EQ(revoke(), success());
  EXPECT_FALSE(rig.leaseFileExists());
  EXPECT_EQ(renew(Date::fromSecondsSince1970(std::numeric_limits<double>::infinity())), notANumber);

  // A rig of another user is not answered.
  blocker = std::make_unique<SocketLidSleepBlocker>(std::make_shared<RigLidHelperRegistration>(), rig.socketPath,
                                                    getuid() + 1, shortReplyTimeout);
  EXPECT_EQ(renew(inSeconds(20)), unavailable);
  EXPECT_FALSE(rig.leaseFileExists());
}

TEST_F(SocketLidSleepBlockerTest, AKilledHelperIsUnavailableARestartedOneServesTheNextRenewalAndAnAnswerAfterTheTimeLimitIsIgnored) {
  EXPECT_EQ(renew(inSeconds(20)), success());
  EXPECT_EQ(revoke(), success());
  kill(rig.pid, SIGKILL);
  ASSERT_TRUE(rig.waitForExit(5s).has_value());

  // On the connection that was answering, and again with no helper at all.
  EXPECT_EQ(renew(inSeconds(20)), unavailable);
  EXPECT_EQ(renew(inSeconds(20)), unavailable);

  restartRig();
  const Date deadline = inSeconds(20);
  EXPECT_EQ(renew(deadline), success());
  EXPECT_EQ(leaseEnd(), deadline);

  kill(rig.pid, SIGSTOP);
  const auto late = renew(inSeconds(25));
  kill(rig.pid, SIGCONT);
  EXPECT_EQ(late, unavailable);
  EXPECT_TRUE(blocker->isResetUnconfirmed());

  // The late grant arrives now and changes nothing here; the refusal that
  // follows on the same connection is paired with its own request.
  testing::pumpMainLoopFor(0.2);
  EXPECT_FALSE(blocker->isEngaged());
  EXPECT_EQ(renew(Date::fromSecondsSince1970(std::nan(""))), notANumber);
  EXPECT_EQ(revoke(), success());
  EXPECT_FALSE(blocker->isResetUnconfirmed());
  EXPECT_FALSE(rig.leaseFileExists());
}

}  // namespace
}  // namespace wakeloft
