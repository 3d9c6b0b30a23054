#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "lid/UnavailableLidSleepBlocker.h"
#include "support/CompletionLog.h"

namespace wakeloft {
namespace {

using testing::CompletionLog;
using ::testing::ElementsAre;
using testing::failure;
using testing::success;

const Date noon = Date::fromSecondsSince1970(1'700'000'000);

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
