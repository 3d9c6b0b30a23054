#include "helper/BundleVersion.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "support/SystemPropertyListParser.h"
#include "TemporaryDirectory.h"
#include "base/PropertyListXMLWriter.h"

namespace wakeloft {
namespace {

using testing::TemporaryDirectory;

constexpr const char* program = "Wakeloft.app/Contents/Helpers/WakeloftLidHelper";

PropertyList info(PropertyList shortVersion, PropertyList build) {
  return PropertyList::Dictionary{
      {"CFBundleIdentifier", "com.wakeloft.app"},
      {"CFBundleShortVersionString", std::move(shortVersion)},
      {"CFBundleVersion", std::move(build)},
  };
}

class BundleVersionTest : public ::testing::Test {
 protected:
  std::string executable() const { return (directory.path() / program).string(); }
  void writeInfo(std::string_view content) const { directory.write("Wakeloft.app/Contents/Info.plist", content); }
  std::optional<BundleVersion> read() const { return BundleVersion::aroundExecutable(executable(), parser); }

  TemporaryDirectory directory;
  testing::SystemPropertyListParser parser;
};

TEST_F(BundleVersionTest, ReadsAnInfoPlistOfAtMostOneMebibyte) {
  // Padding inside a string keeps the list valid at any size.
  const auto sized = [](std::size_t total) {
    const auto padded = [](std::size_t padding) {
      auto list = info("1.4", "27");
      std::get<PropertyList::Dictionary>(list.value).emplace_back("Padding", std::string(padding, 'x'));
      return PropertyListXMLWriter::document(list);
    };
    return padded(total - padded(0).size());
  };
  writeInfo(sized(BundleVersion::maxInfoPlistBytes));
  EXPECT_EQ(read(), (BundleVersion{"1.4", "27"}));
  writeInfo(sized(BundleVersion::maxInfoPlistBytes + 1));
  EXPECT_EQ(read(), std::nullopt);
}

TEST_F(BundleVersionTest, AnythingButAVersionDictionaryIsNotRead) {
  EXPECT_EQ(read(), std::nullopt);  // missing
  const PropertyList noShortVersion = PropertyList::Dictionary{{"CFBundleVersion", "27"}};
  for (const std::string& content : {std::string("not a property list"),
                                     PropertyListXMLWriter::document(PropertyList::Array{"1.4", "27"}),
                                     PropertyListXMLWriter::document(noShortVersion)}) {
    writeInfo(content);
    EXPECT_EQ(read(), std::nullopt) << content;
  }
}

TEST_F(BundleVersionTest, OnlyARegularFileTwoLevelsAboveTheProgramIsRead) {
  writeInfo(PropertyListXMLWriter::document(info("1.4", "27")));
  for (const std::string& other : {std::string(), std::string("WakeloftLidHelper"), executable() + "/"}) {
    EXPECT_EQ(BundleVersion::aroundExecutable(other, parser), std::nullopt) << other;
  }
  const auto plist = directory.path() / "Wakeloft.app/Contents/Info.plist";
  std::filesystem::remove(plist);
  // A pipe with no writer would hold a blocking open forever.
  ASSERT_EQ(::mkfifo(plist.c_str(), 0600), 0);
  EXPECT_EQ(read(), std::nullopt);
}

TEST(BundleVersionTextTest, BothTextsMustBeShortPlainVersionTexts) {
  const std::string longest(64, '9');
  EXPECT_EQ(BundleVersion::fromInfoDictionary(info(longest, "1")), (BundleVersion{longest, "1"}));
  EXPECT_EQ(BundleVersion::fromInfoDictionary(info("1.0", longest + "9")), std::nullopt);
  for (const char* bad : {"", "1.0 ", "1,0", "v1\n", "1.0\u00e9", "\"1\""}) {
    EXPECT_EQ(BundleVersion::fromInfoDictionary(info(bad, "1")), std::nullopt) << bad;
    EXPECT_EQ(BundleVersion::fromInfoDictionary(info("1", bad)), std::nullopt) << bad;
  }
  // A number is not a version text, even one that looks like it.
  EXPECT_EQ(BundleVersion::fromInfoDictionary(info("1.4", 27)), std::nullopt);
  EXPECT_EQ(BundleVersion::fromInfoDictionary(info(1.4, "27")), std::nullopt);
}

}  // namespace
}  // namespace wakeloft
