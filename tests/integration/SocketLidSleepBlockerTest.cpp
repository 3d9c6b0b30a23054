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
#include "support/MainLoopPump.h"

namespace wakeloft {
namespace {

using namespace std::chrono_literals;
using testing::RigProcess;

constexpr double shortReplyTimeout = 0.5;

// The first completion a call receives, if any.
struct Answer {
  bool arrived = false;
  std::exception_ptr error;
  std::optional<LidSleepBlockerError::Kind> kind() const {
    if (!error) return std::nullopt;
    try {
      std::rethrow_exception(error);
    } catch (const LidSleepBlockerError& lid) {
      return lid.kind();
    } catch (...) {
    }
    return std::nullopt;
  }
};

class SocketLidSleepBlockerTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(rig.waitForSocket()) << rig.log(); }

  Answer renew(Date until) {
    auto answer = std::make_shared<Answer>();
    blocker->renew(until, [answer](std::exception_ptr error) {
      EXPECT_FALSE(answer->arrived) << "a second completion";
      *answer = Answer{true, error};
    });
    EXPECT_TRUE(testing::pumpMainLoopUntil([&] { return answer->arrived; }, 5));
    return *answer;
  }
  Answer revoke() {
    auto answer = std::make_shared<Answer>();
    blocker->revoke([answer](std::exception_ptr error) { *answer = Answer{true, error}; });
    EXPECT_TRUE(testing::pumpMainLoopUntil([&] { return answer->arrived; }, 5));
    return *answer;
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
  std::unique_ptr<SocketLidSleepBlocker> blocker = std::make_unique<SocketLidSleepBlocker>(
      std::make_shared<RigLidHelperRegistration>(), rig.socketPath, getuid(), shortReplyTimeout);
};

TEST_F(SocketLidSleepBlockerTest, GrantedRenewalIsInTheRigFileRevokeTakesItOutAndARefusalComesBackAsItsReason) {
  EXPECT_NO_THROW(blocker->prepare());
  const Date deadline = inSeconds(20);
  const auto granted = renew(deadline);
  EXPECT_TRUE(granted.arrived && !granted.error);
  EXPECT_TRUE(blocker->isEngaged());
  EXPECT_EQ(leaseEnd(), deadline);

  const auto revoked = revoke();
  EXPECT_TRUE(revoked.arrived && !revoked.error);
  EXPECT_FALSE(blocker->isEngaged());
  EXPECT_FALSE(rig.leaseFileExists());

  const auto refused = renew(Date::fromSecondsSince1970(std::numeric_limits<double>::infinity()));
  ASSERT_EQ(refused.kind(), LidSleepBlockerError::Kind::helperRefused);
  try {
    std::rethrow_exception(refused.error);
  } catch (const LidSleepBlockerError& error) {
    EXPECT_EQ(error.reason(), "The lease deadline is not a number.");
  }
  EXPECT_FALSE(rig.leaseFileExists());

  // A rig of another user is not answered.
  blocker = std::make_unique<SocketLidSleepBlocker>(std::make_shared<RigLidHelperRegistration>(), rig.socketPath,
                                                    getuid() + 1, shortReplyTimeout);
  EXPECT_EQ(renew(inSeconds(20)).kind(), LidSleepBlockerError::Kind::helperUnavailable);
  EXPECT_FALSE(rig.leaseFileExists());
}

TEST_F(SocketLidSleepBlockerTest, AKilledHelperIsUnavailableARestartedOneServesTheNextRenewalAndAnAnswerAfterTheTimeLimitIsIgnored) {
  EXPECT_FALSE(renew(inSeconds(20)).error);
  EXPECT_FALSE(revoke().error);
  kill(rig.pid, SIGKILL);
  ASSERT_TRUE(rig.waitForExit(5s).has_value());

  // On the connection that was answering, and again with no helper at all.
  EXPECT_EQ(renew(inSeconds(20)).kind(), LidSleepBlockerError::Kind::helperUnavailable);
  EXPECT_EQ(renew(inSeconds(20)).kind(), LidSleepBlockerError::Kind::helperUnavailable);
  EXPECT_FALSE(blocker->isEngaged());
  EXPECT_FALSE(blocker->isResetUnconfirmed());

  restartRig();
  const Date deadline = inSeconds(20);
  EXPECT_FALSE(renew(deadline).error);
  EXPECT_EQ(leaseEnd(), deadline);
  EXPECT_FALSE(revoke().error);

  EXPECT_FALSE(renew(inSeconds(20)).error);
  kill(rig.pid, SIGSTOP);
  const auto late = renew(inSeconds(25));
  kill(rig.pid, SIGCONT);
  EXPECT_EQ(late.kind(), LidSleepBlockerError::Kind::helperUnavailable);
  EXPECT_TRUE(blocker->isResetUnconfirmed());
  EXPECT_FALSE(blocker->isEngaged());

  // The late grant arrives now and changes nothing here; the refusal that
  // follows on the same connection is paired with its own request.
  testing::pumpMainLoopFor(0.2);
  EXPECT_FALSE(blocker->isEngaged());
  EXPECT_EQ(renew(Date::fromSecondsSince1970(std::nan(""))).kind(), LidSleepBlockerError::Kind::helperRefused);
  const auto revoked = revoke();
  EXPECT_FALSE(revoked.error);
  EXPECT_FALSE(blocker->isResetUnconfirmed());
  EXPECT_FALSE(rig.leaseFileExists());
}

}  // namespace
}  // namespace wakeloft
