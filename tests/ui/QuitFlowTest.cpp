#include "ui/QuitFlow.h"

#include <gtest/gtest.h>

#include <vector>

#include "TestControllers.h"

namespace wakeloft {
namespace {

using testing::TestControllers;

class QuitFlowTest : public ::testing::Test {
 protected:
  void SetUp() override {
    app.processes->start(4242, 7, "make");
    app.start();
    flow->attach(app.awake, app.lid, app.binding);
  }

  // Runs the delayed closures, as the main loop would once their time is up.
  void runDelayed() {
    auto due = std::move(delayed);
    delayed.clear();
    for (auto& [seconds, work] : due) work();
  }

  TestControllers app;
  std::vector<QuitConfirmation> asked;
  bool answer = true;
  std::function<void()> whileAsking;
  bool systemQuit = false;
  std::vector<bool> replies;
  std::vector<std::pair<double, std::function<void()>>> delayed;
  std::unique_ptr<QuitFlow> flow = std::make_unique<QuitFlow>(
      [this](const QuitConfirmation& confirmation) {
        asked.push_back(confirmation);
        EXPECT_TRUE(flow->isAsking());
        if (whileAsking) whileAsking();
        return answer;
      },
      [this] { return systemQuit; }, [this](bool reply) { replies.push_back(reply); },
      [this](double seconds, std::function<void()> work) { delayed.emplace_back(seconds, std::move(work)); });
};

// --- The user's quit ---

TEST_F(QuitFlowTest, NothingRunningQuitsAtOnceButARunningSessionIsQuestionedAndCancelLeavesItRunning) {
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::now);
  EXPECT_TRUE(asked.empty());

  QuitFlow bare([](const QuitConfirmation&) { return false; }, [] { return false; }, [](bool) {},
                [](double, std::function<void()>) {});
  EXPECT_EQ(bare.shouldTerminate(), TerminateReply::now);

  TestControllers other;
  other.start();
  other.awake->turnOn(std::nullopt);
  flow->attach(other.awake, other.lid);
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::now);  // asks about the first, which is off
  EXPECT_TRUE(asked.empty());

  app.awake->turnOn(600);
  app.clocks.pass(601);  // its timer has not fired yet
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::now);
  EXPECT_TRUE(asked.empty());
  EXPECT_FALSE(app.awake->isOn());

  app.awake->turnOn(1530);
  answer = false;
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::cancel);
  EXPECT_EQ(asked, std::vector{QuitConfirmation::awakeMode(1500)});
  EXPECT_FALSE(flow->isAsking());
  EXPECT_TRUE(app.awake->isOn());

  answer = true;
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::now);
  EXPECT_EQ(asked.size(), 2u);
  EXPECT_TRUE(app.intents->isAwakeRequested());  // restored at the next launch

  // A session held only for a process promises no return: it may be gone.
  app.awake->turnOff();
  ASSERT_EQ(app.binding->hold(4242, std::nullopt), std::nullopt);
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::now);
  EXPECT_EQ(asked.back(), QuitConfirmation::awakeMode(std::nullopt, /*comesBack=*/false));
}

TEST_F(QuitFlowTest, AnAutomaticSessionQuitsUnquestionedUnlessDeepwakeRunsInIt) {
  app.awake->turnOnAutomatically();
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::now);
  app.turnOnDeepwake();
  flow->shouldTerminate();
  EXPECT_EQ(asked, std::vector{QuitConfirmation::deepwake(std::nullopt)});
}

TEST_F(QuitFlowTest, ConfirmingDeepwakeEndsItAndWaitsForTheHelperButAFlowThatIsGoneRepliesNothing) {
  app.turnOnDeepwake(7200);
  app.helper->holdsReplies = true;

  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::later);
  EXPECT_EQ(asked, std::vector{QuitConfirmation::deepwake(7200)});
  EXPECT_FALSE(app.lid->isOn());
  // The check before the question renewed the lease; then came the give-back.
  EXPECT_EQ(app.helper->unanswered.size(), 2u);
  EXPECT_TRUE(flow->isWaitingForHelper());
  ASSERT_EQ(delayed.size(), 1u);
  EXPECT_EQ(delayed[0].first, 5.0);
  EXPECT_TRUE(replies.empty());

  app.helper->answerNext();
  EXPECT_TRUE(replies.empty());
  app.helper->answerNext();
  EXPECT_EQ(replies, std::vector{true});
  EXPECT_FALSE(flow->isWaitingForHelper());
  runDelayed();
  EXPECT_EQ(replies, std::vector{true});  // answered once only

  // A flow that is gone replies nothing.
  app.turnOnDeepwake();
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::later);
  flow.reset();
  app.helper->answerAll();
  runDelayed();
  EXPECT_EQ(replies, std::vector{true});
}

TEST_F(QuitFlowTest, TheUsersQuitAgainWhileAskingOrWaitingIsIgnoredALogOutIsNotQuestionedButWaitsUnlessAskedAgain) {
  app.turnOnDeepwake();
  app.helper->holdsReplies = true;
  std::optional<TerminateReply> duringQuestion;
  whileAsking = [&] { duringQuestion = flow->shouldTerminate(); };

  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::later);
  EXPECT_EQ(duringQuestion, TerminateReply::cancel);
  whileAsking = nullptr;

  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::cancel);
  EXPECT_EQ(asked.size(), 1u);
  EXPECT_EQ(delayed.size(), 1u);
  app.helper->answerAll();
  EXPECT_EQ(replies, std::vector{true});

  app.turnOnDeepwake();
  systemQuit = true;

  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::later);
  EXPECT_EQ(asked.size(), 1u);  // not questioned
  EXPECT_FALSE(app.lid->isOn());
  EXPECT_EQ(app.helper->unanswered.size(), 1u);
  EXPECT_TRUE(app.awake->isOn());  // the session is left to be restored

  // A second request from the system while waiting quits at once, and is
  // the reply.
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::now);
  EXPECT_FALSE(flow->isWaitingForHelper());
  app.helper->answerAll();
  runDelayed();
  EXPECT_EQ(replies, std::vector{true});
}

// --- Quits the system starts ---

TEST_F(QuitFlowTest, AnUpdateRelaunchIsNeverQuestionedButStillWaitsForTheHelper) {
  app.awake->turnOn(std::nullopt);
  flow->setRelaunchingForUpdate(true);
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::now);
  EXPECT_TRUE(app.intents->isAwakeRequested());

  app.turnOnDeepwake();
  app.helper->holdsReplies = true;
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::later);
  EXPECT_TRUE(asked.empty());
  // A helper that never answers holds the quit five seconds at most, and
  // answering later replies nothing more.
  runDelayed();
  EXPECT_EQ(replies, std::vector{true});
  app.helper->answerAll();
  EXPECT_EQ(replies, std::vector{true});
}

}  // namespace
}  // namespace wakeloft
