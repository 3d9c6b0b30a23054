#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "session/PowerAssertions.h"

namespace wakeloft::testing {

// Answers like the power-management calls would and remembers every call.
struct RecordingPowerAssertions final : PowerAssertions {
  struct Request {
    std::string type;
    std::uint32_t level;
    std::string name;
  };
  std::vector<Request> creations;
  std::vector<std::uint32_t> releases;
  std::int32_t createCode = 0;
  std::int32_t releaseCode = 0;
  std::uint32_t lastID = 40;

  Creation create(const std::string& type, std::uint32_t level, const std::string& name) override {
    creations.push_back({type, level, name});
    if (createCode != 0) return {createCode, 0xBAD};
    return {0, ++lastID};
  }
  std::int32_t release(std::uint32_t assertionID) override {
    releases.push_back(assertionID);
    return releaseCode;
  }
  // Assertions the system has let go of by itself.
  std::vector<std::uint32_t> dropped;
  bool isHeld(std::uint32_t assertionID, const std::string&, const std::string&) override {
    return std::find(dropped.begin(), dropped.end(), assertionID) == dropped.end();
  }
};

}  // namespace wakeloft::testing
