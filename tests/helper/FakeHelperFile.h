#pragma once

#include <optional>
#include <stdexcept>
#include <string>

#include "helper/LidHelperFileWatch.h"

namespace wakeloft::testing {

inline const std::string helperPath = "/Applications/Wakeloft.app/Contents/Helpers/WakeloftLidHelper";
inline const std::string runningHash = "1111111111111111111111111111111111111111";
inline const std::string newHash = "2222222222222222222222222222222222222222";

// The helper's file on a disk the test changes by hand, and a signature check
// that counts how often it runs.
struct FakeHelperFile {
  std::optional<LidHelperFileWatch::Identity> identity = LidHelperFileWatch::Identity{7, 100, 4096, 1'700'000'000, 0};
  std::optional<std::string> hash = runningHash;
  bool judgeThrows = false;
  int judgements = 0;

  // A watch started from this file as it is now.
  LidHelperFileWatch watch() {
    return LidHelperFileWatch(
        helperPath, runningHash, {7, 100}, [this](const std::string&) { return identity; },
        [this](const std::string&) -> std::optional<std::string> {
          ++judgements;
          if (judgeThrows) throw std::runtime_error("Security framework refused");
          return hash;
        });
  }
  // An update moves new signed code into place: a new inode.
  void replace() {
    identity = LidHelperFileWatch::Identity{7, 200, 8192, 1'700'000'100, 0};
    hash = newHash;
  }
};

}  // namespace wakeloft::testing
