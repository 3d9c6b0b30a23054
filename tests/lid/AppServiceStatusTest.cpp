#include "lid/AppServiceStatus.h"

#include <gtest/gtest.h>

namespace wakeloft {
namespace {

TEST(AppServiceStatusTest, SystemValuesMapOntoHelperStatesAndUnknownOnesReadAsNotRegistered) {
  EXPECT_EQ(AppServiceStatus::lidHelperStatus(0), LidHelperStatus::notRegistered);
  EXPECT_EQ(AppServiceStatus::lidHelperStatus(1), LidHelperStatus::enabled);
  EXPECT_EQ(AppServiceStatus::lidHelperStatus(2), LidHelperStatus::requiresApproval);
  EXPECT_EQ(AppServiceStatus::lidHelperStatus(3), LidHelperStatus::notFound);
  EXPECT_EQ(AppServiceStatus::lidHelperStatus(4), LidHelperStatus::notRegistered);
}

}  // namespace
}  // namespace wakeloft
