#include "rig/RigOptions.h"

#include <gtest/gtest.h>

namespace wakeloft {
namespace {

RigOptions parsed(const std::vector<std::string>& arguments) {
  const auto result = RigOptions::parse(arguments, 1000);
  if (const auto* error = std::get_if<RigOptions::Error>(&result)) ADD_FAILURE() << error->message;
  return std::holds_alternative<RigOptions>(result) ? std::get<RigOptions>(result) : RigOptions{};
}

std::string refusal(const std::vector<std::string>& arguments) {
  const auto result = RigOptions::parse(arguments, 1000);
  return std::holds_alternative<RigOptions::Error>(result) ? std::get<RigOptions::Error>(result).message : "accepted";
}

TEST(RigOptionsTest, DefaultsFillWhatIsNotGiven) {
  const auto options = parsed({"--rig", "--socket", "/tmp/s"});
  EXPECT_EQ(options.socketPath, "/tmp/s");
  EXPECT_EQ(options.rigFilePath, "/tmp/wakeloft-lid-rig.lease");
  EXPECT_EQ(options.lidFilePath, std::nullopt);
  EXPECT_EQ(options.allowedUid, 1000u);
}

TEST(RigOptionsTest, EveryOptionGoesInAnyOrder) {
  const auto every = parsed({"--allow-uid", "0", "--lid-file", "/l", "--socket", "/s", "--rig-file", "/r", "--rig"});
  EXPECT_EQ(every.socketPath, "/s");
  EXPECT_EQ(every.rigFilePath, "/r");
  EXPECT_EQ(every.lidFilePath, "/l");
  EXPECT_EQ(every.allowedUid, 0u);
}

TEST(RigOptionsTest, BadArgumentsSayWhatIsWrong) {
  EXPECT_EQ(refusal({}), "--rig is required: on this system the helper serves only the lease rig");
  EXPECT_EQ(refusal({"--rig"}), "--socket PATH is required");
  EXPECT_EQ(refusal({"--rig", "--socket", ""}), "--socket needs a value");
  EXPECT_EQ(refusal({"--rig", "--rig", "--socket", "/s"}), "--rig is given twice");
  EXPECT_EQ(refusal({"--rig", "--socket", "/s", "--socket", "/t"}), "--socket is given twice");
  EXPECT_EQ(refusal({"--rig", "--socket", "/s", "--verbose"}), "unknown argument \"--verbose\"");
  EXPECT_EQ(refusal({"--rig", "--socket", "/s", "--allow-uid", "12x"}), "--allow-uid needs a user id, not \"12x\"");
  EXPECT_EQ(refusal({"--rig", "--socket", "/s", "--allow-uid", "4294967295"}),
            "--allow-uid needs a user id, not \"4294967295\"");
}

}  // namespace
}  // namespace wakeloft
