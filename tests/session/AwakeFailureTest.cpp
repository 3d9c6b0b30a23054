#include "session/AwakeFailure.h"

#include <gtest/gtest.h>

#include <system_error>

#include "lid/LidSleepBlockerError.h"
#include "session/SleepBlockerError.h"

namespace wakeloft {
namespace {

TEST(AwakeFailureTest, MapsEachKindOfErrorToItsCaseKeepingTheWordsOfOthers) {
  EXPECT_EQ(AwakeFailure::from(SleepBlockerError::assertionFailed(-536870212)),
            AwakeFailure(AwakeFailure::AssertionRefused{-536870212}));
  EXPECT_EQ(AwakeFailure::from(LidSleepBlockerError::helperRequiresApproval()),
            AwakeFailure(AwakeFailure::LidHelperRequiresApproval{}));
  EXPECT_EQ(AwakeFailure::from(LidSleepBlockerError::helperUnavailable()),
            AwakeFailure(AwakeFailure::LidHelperUnavailable{}));

  EXPECT_EQ(AwakeFailure::from(LidSleepBlockerError::helperRefused(
                "The sleep setting could not be written: Operation not permitted")),
            AwakeFailure(AwakeFailure::LidHelperRefused{LidHelperRefusal::settingUnwritten("Operation not permitted")}));
  const std::system_error error(std::make_error_code(std::errc::permission_denied), "Could not register");
  EXPECT_EQ(AwakeFailure::from(std::make_exception_ptr(error)), AwakeFailure(AwakeFailure::Reported{error.what()}));

  // The system error types describe themselves as the platform would.
  EXPECT_STREQ(SleepBlockerError::assertionFailed(5).what(),
               "The operation couldn\u2019t be completed. (WakeloftCore.SleepBlockerError error 0.)");
  EXPECT_EQ(LidSleepBlockerError::helperRequiresApproval().code(), 2);
}

}  // namespace
}  // namespace wakeloft
