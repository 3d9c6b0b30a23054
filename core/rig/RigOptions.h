#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace wakeloft {

// The lease rig's command line:
//   WakeloftLidHelper --rig --socket PATH [--rig-file PATH] [--lid-file PATH] [--allow-uid UID]
struct RigOptions {
  std::string socketPath;
  std::string rigFilePath;
  std::optional<std::string> lidFilePath;
  uid_t allowedUid = 0;

  static constexpr const char* usage =
      "usage: WakeloftLidHelper --rig --socket PATH [--rig-file PATH] [--lid-file PATH] [--allow-uid UID]";

  struct Error {
    std::string message;
  };
  // `arguments` excludes the program name. `ownUid` is the default allowed uid.
  static std::variant<RigOptions, Error> parse(const std::vector<std::string>& arguments, uid_t ownUid);
};

}  // namespace wakeloft
