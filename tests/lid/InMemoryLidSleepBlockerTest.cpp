#include "lid/InMemoryLidSleepBlocker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/CompletionLog.h"
#include "lid/UnavailableLidSleepBlocker.h"

namespace wakeloft {
namespace {

using testing::CompletionLog;
using testing::failure;
using testing::success;
using ::testing::ElementsAre;

const Date noon = Date::fromSecondsSince1970(1'700'000'000);

// The double's counts and held replies are what the controller tests read,
// so the subtle parts are pinned here.
TEST(InMemoryLidSleepBlockerTest, OnlyConfirmedRenewalsCountAndAFailedRevokeStillDropsTheLease) {
  InMemoryLidSleepBlocker blocker;
  CompletionLog log;
  blocker.nextRenewalError = std::make_exception_ptr(LidSleepBlockerError::helperRefused("no"));
  blocker.renew(noon, log.record("refused"));
  EXPECT_EQ(log.last(), failure(LidSleepBlockerError::helperRefused("no")));
  blocker.renew(noon.adding(30), log.record("granted"));
  EXPECT_EQ(blocker.renewCount, 1);
  EXPECT_EQ(blocker.leaseExpiry, noon.adding(30));

  blocker.nextRevocationError = std::make_exception_ptr(LidSleepBlockerError::helperUnavailable());
  blocker.revoke(log.record("revoke"));
  EXPECT_EQ(log.last(), failure(LidSleepBlockerError::helperUnavailable()));
  EXPECT_FALSE(blocker.isEngaged());
  EXPECT_EQ(blocker.revokeCount, 1);
}

TEST(InMemoryLidSleepBlockerTest, HeldRepliesComeInOrderAndThoseAskedForByACompletionStayHeld) {
  InMemoryLidSleepBlocker blocker;
  CompletionLog log;
  blocker.holdsReplies = true;
  blocker.nextRenewalError = std::make_exception_ptr(LidSleepBlockerError::helperUnavailable());
  blocker.renew(noon.adding(10), log.record("first"));
  EXPECT_FALSE(blocker.nextRenewalError);  // taken by the call, not by its later reply
  blocker.renew(noon.adding(20), log.record("second"));
  blocker.revoke(log.record("revoke"));
  EXPECT_TRUE(log.entries.empty());
  blocker.answerAll();
  EXPECT_EQ(log.tags(), (std::vector<std::string>{"first", "second", "revoke"}));

  blocker.renew(noon, [&](std::exception_ptr) { blocker.renew(noon.adding(10), log.record("renewed again")); });
  blocker.answerAll();
  EXPECT_EQ(blocker.unanswered.size(), 1u);
  blocker.answerAll();
  EXPECT_EQ(log.tags(), (std::vector<std::string>{"first", "second", "revoke", "renewed again"}));
}

TEST(UnavailableLidSleepBlockerTest, RenewalFailsAndRevokeHasNothingToDo) {
  UnavailableLidSleepBlocker blocker;
  CompletionLog log;
  EXPECT_NO_THROW(blocker.prepare());
  blocker.renew(noon, log.record("renew"));
  blocker.revoke(log.record("revoke"));
  EXPECT_THAT(log.entries,
              ElementsAre(CompletionLog::Entry{"renew", failure(LidSleepBlockerError::helperUnavailable())},
                          CompletionLog::Entry{"revoke", success()}));
  EXPECT_FALSE(blocker.isEngaged());
}

}  // namespace
}  // namespace wakeloft
