// wakeloft doctor, run as a user runs it, against the real rig helper.

#include <gtest/gtest.h>

#include <fstream>

#include "RigProcess.h"
#include "base/ChildProcess.h"
#include "rig/RigWire.h"

namespace wakeloft {
namespace {

using testing::RigClient;
using testing::RigProcess;

class DoctorRigTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(rig.waitForSocket()) << rig.log(); }

  ChildProcess::Result doctor(bool json = false) const {
    std::vector<std::string> arguments{WAKELOFT_COMMAND_PATH, "doctor", "--socket", rig.socketPath, "--rig-file",
                                       rig.leasePath};
    if (json) arguments.push_back("--json");
    return ChildProcess::run(arguments, 10);
  }

  RigProcess rig;
};

bool says(const ChildProcess::Result& result, const std::string& text) {
  return result.output.find(text) != std::string::npos;
}

TEST_F(DoctorRigTest, WithALeaseHeldNothingIsWrong) {
  RigClient client(rig.socketPath);
  ASSERT_EQ(client.ask(RigWire::renewLine(testing::inSeconds(20))), "");
  const auto result = doctor();
  EXPECT_EQ(result.exitStatus, 0) << result.output;
  EXPECT_TRUE(says(result, "Wakeloft lease: held, ")) << result.output;
}

TEST_F(DoctorRigTest, ARigFileWrittenBehindTheHelpersBackIsWrongAndExits1) {
  std::ofstream(rig.leasePath) << "1731700000.5\n";
  const auto result = doctor(true);
  EXPECT_EQ(result.exitStatus, 1) << result.output;
  EXPECT_TRUE(result.output.starts_with("{\"wrong\":true,")) << result.output;
  EXPECT_TRUE(says(result, "something else keeps your Mac awake with the lid closed; to put it back: rm '" +
                               rig.leasePath.string() + "'"))
      << result.output;
}

}  // namespace
}  // namespace wakeloft
