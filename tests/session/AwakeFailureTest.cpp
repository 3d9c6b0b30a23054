#include "session/AwakeFailure.h"

#include <gtest/gtest.h>

#include <system_error>

#include "lid/LidSleepBlockerError.h"
#include "session/SleepBlockerError.h"

namespace wakeloft {
namespace {

TEST(AwakeFailureTest, MapsEachKindOfErrorToItsCase) {
  EXPECT_EQ(AwakeFailure::from(SleepBlockerError::assertionFailed(-536870212)),
            AwakeFailure(AwakeFailure::AssertionRefused{-536870212}));
  EXPECT_EQ(AwakeFailure::from(LidSleepBlockerError::helperRequiresApproval()),
            AwakeFailure(AwakeFailure::LidHelperRequiresApproval{}));
  EXPECT_EQ(AwakeFailure::from(LidSleepBlockerError::helperUnavailable()),
            AwakeFailure(AwakeFailure::LidHelperUnavailable{}));
}

TEST(AwakeFailureTest, HelperRefusalTextBecomesARefusal) {
  const auto failure = AwakeFailure::from(
      LidSleepBlockerError::helperRefused("The sleep setting could not be written: Operation not permitted"));
  ASSERT_NE(failure.as<AwakeFailure::LidHelperRefused>(), nullptr);
  EXPECT_EQ(failure.as<AwakeFailure::LidHelperRefused>()->refusal,
            LidHelperRefusal::settingUnwritten("Operation not permitted"));
}

TEST(AwakeFailureTest, AnyOtherErrorKeepsItsOwnWords) {
  const std::system_error error(std::make_error_code(std::errc::permission_denied), "Could not register");
  const auto failure = AwakeFailure::from(std::make_exception_ptr(error));
  ASSERT_NE(failure.as<AwakeFailure::Reported>(), nullptr);
  EXPECT_EQ(failure.as<AwakeFailure::Reported>()->message, error.what());
}

TEST(AwakeFailureTest, SystemErrorTypesDescribeThemselvesAsThePlatformWould) {
  EXPECT_STREQ(SleepBlockerError::assertionFailed(5).what(),
               "The operation couldn\u2019t be completed. (WakeloftCore.SleepBlockerError error 0.)");
  EXPECT_EQ(LidSleepBlockerError::helperRequiresApproval().code(), 2);
}

}  // namespace
}  // namespace wakeloft
