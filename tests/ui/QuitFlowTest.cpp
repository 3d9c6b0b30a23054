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
        if (whileAsking) whileAsking();
        return answer;
      },
      [this] { return systemQuit; }, [this](bool reply) { replies.push_back(reply); },
      [this](double seconds, std::function<void()> work) { delayed.emplace_back(seconds, std::move(work)); });
};

TEST_F(QuitFlowTest, NothingRunningASessionThatRanOutOrNoneAttachedQuitsUnquestioned) {
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::now);
  app.awake->turnOn(600);
  app.clocks.pass(601);  // its timer has not fired yet
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::now);
  EXPECT_TRUE(asked.empty());
  QuitFlow bare(
      nullptr, [] { return false; }, nullptr, nullptr);
  EXPECT_EQ(bare.shouldTerminate(), TerminateReply::now);
}

TEST_F(QuitFlowTest, ARunningSessionIsQuestionedAndQuittingKeepsItForTheNextLaunch) {
  app.awake->turnOn(1500);
  answer = false;
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::cancel);
  EXPECT_EQ(asked, std::vector{QuitConfirmation::awakeMode(1500)});
  answer = true;
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::now);
  EXPECT_TRUE(app.intents->isAwakeRequested());
}

// It may be gone by the next launch.
TEST_F(QuitFlowTest, ASessionHeldOnlyForAProcessPromisesNoReturn) {
  ASSERT_EQ(app.binding->hold(4242, std::nullopt), std::nullopt);
  flow->shouldTerminate();
  EXPECT_EQ(asked, std::vector{QuitConfirmation::awakeMode(std::nullopt, /*comesBack=*/false)});
}

TEST_F(QuitFlowTest, AnAutomaticSessionQuitsUnquestionedUnlessDeepwakeRunsInIt) {
  app.awake->turnOnAutomatically();
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::now);
  app.turnOnDeepwake();
  flow->shouldTerminate();
  EXPECT_EQ(asked, std::vector{QuitConfirmation::deepwake(std::nullopt)});
}

TEST_F(QuitFlowTest, ConfirmingDeepwakeEndsItAndQuitsOnceTheHelperAnswersOrFiveSecondsPassReplyingOnce) {
  app.turnOnDeepwake(7200);
  app.helper->holdsReplies = true;
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::later);
  EXPECT_FALSE(app.lid->isOn());
  ASSERT_EQ(delayed.size(), 1u);
  EXPECT_EQ(delayed[0].first, 5.0);
  app.helper->answerAll();
  EXPECT_EQ(replies, std::vector{true});
  runDelayed();
  EXPECT_EQ(replies, std::vector{true});
}

TEST_F(QuitFlowTest, AFlowThatIsGoneRepliesNothing) {
  app.turnOnDeepwake();
  app.helper->holdsReplies = true;
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::later);
  flow.reset();
  app.helper->answerAll();
  runDelayed();
  EXPECT_TRUE(replies.empty());
}

TEST_F(QuitFlowTest, TheUsersQuitAgainWhileAskingOrWaitingIsCancelled) {
  app.turnOnDeepwake();
  app.helper->holdsReplies = true;
  std::optional<TerminateReply> duringQuestion;
  whileAsking = [&] { duringQuestion = flow->shouldTerminate(); };
  flow->shouldTerminate();
  EXPECT_EQ(duringQuestion, TerminateReply::cancel);
  whileAsking = nullptr;
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::cancel);
}

TEST_F(QuitFlowTest, ALogOutOrAnUpdateIsNotQuestionedAndWaitsForTheHelperUnlessAskedAgain) {
  app.turnOnDeepwake();
  app.helper->holdsReplies = true;
  systemQuit = true;
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::later);
  EXPECT_FALSE(app.lid->isOn());
  EXPECT_TRUE(app.awake->isOn());                           // the session is left to be restored
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::now);  // the system's second request

  systemQuit = false;
  flow->setRelaunchingForUpdate(true);
  app.turnOnDeepwake();
  EXPECT_EQ(flow->shouldTerminate(), TerminateReply::later);
  EXPECT_TRUE(asked.empty());
}

}  // namespace
}  // namespace wakeloft
