#include "session/AwakeFailure.h"

#include <gtest/gtest.h>

#include <system_error>

namespace wakeloft {
namespace {

// The lease and assertion failures are mapped in the controllers' tests, a
// helper's refusal in the panel's.
TEST(AwakeFailureTest, AnyOtherErrorKeepsItsWords) {
  const std::system_error error(std::make_error_code(std::errc::permission_denied), "Could not register");
  EXPECT_EQ(AwakeFailure::from(std::make_exception_ptr(error)), AwakeFailure(AwakeFailure::Reported{error.what()}));
}

}  // namespace
}  // namespace wakeloft
