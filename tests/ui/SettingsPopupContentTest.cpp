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

TEST_F(SettingsPopupContentTest, StarsShowWhatIsPinnedAndTogglingOneStoresIt) {
  EXPECT_EQ(stars(), (std::vector<bool>{true, true, true, false, false, false}));
  SettingsPopupContent::toggle({3600}, presets);
  SettingsPopupContent::toggle({28800}, presets);
  EXPECT_EQ(stars(), (std::vector<bool>{true, false, true, false, false, true}));
  EXPECT_EQ(store->stored, (std::vector<double>{1800, 7200, 28800}));
}

}  // namespace
}  // namespace wakeloft
