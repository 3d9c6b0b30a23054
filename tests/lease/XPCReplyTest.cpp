#include "lease/XPCReply.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

#include "base/MainThread.h"
#include "support/MainLoopPump.h"

namespace wakeloft {
namespace {

using Outcome = XPCReply::Outcome;

// What reached the callbacks, shared with them so that a late delivery
// after the test cannot touch freed memory.
struct Deliveries {
  std::vector<Outcome> outcomes;
  bool allOnMainThread = true;

  std::function<void(Outcome)> callback(const std::shared_ptr<Deliveries>& self) {
    return [self](Outcome outcome) {
      self->allOnMainThread = self->allOnMainThread && isMainThread();
      self->outcomes.push_back(std::move(outcome));
    };
  }
  std::size_t count() const { return outcomes.size(); }
};

std::shared_ptr<Deliveries> makeDeliveries() { return std::make_shared<Deliveries>(); }

TEST(XPCReplyTest, AnAnswerFromAnyThreadIsDeliveredLaterOnTheMainLoop) {
  auto deliveries = makeDeliveries();
  auto reply = XPCReply::make(deliveries->callback(deliveries));
  reply->finish(Outcome::replied(std::nullopt));
  EXPECT_EQ(deliveries->count(), 0u);  // never inside finish, even on the main thread
  auto other = XPCReply::make(deliveries->callback(deliveries));
  std::thread([other] { other->finish(Outcome::replied("No.")); }).join();

  ASSERT_TRUE(testing::pumpMainLoopUntil([&] { return deliveries->count() == 2; }, 5));
  EXPECT_EQ(deliveries->outcomes, (std::vector<Outcome>{Outcome::replied(std::nullopt), Outcome::replied("No.")}));
  EXPECT_TRUE(deliveries->allOnMainThread);
}

TEST(XPCReplyTest, TheTimeLimitDeliversUnansweredEvenUnheldAndLaterAnswersGoNowhere) {
  auto expired = makeDeliveries();
  auto expiring = XPCReply::make(expired->callback(expired));
  expiring->expire(0.05);
  XPCReply::make(expired->callback(expired))->expire(0.01);  // held by nobody else
  ASSERT_TRUE(testing::pumpMainLoopUntil([&] { return expired->count() == 2; }, 5));
  expiring->finish(Outcome::replied(std::nullopt));
  testing::drainMainLoop();
  EXPECT_EQ(expired->outcomes, (std::vector<Outcome>{Outcome::unanswered(), Outcome::unanswered()}));
}

}  // namespace
}  // namespace wakeloft
