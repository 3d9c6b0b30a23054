#include "lease/LidLeaseStatus.h"

#include <gtest/gtest.h>

namespace wakeloft {
namespace {

using Setting = LidLeaseStatus::Setting;

TEST(LidLeaseStatusTest, EveryStatusReadsBackFromItsText) {
  for (const LidLeaseStatus& status : {LidLeaseStatus{Setting::off, "", std::nullopt},
                                       LidLeaseStatus{Setting::on, "", 29.75}, LidLeaseStatus{Setting::on, "", 0.0},
                                       LidLeaseStatus{Setting::unreadable, "pmset: no answer", std::nullopt},
                                       LidLeaseStatus{Setting::unreadable, "", 3.0}}) {
    EXPECT_EQ(LidLeaseStatus::read(status.text()), status) << status.text();
  }
}

TEST(LidLeaseStatusTest, AnyOtherTextReadsAsNothing) {
  for (const char* text : {"", "status", "status setting=2 lease=none", "status setting=1 lease=", "status setting=1",
                           "status setting=1 lease=30.5", "status setting=1 lease=-1", "status setting=1 lease=-0",
                           "status setting=1 lease=nan", "status setting=1 lease=none ",
                           "status setting=0 lease=none because=x", "status setting=unreadable lease=none",
                           "Status setting=0 lease=none", "The sleep setting could not be written: x"}) {
    EXPECT_EQ(LidLeaseStatus::read(text), std::nullopt) << '"' << text << '"';
  }
}

}  // namespace
}  // namespace wakeloft
