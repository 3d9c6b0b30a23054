#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include "Ed25519Keys.h"
#include "helper/TemporaryDirectory.h"
#include "release/Appcast.h"
#include "release/AppcastRelease.h"

namespace wakeloft {
namespace {

using testing::rfcPublicKey;
using testing::TemporaryDirectory;

// Earlier releases written by other hands: tabs, a comment, CDATA notes,
// a version only on the enclosure.
constexpr std::string_view earlierFeed =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
    "<rss version=\"2.0\" xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\">\n"
    "\t<channel>\n"
    "\t\t<title>Wakeloft</title>\n"
    "\t\t<!-- newest first -->\n"
    "\t\t<item><title>Version 1.1</title><sparkle:version>1.1</sparkle:version>\n"
    "\t\t\t<description><![CDATA[<ul><li>Fixes</li></ul>]]></description></item>\n"
    "\t\t<item><enclosure url=\"https://x/1.0.zip\" sparkle:version=\"1.0\" length=\"1\"/></item>\n"
    "\t</channel>\n"
    "</rss>\n";

class AppcastReleaseTest : public ::testing::Test {
 protected:
  AppcastReleaseTest() {
    release.feedPath = directory.write("appcast.xml", earlierFeed);
    release.archivePath = directory.write("Wakeloft-1.2.zip", archive);
    release.privateKeyPath = directory.write("key", std::string(testing::rfcSeed) + "\n");
    release.publicKey = rfcPublicKey;
    release.changelogPath = directory.write("CHANGELOG.md", "# Changelog\n\n## [1.2] - 2026-05-01\n- Fixed <b> & `x`\n\n## [1.1]\n- Old\n");
    release.url = "https://github.com/wakeloft/wakeloft/releases/download/v1.2/Wakeloft-1.2.zip";
    release.version = "1.2";
    release.shortVersion = "1.2";
    release.minimumSystemVersion = "14.0";
    release.publicationDate = 1'700'000'000;
  }

  std::string feed() const {
    std::stringstream content;
    content << std::ifstream(release.feedPath, std::ios::binary).rdbuf();
    return content.str();
  }

  std::size_t files() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(directory.path()), {}));
  }

  static constexpr char archiveBytes[] = "PK\3\4 a release archive\0 with any bytes";
  const std::string archive = std::string(archiveBytes, sizeof archiveBytes - 1);
  TemporaryDirectory directory;
  AppcastRelease release;
};

TEST_F(AppcastReleaseTest, TheReleaseGoesFirstKeepingEveryEarlierByteAndTheFileMode) {
  std::filesystem::permissions(release.feedPath, std::filesystem::perms(0640));
  ASSERT_TRUE(std::holds_alternative<AppcastItem>(release.add()));
  const std::string written = feed();
  const auto firstItem = earlierFeed.find("\t\t<item>");
  EXPECT_TRUE(written.starts_with(earlierFeed.substr(0, firstItem)));
  EXPECT_TRUE(written.ends_with(earlierFeed.substr(firstItem)));
  EXPECT_EQ(std::get<Appcast>(Appcast::read(written)).versions(), (std::vector<std::string>{"1.2", "1.1", "1.0"}));
  // The notes are the version's section alone, escaped so the feed still reads.
  EXPECT_NE(written.find("<description>&lt;ul&gt;&lt;li&gt;Fixed &amp;lt;b&amp;gt; &amp;amp; &lt;code&gt;x&lt;/code&gt;"
                         "&lt;/li&gt;&lt;/ul&gt;</description>"),
            std::string::npos)
      << written;
  EXPECT_EQ(std::filesystem::status(release.feedPath).permissions(), std::filesystem::perms(0640));
  EXPECT_EQ(files(), 4u) << "a temporary file is left";
}

