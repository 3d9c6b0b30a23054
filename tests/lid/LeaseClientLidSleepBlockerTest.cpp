#include "lid/LeaseClientLidSleepBlocker.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "support/CompletionLog.h"
#include "lid/LidSleepBlockerError.h"
#include "support/MainLoopPump.h"

namespace wakeloft {
namespace {

using Outcome = XPCReply::Outcome;
using testing::CompletionLog;
using testing::failure;
using testing::success;

const Date noon = Date::fromSecondsSince1970(1'700'000'000);
constexpr const char* requirement = "identifier \"com.wakeloft.app.lidhelper\"";
constexpr const char* elsewhere =
    "The sleep setting is already on, set by something other than Wakeloft, and was left as it is.";

class FakeRegistration final : public LidHelperRegistration {
 public:
  LidHelperStatus status() const override { return current; }
  void registerHelper() override {
    ++registrations;
    if (afterRegistering) current = *afterRegistering;
    if (registrationError) std::rethrow_exception(registrationError);
  }
  void unregisterHelper() override { current = LidHelperStatus::notRegistered; }

  LidHelperStatus current = LidHelperStatus::enabled;
  std::optional<LidHelperStatus> afterRegistering;
  std::exception_ptr registrationError;
  int registrations = 0;
};

// A connection that answers only when the test says so.
class ScriptedTransport final : public LidLeaseTransport {
 public:
  struct Sent {
    LidLeaseRequest request;
    std::shared_ptr<XPCReply> reply;
    int connection;  // which connection, counted from 1
  };

  bool isOpen() const override { return open_; }
  void open(const std::string& given) override {
    EXPECT_FALSE(open_) << "a second connection while one is open";
    open_ = true;
    ++connectionsMade;
    requirements.push_back(given);
  }
  void send(const LidLeaseRequest& request, const std::shared_ptr<XPCReply>& reply) override {
    EXPECT_TRUE(open_) << "sent without a connection";
    sent.push_back({request, reply, connectionsMade});
  }
  void drop() override {
    if (open_) ++drops;
    open_ = false;
  }

  std::vector<Sent> sent;
  std::vector<std::string> requirements;
  int connectionsMade = 0;
  int drops = 0;

 private:
  bool open_ = false;
};

class LeaseClientLidSleepBlockerTest : public ::testing::Test {
 protected:
  void SetUp() override { make(requirement, 10); }

  void make(std::optional<std::string> helperRequirement, double replyTimeout) {
    auto scripted = std::make_unique<ScriptedTransport>();
    transport = scripted.get();
    blocker = std::make_unique<LeaseClientLidSleepBlocker>(registration, std::move(helperRequirement), replyTimeout,
                                                           std::move(scripted));
  }

  // Finishes the latest request as the transport would and waits until its
  // completion has run.
  void answer(const Outcome& outcome) {
    ASSERT_FALSE(transport->sent.empty());
    const auto before = log.entries.size();
    transport->sent.back().reply->finish(outcome);
    ASSERT_TRUE(testing::pumpMainLoopUntil([&] { return log.entries.size() > before; }, 5));
  }

  void renewAndAnswer(const Outcome& outcome) {
    blocker->renew(noon.adding(30), log.record("renew"));
    answer(outcome);
  }
  void revokeAndAnswer(const Outcome& outcome) {
    blocker->revoke(log.record("revoke"));
    answer(outcome);
  }

  // A connection that has answered once and now holds a lease.
  void engage() {
    renewAndAnswer(Outcome::replied(std::nullopt));
    ASSERT_TRUE(blocker->isEngaged());
  }
  // A renewal that went unanswered on an answering connection.
  void loseTrack() {
    engage();
    renewAndAnswer(Outcome::unanswered());
    ASSERT_TRUE(blocker->isResetUnconfirmed());
  }

  std::shared_ptr<FakeRegistration> registration = std::make_shared<FakeRegistration>();
  ScriptedTransport* transport = nullptr;
  std::unique_ptr<LeaseClientLidSleepBlocker> blocker;
  CompletionLog log;
};

// Renewal outcomes

TEST_F(LeaseClientLidSleepBlockerTest, GrantedRenewalEngagesOnOneConnectionMadeWithTheRequirement) {
  blocker->renew(noon.adding(30), log.record("renew"));
  ASSERT_EQ(transport->sent.size(), 1u);
  EXPECT_EQ(transport->sent[0].request, LidLeaseRequest::renew(noon.adding(30).secondsSince1970));
  EXPECT_TRUE(log.entries.empty());  // never inside the call
  answer(Outcome::replied(std::nullopt));
  EXPECT_EQ(log.last(), success());
  EXPECT_TRUE(blocker->isEngaged());

  renewAndAnswer(Outcome::replied(std::nullopt));
  EXPECT_EQ(transport->connectionsMade, 1);
  EXPECT_EQ(transport->requirements, std::vector<std::string>{requirement});
  EXPECT_EQ(transport->drops, 0);
}

// A refusal passes the reason through and keeps the connection; an error
// drops even an answering one.
TEST_F(LeaseClientLidSleepBlockerTest, RefusedOrFailedRenewalsDisengageWithoutDoubt) {
  for (const bool refused : {true, false}) {
    engage();
    renewAndAnswer(refused ? Outcome::replied(elsewhere) : Outcome::failed());
    EXPECT_EQ(log.last(), failure(refused ? LidSleepBlockerError::helperRefused(elsewhere)
                                          : LidSleepBlockerError::helperUnavailable()));
    EXPECT_FALSE(blocker->isEngaged());
    EXPECT_FALSE(blocker->isResetUnconfirmed());
    EXPECT_EQ(transport->isOpen(), refused);
  }
  EXPECT_EQ(transport->drops, 1);
}

TEST_F(LeaseClientLidSleepBlockerTest, AnUnansweredFirstRenewalDropsTheConnectionWithoutDoubtAndAHelperAwaitingApprovalSaysSo) {
  renewAndAnswer(Outcome::unanswered());
  EXPECT_EQ(log.last(), failure(LidSleepBlockerError::helperUnavailable()));
  EXPECT_FALSE(blocker->isResetUnconfirmed());
  EXPECT_FALSE(transport->isOpen());

  registration->current = LidHelperStatus::requiresApproval;
  renewAndAnswer(Outcome::unanswered());
  EXPECT_EQ(log.last(), failure(LidSleepBlockerError::helperRequiresApproval()));
  renewAndAnswer(Outcome::failed());
  EXPECT_EQ(log.last(), failure(LidSleepBlockerError::helperRequiresApproval()));
  // A helper that answers is heard, whatever the registration says.
  renewAndAnswer(Outcome::replied(elsewhere));
  EXPECT_EQ(log.last(), failure(LidSleepBlockerError::helperRefused(elsewhere)));
}

TEST_F(LeaseClientLidSleepBlockerTest, UnansweredRenewalOnAnAnsweringConnectionKeepsItAndLeavesDoubt) {
  loseTrack();
  EXPECT_EQ(log.last(), failure(LidSleepBlockerError::helperUnavailable()));
  EXPECT_FALSE(blocker->isEngaged());
  EXPECT_TRUE(transport->isOpen());

  // Doubt survives refusals and errors, and ends with a confirmed renewal.
  renewAndAnswer(Outcome::replied(elsewhere));
  EXPECT_TRUE(blocker->isResetUnconfirmed());
  renewAndAnswer(Outcome::failed());
  EXPECT_TRUE(blocker->isResetUnconfirmed());
  renewAndAnswer(Outcome::replied(std::nullopt));
  EXPECT_FALSE(blocker->isResetUnconfirmed());
}

// Revoke outcomes

TEST_F(LeaseClientLidSleepBlockerTest, RevokeWithNothingToGiveBackSendsNothingAndAFailedOneIsSuccessUnlessALeaseMayBeHeld) {
  blocker->revoke(log.record("revoke"));
  EXPECT_EQ(log.last(), success());  // at once
  EXPECT_TRUE(transport->sent.empty());
  EXPECT_EQ(transport->connectionsMade, 0);

  engage();
  revokeAndAnswer(Outcome::failed());
  EXPECT_EQ(log.last(), success());
  EXPECT_FALSE(transport->isOpen());

  loseTrack();
  revokeAndAnswer(Outcome::failed());
  EXPECT_EQ(log.last(), failure(LidSleepBlockerError::helperUnavailable()));
  EXPECT_TRUE(blocker->isResetUnconfirmed());
}

TEST_F(LeaseClientLidSleepBlockerTest, ARevokeDisengagesAtOnceEndsDoubtWhenConfirmedButLeavesItWhenRefusedOrUnansweredUntilOneIsConfirmed) {
  loseTrack();
  blocker->revoke(log.record("revoke"));
  EXPECT_FALSE(blocker->isEngaged());
  ASSERT_FALSE(transport->sent.empty());
  EXPECT_EQ(transport->sent.back().request, LidLeaseRequest::revoke());
  answer(Outcome::replied(std::nullopt));
  EXPECT_EQ(log.last(), success());
  EXPECT_FALSE(blocker->isResetUnconfirmed());

  engage();
  revokeAndAnswer(Outcome::replied(elsewhere));
  EXPECT_EQ(log.last(), failure(LidSleepBlockerError::helperRefused(elsewhere)));
  EXPECT_TRUE(blocker->isResetUnconfirmed());

  engage();
  revokeAndAnswer(Outcome::unanswered());
  EXPECT_EQ(log.last(), failure(LidSleepBlockerError::helperUnavailable()));
  EXPECT_TRUE(transport->isOpen());  // it had been answering

  renewAndAnswer(Outcome::failed());  // drops the connection
  ASSERT_FALSE(transport->isOpen());
  blocker->revoke(log.record("revoke"));
  ASSERT_FALSE(transport->sent.empty());
  ASSERT_EQ(transport->sent.back().request, LidLeaseRequest::revoke());
  EXPECT_EQ(transport->sent.back().connection, 2);
  answer(Outcome::replied(std::nullopt));
  EXPECT_FALSE(blocker->isResetUnconfirmed());
}

// Serial asking and the time limit

TEST_F(LeaseClientLidSleepBlockerTest, RequestsGoOutOneAtATimeInTheOrderAskedOneFromACompletionOnTheNextTurn) {
  blocker->renew(noon.adding(10), log.record("first"));
  blocker->renew(noon.adding(20), log.record("second"));
  blocker->revoke(log.record("revoke"));
  ASSERT_EQ(transport->sent.size(), 1u);

  answer(Outcome::replied(std::nullopt));
  ASSERT_EQ(transport->sent.size(), 2u);
  EXPECT_EQ(transport->sent[1].request, LidLeaseRequest::renew(noon.adding(20).secondsSince1970));
  // Still engaged: the revoke waits behind the second renewal.
  EXPECT_TRUE(blocker->isEngaged());

  answer(Outcome::replied(std::nullopt));
  ASSERT_EQ(transport->sent.size(), 3u);
  EXPECT_EQ(transport->sent[2].request, LidLeaseRequest::revoke());
  answer(Outcome::replied(std::nullopt));
  EXPECT_EQ(log.tags(), (std::vector<std::string>{"first", "second", "revoke"}));

  auto renewed = log.record("renew");
  blocker->renew(noon, [&](std::exception_ptr error) {
    blocker->revoke(log.record("revoke"));
    EXPECT_EQ(transport->sent.size(), 4u);  // the renewal is not done until its completion returns
    renewed(error);
  });
  answer(Outcome::replied(std::nullopt));
  ASSERT_EQ(transport->sent.size(), 5u);
  EXPECT_EQ(transport->sent[4].request, LidLeaseRequest::revoke());
}

TEST_F(LeaseClientLidSleepBlockerTest, ALateAnswerIsIgnoredAfterTheTimeLimitOrWithTheBlockerGone) {
  make(requirement, 0.05);
  engage();
  blocker->renew(noon.adding(30), log.record("late"));
  ASSERT_TRUE(testing::pumpMainLoopUntil([&] { return log.entries.size() == 2; }, 5));
  EXPECT_EQ(log.last(), failure(LidSleepBlockerError::helperUnavailable()));

  ASSERT_FALSE(transport->sent.empty());
  transport->sent.back().reply->finish(Outcome::replied(std::nullopt));
  testing::pumpMainLoopFor(0.1);
  EXPECT_EQ(log.entries.size(), 2u);
  EXPECT_FALSE(blocker->isEngaged());

  blocker->renew(noon, log.record("renew"));
  ASSERT_FALSE(transport->sent.empty());
  auto reply = transport->sent.back().reply;
  blocker.reset();
  reply->finish(Outcome::replied(std::nullopt));
  testing::pumpMainLoopFor(0.1);
  EXPECT_EQ(log.entries.size(), 2u);
}

// Without a requirement, and prepare()

LidSleepBlockerError::Kind thrownKind(LeaseClientLidSleepBlocker& blocker) {
  try {
    blocker.prepare();
  } catch (const LidSleepBlockerError& error) {
    return error.kind();
  }
  ADD_FAILURE() << "prepare() did not throw a LidSleepBlockerError";
  return LidSleepBlockerError::Kind::helperUnavailable;
}

TEST_F(LeaseClientLidSleepBlockerTest, PrepareLeavesAKnownHelperAloneRegistersAMissingOneAndWithoutARequirementNothingIsEverSent) {
  EXPECT_NO_THROW(blocker->prepare());
  registration->current = LidHelperStatus::requiresApproval;
  EXPECT_EQ(thrownKind(*blocker), LidSleepBlockerError::Kind::helperRequiresApproval);
  EXPECT_EQ(registration->registrations, 0);

  for (const auto missing : {LidHelperStatus::notRegistered, LidHelperStatus::notFound}) {
    registration->current = missing;
    registration->afterRegistering = LidHelperStatus::enabled;
    EXPECT_NO_THROW(blocker->prepare());
  }
  EXPECT_EQ(registration->registrations, 2);

  const int registrations = registration->registrations;
  make(std::nullopt, 10);
  EXPECT_EQ(thrownKind(*blocker), LidSleepBlockerError::Kind::helperUnavailable);
  EXPECT_EQ(registration->registrations, registrations);

  blocker->renew(noon, log.record("renew"));
  EXPECT_EQ(log.last(), failure(LidSleepBlockerError::helperUnavailable()));  // at once
  blocker->revoke(log.record("revoke"));
  EXPECT_EQ(log.last(), success());
  EXPECT_EQ(transport->connectionsMade, 0);
}

TEST_F(LeaseClientLidSleepBlockerTest, PrepareReportsApprovalBeforeTheRegistrationError) {
  registration->current = LidHelperStatus::notRegistered;
  registration->afterRegistering = LidHelperStatus::requiresApproval;
  registration->registrationError = std::make_exception_ptr(std::runtime_error("Operation not permitted"));
  EXPECT_EQ(thrownKind(*blocker), LidSleepBlockerError::Kind::helperRequiresApproval);

  registration->current = LidHelperStatus::notRegistered;
  registration->afterRegistering = std::nullopt;
  try {
    blocker->prepare();
    ADD_FAILURE() << "the registration error was swallowed";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "Operation not permitted");
  }
}

}  // namespace
}  // namespace wakeloft
