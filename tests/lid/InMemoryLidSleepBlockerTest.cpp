#include "lid/InMemoryLidSleepBlocker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "CompletionLog.h"
#include "lid/UnavailableLidSleepBlocker.h"

namespace wakeloft {
namespace {

using testing::CompletionLog;
using testing::failure;
using testing::success;
using ::testing::ElementsAre;

const Date noon = Date::fromSecondsSince1970(1'700'000'000);

TEST(InMemoryLidSleepBlockerTest, PrepareRenewalAndRevokeAnswerAtOnceByDefaultOrWithAnErrorInjectedOnce) {
  InMemoryLidSleepBlocker blocker;
  CompletionLog log;
  blocker.renew(noon.adding(30), log.record("renew"));
  EXPECT_EQ(log.tags(), std::vector<std::string>{"renew"});
  EXPECT_EQ(log.last(), success());
  EXPECT_TRUE(blocker.isEngaged());
  EXPECT_EQ(blocker.leaseExpiry, noon.adding(30));

  blocker.revoke(log.record("revoke"));
  EXPECT_EQ(log.last(), success());
  EXPECT_FALSE(blocker.isEngaged());
  EXPECT_EQ(blocker.renewCount, 1);
  EXPECT_EQ(blocker.revokeCount, 1);

  blocker.nextRenewalError = std::make_exception_ptr(LidSleepBlockerError::helperRefused("no"));
  blocker.renew(noon, log.record("refused"));
  EXPECT_EQ(log.last(), failure(LidSleepBlockerError::helperRefused("no")));
  EXPECT_FALSE(blocker.isEngaged());
  EXPECT_EQ(blocker.renewCount, 1);  // only confirmed renewals count
  EXPECT_FALSE(blocker.nextRenewalError);

  blocker.renew(noon, log.record("granted"));
  EXPECT_EQ(log.last(), success());
  EXPECT_EQ(blocker.renewCount, 2);

  // A failed revoke still drops the lease and counts.
  blocker.nextRevocationError = std::make_exception_ptr(LidSleepBlockerError::helperUnavailable());
  blocker.revoke(log.record("revoke"));
  EXPECT_EQ(log.last(), failure(LidSleepBlockerError::helperUnavailable()));
  EXPECT_FALSE(blocker.isEngaged());
  EXPECT_EQ(blocker.revokeCount, 2);
  blocker.revoke(log.record("again"));
  EXPECT_EQ(log.last(), success());

  // Preparing is counted and throws an injected error, of any kind, once.
  blocker.nextPreparationError = std::make_exception_ptr(LidSleepBlockerError::helperRequiresApproval());
  EXPECT_THROW(blocker.prepare(), LidSleepBlockerError);
  EXPECT_NO_THROW(blocker.prepare());
  EXPECT_EQ(blocker.prepareCount, 2);
  blocker.nextPreparationError = std::make_exception_ptr(std::runtime_error("disk on fire"));
  EXPECT_THROW(blocker.prepare(), std::runtime_error);
}

TEST(InMemoryLidSleepBlockerTest, HeldRepliesWaitAndAreGivenInOrderButNotThoseAskedForMeanwhile) {
  InMemoryLidSleepBlocker blocker;
  CompletionLog log;
  blocker.holdsReplies = true;
  blocker.nextRenewalError = std::make_exception_ptr(LidSleepBlockerError::helperUnavailable());
  blocker.renew(noon.adding(10), log.record("first"));
  blocker.renew(noon.adding(20), log.record("second"));
  blocker.revoke(log.record("revoke"));
  EXPECT_TRUE(log.entries.empty());
  EXPECT_EQ(blocker.unanswered.size(), 3u);
  // The error was taken by the call, not by its later reply.
  EXPECT_FALSE(blocker.nextRenewalError);

  blocker.answerNext();
  EXPECT_EQ(log.tags(), std::vector<std::string>{"first"});
  EXPECT_EQ(log.last(), failure(LidSleepBlockerError::helperUnavailable()));
  blocker.answerNext();
  EXPECT_EQ(blocker.leaseExpiry, noon.adding(20));

  // Replies held earlier are given before new ones, even once holding stops.
  blocker.holdsReplies = false;
  blocker.renew(noon.adding(40), log.record("after"));
  EXPECT_EQ(blocker.unanswered.size(), 2u);
  blocker.answerAll();
  EXPECT_EQ(log.tags(), (std::vector<std::string>{"first", "second", "revoke", "after"}));
  EXPECT_EQ(blocker.leaseExpiry, noon.adding(40));
  EXPECT_TRUE(blocker.unanswered.empty());

  blocker.answerNext();  // nothing held: nothing happens
  EXPECT_EQ(log.entries.size(), 4u);

  // What a completion asks for meanwhile, as a renewal loop does, stays held.
  blocker.holdsReplies = true;
  blocker.renew(noon, [&](std::exception_ptr) { blocker.renew(noon.adding(10), log.record("renewed again")); });
  blocker.answerAll();
  EXPECT_EQ(log.entries.size(), 4u);
  EXPECT_EQ(blocker.unanswered.size(), 1u);
  blocker.answerAll();
  ASSERT_EQ(log.entries.size(), 5u);
  EXPECT_EQ(log.entries.back().tag, "renewed again");
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
