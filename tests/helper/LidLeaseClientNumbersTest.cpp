#include "helper/LidLeaseClientNumbers.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <thread>
#include <vector>

namespace wakeloft {
namespace {

TEST(LidLeaseClientNumbersTest, NumbersStartAtOneAndAreNeverHandedOutTwiceAcrossThreads) {
  LidLeaseClientNumbers numbers;
  EXPECT_EQ(numbers.next(), 1u);

  constexpr int threads = 8;
  constexpr int perThread = 2000;
  std::vector<std::vector<std::uint64_t>> taken(threads);
  std::vector<std::thread> workers;
  for (int t = 0; t < threads; ++t) {
    workers.emplace_back([&numbers, &mine = taken[t]] {
      for (int i = 0; i < perThread; ++i) mine.push_back(numbers.next());
    });
  }
  for (auto& worker : workers) worker.join();

  std::set<std::uint64_t> all;
  for (const auto& mine : taken) all.insert(mine.begin(), mine.end());
  EXPECT_EQ(all.size(), static_cast<std::size_t>(threads * perThread));
}

TEST(LidLeaseClientNumbersDeathTest, RunningOutStopsTheProcessRatherThanReuseANumber) {
  LidLeaseClientNumbers numbers(std::numeric_limits<std::uint64_t>::max() - 1);
  EXPECT_EQ(numbers.next(), std::numeric_limits<std::uint64_t>::max());
  EXPECT_DEATH(numbers.next(), "no client numbers are left");
}

}  // namespace
}  // namespace wakeloft
