// The zone half of the re-check notifier, on a link in a directory of its own
// that stands in for /etc/localtime; the clock half is ClockChangeNotifier's.

#include "SystemDeadlineRecheckNotifier.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>

#include "support/MainLoopPump.h"

namespace wakeloft {
namespace {

namespace fs = std::filesystem;
using testing::pumpMainLoopFor;
using testing::pumpMainLoopUntil;

struct ZoneLink {
  ZoneLink() {
    std::string pattern = (fs::temp_directory_path() / "wakeloft-zone-XXXXXX").string();
    dir = mkdtemp(pattern.data());
    link = dir / "localtime";
    fs::create_symlink("/usr/share/zoneinfo/Europe/Berlin", link);
  }
  ~ZoneLink() { fs::remove_all(dir); }

  fs::path dir;
  fs::path link;
};

// As timedatectl sets it: a new link renamed over the old one.
TEST(SystemDeadlineRecheckNotifierTest, SettingTheZoneAsksForARecheck) {
  ZoneLink zone;
  SystemDeadlineRecheckNotifier notifier(zone.link.string());
  int told = 0;
  notifier.observe([&] { ++told; });
  fs::create_symlink("/usr/share/zoneinfo/America/New_York", zone.dir / "localtime.new");
  fs::rename(zone.dir / "localtime.new", zone.link);
  EXPECT_TRUE(pumpMainLoopUntil([&] { return told > 0; }, 5));
}

TEST(SystemDeadlineRecheckNotifierTest, AnotherFileBesideTheZoneAsksForNothing) {
  ZoneLink zone;
  SystemDeadlineRecheckNotifier notifier(zone.link.string());
  int told = 0;
  notifier.observe([&] { ++told; });
  std::ofstream(zone.dir / "hostname") << "mac\n";
  pumpMainLoopFor(0.5);
  EXPECT_EQ(told, 0);
}

}  // namespace
}  // namespace wakeloft
