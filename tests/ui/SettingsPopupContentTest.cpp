#include "ui/SettingsPopupContent.h"

#include <gtest/gtest.h>

#include <memory>

#include "prefs/InMemoryPresetDurationStore.h"

namespace wakeloft {
namespace {

class SettingsPopupContentTest : public ::testing::Test {
 protected:
  std::vector<bool> stars() const {
    const auto content = SettingsPopupContent::current(presets, "en_US");
    std::vector<bool> starred;
    for (const auto& row : content.rows) starred.push_back(row.isStarred);
    return starred;
  }

  std::shared_ptr<InMemoryPresetDurationStore> store = std::make_shared<InMemoryPresetDurationStore>();
  PresetDurationsController presets{store};
};

TEST_F(SettingsPopupContentTest, EveryCandidateHasARowStarredAsChosenAndStarsComeOffAndGoOnAndAreStoredButNoFourth) {
  const auto content = SettingsPopupContent::current(presets, "en_US");
  ASSERT_EQ(content.rows.size(), 6u);
  const std::vector<std::string> labels = {"30m", "1h", "2h", "4h", "6h", "8h"};
  for (std::size_t i = 0; i < labels.size(); ++i) EXPECT_EQ(content.rows[i].label.english(), labels[i]);
  EXPECT_EQ(content.rows[3].duration, AwakeDuration{14400});
  EXPECT_EQ(content.rows[0].spokenLabel.english(), "30 minutes");
  EXPECT_EQ(stars(), (std::vector<bool>{true, true, true, false, false, false}));
  EXPECT_EQ(content.rows[0].symbolName(), "star.fill");
  EXPECT_EQ(content.rows[5].symbolName(), "star");

  SettingsPopupContent::toggle({28800}, presets);
  EXPECT_EQ(stars(), (std::vector<bool>{true, true, true, false, false, false}));
  EXPECT_EQ(store->stored, (std::vector<double>{1800, 3600, 7200}));

  SettingsPopupContent::toggle({3600}, presets);
  SettingsPopupContent::toggle({28800}, presets);
  EXPECT_EQ(stars(), (std::vector<bool>{true, false, true, false, false, true}));
  EXPECT_EQ(store->stored, (std::vector<double>{1800, 7200, 28800}));

  for (const double seconds : {1800.0, 7200.0, 28800.0}) SettingsPopupContent::toggle({seconds}, presets);
  EXPECT_TRUE(presets.pinned().empty());
  EXPECT_EQ(store->stored, std::vector<double>{});
}

}  // namespace
}  // namespace wakeloft
