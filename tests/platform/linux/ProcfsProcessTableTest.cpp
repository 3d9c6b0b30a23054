// Reading /proc/PID/stat: the name in parentheses, then the start time.

#include <gtest/gtest.h>

#include "ProcfsProcessTable.h"

namespace wakeloft {
namespace {

TEST(ProcfsProcessTableTest, ReadsTheStartTimeFromField22AfterAnyName) {
  // Fields 4 to 21 are numbered 4..21, so a reading one field off shows.
  std::string fields;
  for (int field = 4; field <= 21; ++field) fields += " " + std::to_string(field);
  const std::vector<std::pair<std::string, std::optional<RunningProcess>>> cases = {
      {"42 (make) S" + fields + " 987654 23 24", RunningProcess{{42, 987654}, "make"}},
      {"42 (a) b (c)) R" + fields + " 55 23", RunningProcess{{42, 55}, "a) b (c)"}},
      {"42 (make) Z" + fields + " 987654 23", std::nullopt},
      {"42 (make) S" + fields, std::nullopt},
      {"42 make S" + fields + " 1", std::nullopt},
  };
  for (const auto& [stat, process] : cases) EXPECT_EQ(ProcfsProcessTable::parse(stat, 42), process) << stat;
}

}  // namespace
}  // namespace wakeloft
