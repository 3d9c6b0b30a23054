// The zone half of the re-check notifier, on a link in a directory of its own
// that stands in for /etc/localtime; the clock half is ClockChangeNotifier's.

#include "SystemDeadlineRecheckNotifier.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <memory>

#include "support/MainLoopPump.h"

namespace wakeloft {
namespace {

namespace fs = std::filesystem;
using testing::pumpMainLoopFor;
using testing::pumpMainLoopUntil;

// A notifier watching a link to Berlin's zone, counting what it tells.
struct SystemDeadlineRecheckNotifierTest : ::testing::Test {
  SystemDeadlineRecheckNotifierTest() {
    std::string pattern = (fs::temp_directory_path() / "wakeloft-zone-XXXXXX").string();
    dir = mkdtemp(pattern.data());
    fs::create_symlink("/usr/share/zoneinfo/Europe/Berlin", dir / "localtime");
    notifier = std::make_unique<SystemDeadlineRecheckNotifier>((dir / "localtime").string());
    notifier->observe([this] { ++told; });
  }
  ~SystemDeadlineRecheckNotifierTest() override { fs::remove_all(dir); }

  fs::path dir;
  std::unique_ptr<SystemDeadlineRecheckNotifier> notifier;
  int told = 0;
};

// As timedatectl sets it: a new link renamed over the old one.
TEST_F(SystemDeadlineRecheckNotifierTest, SettingTheZoneAsksForARecheck) {
  fs::create_symlink("/usr/share/zoneinfo/America/New_York", dir / "localtime.new");
  fs::rename(dir / "localtime.new", dir / "localtime");
  EXPECT_TRUE(pumpMainLoopUntil([&] { return told > 0; }, 5));
}

TEST_F(SystemDeadlineRecheckNotifierTest, AnotherFileBesideTheZoneAsksForNothing) {
  std::ofstream(dir / "hostname") << "mac\n";
  pumpMainLoopFor(0.5);
  EXPECT_EQ(told, 0);
}

}  // namespace
}  // namespace wakeloft