TEST_F(AppcastReleaseTest, ANewFeedHoldsTheArchiveSignedForThePublicKey) {
  std::filesystem::remove(release.feedPath);
  release.newFeedLink = "https://wakeloft.app/appcast.xml";
  const auto added = release.add();
  ASSERT_TRUE(std::holds_alternative<AppcastItem>(added)) << std::get<AppcastRelease::Error>(added).message;
  EXPECT_TRUE(testing::verifies(rfcPublicKey, archive, std::get<AppcastItem>(added).edSignature));
  EXPECT_EQ(std::get<AppcastItem>(added).length, archive.size());
  const std::string created = feed();
  EXPECT_NE(created.find("<link>https://wakeloft.app/appcast.xml</link>"), std::string::npos);
  EXPECT_EQ(std::get<Appcast>(Appcast::read(created)).versions(), std::vector<std::string>{"1.2"});
}

TEST_F(AppcastReleaseTest, EachRefusalSaysWhyAndLeavesTheFeedUntouched) {
  const std::pair<std::function<void(AppcastRelease&)>, std::string> refusals[] = {
      {[](AppcastRelease& r) { r.version = "1.1.0"; }, "build version 1.1.0 does not grow"},
      {[](AppcastRelease& r) { r.publicKey = "rhHib+w769W2/6/t+oM1ZxgjBB93BfBKMLO0Qo1etQs="; },
       "does not belong to the public key"},
      {[](AppcastRelease& r) { r.shortVersion = "1.3"; }, "CHANGELOG.md has no section \"## [1.3]\""},
      {[this](AppcastRelease& r) { r.archivePath = directory.write("empty.zip", ""); }, "is empty"},
      {[](AppcastRelease& r) { r.newFeedLink = "https://wakeloft.app"; }, "is already there"},
      {[this](AppcastRelease& r) { r.feedPath = directory.write("bad.xml", "<rss version=\"2.0\"><channel>"); },
       "bad.xml is not an appcast to add to"},
      {[this](AppcastRelease& r) { r.feedPath = directory.path() / "none.xml"; }, "give --new-feed LINK"},
  };
  const std::string before = feed();
  for (const auto& [change, message] : refusals) {
    AppcastRelease changed = release;
    change(changed);
    const std::size_t filesBefore = files();
    const auto added = changed.add();
    ASSERT_TRUE(std::holds_alternative<AppcastRelease::Error>(added)) << message;
    EXPECT_NE(std::get<AppcastRelease::Error>(added).message.find(message), std::string::npos)
        << std::get<AppcastRelease::Error>(added).message;
    EXPECT_EQ(feed(), before) << message;
    EXPECT_EQ(files(), filesBefore) << message;
  }
}

TEST(AppcastReleaseCommandLineTest, AMalformedValueIsRefused) {
  const std::vector<std::string> full = {
      "--feed", "f.xml", "--archive", "a.zip", "--url", "https://x/a.zip", "--version", "120", "--short-version", "1.2",
      "--minimum-system-version", "14.0", "--private-key", "k", "--public-key", std::string(rfcPublicKey),
      "--changelog", "CHANGELOG.md"};
  ASSERT_TRUE(std::holds_alternative<AppcastRelease>(AppcastRelease::parse(full, 7)));
  // Each row gives an option a value, adding the option when it is not there.
  const std::pair<std::string, std::string> refusals[] = {
      {"--new-feed", "https://a b"}, {"--url", "http://x/a.zip"}, {"--version", "1.2 beta"}, {"--public-key", "AAAA"},
  };
  for (const auto& [option, value] : refusals) {
    auto arguments = full;
    const auto at = std::find(arguments.begin(), arguments.end(), option);
    if (at == arguments.end()) {
      arguments.insert(arguments.end(), {option, value});
    } else {
      at[1] = value;
    }
    EXPECT_TRUE(std::holds_alternative<AppcastRelease::Error>(AppcastRelease::parse(arguments, 7))) << option << value;
  }
}

}  // namespace
}  // namespace wakeloft
