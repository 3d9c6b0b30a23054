#include "lease/XPCReply.h"

#include <gtest/gtest.h>

#include <memory>
#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

#include "base/MainThread.h"
#include "clock/BackgroundQueue.h"
#include "clock/MainRunLoop.h"
#include "support/MainLoopPump.h"

namespace wakeloft {
namespace {

using Outcome = XPCReply::Outcome;

// What reached the callbacks, shared with them so that a late delivery
// after the test cannot touch freed memory.
struct Deliveries {
  std::mutex lock;
  std::vector<Outcome> outcomes;
  bool allOnMainThread = true;

  std::function<void(Outcome)> callback(const std::shared_ptr<Deliveries>& self) {
    return [self](Outcome outcome) {
      std::lock_guard guard(self->lock);
      self->allOnMainThread = self->allOnMainThread && isMainThread();
      self->outcomes.push_back(std::move(outcome));
    };
  }
  std::size_t count() {
    std::lock_guard guard(lock);
    return outcomes.size();
  }
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

TEST(XPCReplyTest, ReplyErrorAndTimeLimitRacingDeliverExactlyOneOutcome) {
  constexpr int rounds = 200;
  std::vector<std::shared_ptr<Deliveries>> perRound;
  std::vector<std::weak_ptr<XPCReply>> latches;
  for (int round = 0; round < rounds; ++round) {
    auto deliveries = makeDeliveries();
    auto reply = XPCReply::make(deliveries->callback(deliveries));
    perRound.push_back(deliveries);
    latches.push_back(reply);

    // The three threads spin until all are there, so they race closely.
    std::atomic<int> arrived = 0;
    std::vector<std::thread> racers;
    for (int racer = 0; racer < 3; ++racer) {
      racers.emplace_back([&arrived, racer, reply] {
        ++arrived;
        while (arrived.load() < 3) std::this_thread::yield();
        if (racer == 0) reply->finish(Outcome::replied("late"));
        if (racer == 1) reply->finish(Outcome::failed());
        if (racer == 2) reply->expire(0);
      });
    }
    for (auto& racer : racers) racer.join();
  }
  // Background work runs in order of its due time, so this marker reaches the
  // main loop after every time-out above has finished.
  auto timersDone = std::make_shared<bool>(false);
  BackgroundQueue::runAfter(0, [timersDone] { MainRunLoop::perform([timersDone] { *timersDone = true; }); });
  ASSERT_TRUE(testing::pumpMainLoopUntil([&] { return *timersDone; }, 5));
  testing::drainMainLoop();

  for (int round = 0; round < rounds; ++round) {
    SCOPED_TRACE(round);
    ASSERT_EQ(perRound[round]->count(), 1u);
    const Outcome& outcome = perRound[round]->outcomes.front();
    EXPECT_TRUE(outcome == Outcome::replied("late") || outcome == Outcome::failed() ||
                outcome == Outcome::unanswered());
    EXPECT_TRUE(perRound[round]->allOnMainThread);
    EXPECT_TRUE(latches[round].expired());
  }
}

}  // namespace
}  // namespace wakeloft
