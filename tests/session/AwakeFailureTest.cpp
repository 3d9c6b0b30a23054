#include "session/AwakeFailure.h"

#include <gtest/gtest.h>

#include <system_error>

#include "lid/LidSleepBlockerError.h"
#include "session/SleepBlockerError.h"

namespace wakeloft {
namespace {

// The lease and assertion failures are mapped in the controllers' tests.
TEST(AwakeFailureTest, AHelpersRefusalIsReadForItsReasonAndOtherErrorsKeepTheirWords) {
  EXPECT_EQ(
      AwakeFailure::from(
          LidSleepBlockerError::helperRefused("The sleep setting could not be written: Operation not permitted")),
      AwakeFailure(AwakeFailure::LidHelperRefused{LidHelperRefusal::settingUnwritten("Operation not permitted")}));
  const std::system_error error(std::make_error_code(std::errc::permission_denied), "Could not register");
  EXPECT_EQ(AwakeFailure::from(std::make_exception_ptr(error)), AwakeFailure(AwakeFailure::Reported{error.what()}));
}

TEST(SleepBlockerErrorTest, DescribesItselfAsThePlatformWould) {
  EXPECT_STREQ(SleepBlockerError::assertionFailed(5).what(),
               "The operation couldn\u2019t be completed. (WakeloftCore.SleepBlockerError error 0.)");
}

}  // namespace
}  // namespace wakeloft
