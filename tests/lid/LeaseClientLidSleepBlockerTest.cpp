#include "lid/LeaseClientLidSleepBlocker.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "lid/LidSleepBlockerError.h"
#include "support/CompletionLog.h"
#include "support/FakeLidHelperRegistration.h"
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
  void drop() override { open_ = false; }

  std::vector<Sent> sent;
  std::vector<std::string> requirements;
  int connectionsMade = 0;

 private:
  bool open_ = false;
};

class LeaseClientLidSleepBlockerTest : public ::testing::Test {
 protected:
  void SetUp() override { make(requirement); }

  void make(std::optional<std::string> helperRequirement) {
    auto scripted = std::make_unique<ScriptedTransport>();
    transport = scripted.get();
    blocker = std::make_unique<LeaseClientLidSleepBlocker>(registration, std::move(helperRequirement), 10,
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

  std::shared_ptr<testing::FakeLidHelperRegistration> registration =
      std::make_shared<testing::FakeLidHelperRegistration>();
  ScriptedTransport* transport = nullptr;
  std::unique_ptr<LeaseClientLidSleepBlocker> blocker;
  CompletionLog log;
};

const auto unavailable = failure(LidSleepBlockerError::helperUnavailable());
const auto refusedElsewhere = failure(LidSleepBlockerError::helperRefused(elsewhere));

TEST_F(LeaseClientLidSleepBlockerTest, AGrantedRenewalToTheRequiredHelperEngagesAndAnswersOnlyAfterTheCall) {
  blocker->renew(noon.adding(30), log.record("renew"));
  EXPECT_EQ(transport->requirements, std::vector<std::string>{requirement});
  ASSERT_EQ(transport->sent.size(), 1u);
  EXPECT_EQ(transport->sent[0].request, LidLeaseRequest::renew(noon.adding(30).secondsSince1970));
  EXPECT_TRUE(log.entries.empty());
  answer(Outcome::replied(std::nullopt));
  EXPECT_EQ(log.last(), success());
  EXPECT_TRUE(blocker->isEngaged());
}

TEST_F(LeaseClientLidSleepBlockerTest, ARefusedRenewalDisengages) {
  engage();
  renewAndAnswer(Outcome::replied(elsewhere));
  EXPECT_FALSE(blocker->isEngaged());
}

TEST_F(LeaseClientLidSleepBlockerTest, AnUnansweredFirstRenewalDropsTheConnectionWithoutDoubt) {
  renewAndAnswer(Outcome::unanswered());
  EXPECT_EQ(log.last(), unavailable);
  EXPECT_FALSE(blocker->isResetUnconfirmed());
  EXPECT_FALSE(transport->isOpen());
}

TEST_F(LeaseClientLidSleepBlockerTest, AnUnreachableHelperAwaitingApprovalSaysSoButOneThatAnswersIsHeard) {
  registration->current = LidHelperStatus::requiresApproval;
  for (const auto& outcome : {Outcome::unanswered(), Outcome::failed()}) {
    renewAndAnswer(outcome);
    EXPECT_EQ(log.last(), failure(LidSleepBlockerError::helperRequiresApproval()));
  }
  renewAndAnswer(Outcome::replied(elsewhere));
  EXPECT_EQ(log.last(), refusedElsewhere);
}

TEST_F(LeaseClientLidSleepBlockerTest, DoubtSurvivesRefusalsAndErrorsAndEndsWithAConfirmedRenewal) {
  loseTrack();
  renewAndAnswer(Outcome::replied(elsewhere));
  renewAndAnswer(Outcome::failed());
  EXPECT_TRUE(blocker->isResetUnconfirmed());
  renewAndAnswer(Outcome::replied(std::nullopt));
  EXPECT_FALSE(blocker->isResetUnconfirmed());
}

TEST_F(LeaseClientLidSleepBlockerTest, AFailedRevokeIsSuccessUnlessALeaseMayBeHeldUnseen) {
  engage();
  revokeAndAnswer(Outcome::failed());
  EXPECT_EQ(log.last(), success());

  loseTrack();
  revokeAndAnswer(Outcome::failed());
  EXPECT_EQ(log.last(), unavailable);
  EXPECT_TRUE(blocker->isResetUnconfirmed());
}

TEST_F(LeaseClientLidSleepBlockerTest, ARefusedOrUnansweredRevokeLeavesDoubt) {
  const std::pair<Outcome, testing::Received> cases[] = {{Outcome::replied(elsewhere), refusedElsewhere},
                                                         {Outcome::unanswered(), unavailable}};
  for (const auto& [outcome, received] : cases) {
    engage();
    revokeAndAnswer(outcome);
    EXPECT_EQ(log.last(), received);
    EXPECT_TRUE(blocker->isResetUnconfirmed());
  }
}

TEST_F(LeaseClientLidSleepBlockerTest, WhileInDoubtARevokeIsSentOnANewConnection) {
  loseTrack();
  renewAndAnswer(Outcome::failed());  // drops the connection
  blocker->revoke(log.record("revoke"));
  ASSERT_FALSE(transport->sent.empty());
  EXPECT_EQ(transport->sent.back().request, LidLeaseRequest::revoke());
  EXPECT_EQ(transport->sent.back().connection, 2);
}

TEST_F(LeaseClientLidSleepBlockerTest, RequestsGoOutOneAtATimeInTheOrderAsked) {
  blocker->renew(noon.adding(10), log.record("first"));
  blocker->renew(noon.adding(20), log.record("second"));
  blocker->revoke(log.record("revoke"));
  for (std::size_t sent = 1; sent <= 3; ++sent) {
    ASSERT_EQ(transport->sent.size(), sent);
    answer(Outcome::replied(std::nullopt));
  }
  EXPECT_EQ(transport->sent[1].request, LidLeaseRequest::renew(noon.adding(20).secondsSince1970));
  EXPECT_EQ(log.tags(), (std::vector<std::string>{"first", "second", "revoke"}));
}

testing::Received prepared(LeaseClientLidSleepBlocker& blocker) {
  try {
    blocker.prepare();
  } catch (const LidSleepBlockerError& error) {
    return failure(error);
  }
  return success();
}

TEST_F(LeaseClientLidSleepBlockerTest, PrepareRegistersOnlyAMissingHelper) {
  EXPECT_EQ(prepared(*blocker), success());
  for (const auto missing : {LidHelperStatus::notRegistered, LidHelperStatus::notFound}) {
    registration->current = missing;
    registration->afterRegistering = LidHelperStatus::enabled;
    EXPECT_EQ(prepared(*blocker), success());
  }
  EXPECT_EQ(registration->registrations, 2);
}

TEST_F(LeaseClientLidSleepBlockerTest, PrepareReportsApprovalBeforeTheRegistrationsOwnError) {
  const auto approval = failure(LidSleepBlockerError::helperRequiresApproval());
  registration->current = LidHelperStatus::requiresApproval;
  EXPECT_EQ(prepared(*blocker), approval);

  registration->current = LidHelperStatus::notRegistered;
  registration->registrationError = std::make_exception_ptr(std::runtime_error("Operation not permitted"));
  registration->afterRegistering = LidHelperStatus::requiresApproval;
  EXPECT_EQ(prepared(*blocker), approval);

  registration->current = LidHelperStatus::notRegistered;
  registration->afterRegistering = std::nullopt;
  EXPECT_THROW(blocker->prepare(), std::runtime_error);
}

TEST_F(LeaseClientLidSleepBlockerTest, WithoutARequirementNothingIsRegisteredOrSent) {
  registration->current = LidHelperStatus::notRegistered;
  make(std::nullopt);
  EXPECT_EQ(prepared(*blocker), unavailable);
  blocker->renew(noon, log.record("renew"));
  EXPECT_EQ(log.last(), unavailable);
  EXPECT_EQ(registration->registrations, 0);
  EXPECT_EQ(transport->connectionsMade, 0);
}

}  // namespace
}  // namespace wakeloft
