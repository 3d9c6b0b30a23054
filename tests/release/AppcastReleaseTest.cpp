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
    std::ifstream in(release.feedPath, std::ios::binary);
    std::stringstream content;
    content << in.rdbuf();
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

TEST_F(AppcastReleaseTest, TheReleaseIsAddedKeepingEveryEarlierByteAndTheFileModeOrInANewFeedSignedForItsPublicKey) {
  std::filesystem::permissions(release.feedPath, std::filesystem::perms(0640));
  ASSERT_TRUE(std::holds_alternative<AppcastItem>(release.add()));
  const std::string written = feed();
  const auto firstItem = earlierFeed.find("\t\t<item>");
  EXPECT_TRUE(written.starts_with(earlierFeed.substr(0, firstItem)));
  EXPECT_TRUE(written.ends_with(earlierFeed.substr(firstItem)));
  EXPECT_EQ(written.substr(firstItem, 8), "\t\t<item>");
  EXPECT_EQ(std::get<Appcast>(Appcast::read(written)).versions(), (std::vector<std::string>{"1.2", "1.1", "1.0"}));
  // The notes are the version's section alone, escaped so the feed still reads.
  EXPECT_NE(written.find("<description>&lt;ul&gt;&lt;li&gt;Fixed &amp;lt;b&amp;gt; &amp;amp; &lt;code&gt;x&lt;/code&gt;"
                         "&lt;/li&gt;&lt;/ul&gt;</description>"),
            std::string::npos)
      << written;
  EXPECT_EQ(written.find("Old"), std::string::npos);
  EXPECT_EQ(std::filesystem::status(release.feedPath).permissions(), std::filesystem::perms(0640));
  EXPECT_EQ(files(), 4u);

  std::filesystem::remove(release.feedPath);
  release.newFeedLink = "https://wakeloft.app/appcast.xml";
  const auto added = release.add();
  ASSERT_TRUE(std::holds_alternative<AppcastItem>(added)) << std::get<AppcastRelease::Error>(added).message;
  const auto& item = std::get<AppcastItem>(added);

  EXPECT_TRUE(testing::verifies(rfcPublicKey, archive, item.edSignature));
  EXPECT_EQ(item.length, archive.size());
  EXPECT_EQ(item.url, release.url);
  const std::string created = feed();
  EXPECT_NE(created.find("<link>https://wakeloft.app/appcast.xml</link>"), std::string::npos);
  const auto reread = Appcast::read(created);
  ASSERT_TRUE(std::holds_alternative<Appcast>(reread));
  EXPECT_EQ(std::get<Appcast>(reread).versions(), std::vector<std::string>{"1.2"});
  EXPECT_EQ(std::filesystem::status(release.feedPath).permissions(),
            std::filesystem::perms(0644) & std::filesystem::perms::all);
}

TEST_F(AppcastReleaseTest, EachRefusalSaysWhyAndLeavesTheFeedUntouched) {
  const std::pair<std::function<void(AppcastRelease&)>, std::string> refusals[] = {
      {[](AppcastRelease& r) { r.version = "1.1.0"; }, "build version 1.1.0 does not grow"},
      {[](AppcastRelease& r) { r.version = "1.1b2"; }, "already has an item with sparkle:version 1.1"},
      {[](AppcastRelease& r) { r.publicKey = "rhHib+w769W2/6/t+oM1ZxgjBB93BfBKMLO0Qo1etQs="; },
       "does not belong to the public key"},
      {[this](AppcastRelease& r) { r.privateKeyPath = directory.path() / "absent"; }, "cannot read the private key"},
      {[](AppcastRelease& r) { r.shortVersion = "1.3"; }, "CHANGELOG.md has no section \"## [1.3]\""},
      {[this](AppcastRelease& r) { r.archivePath = directory.path(); }, "cannot read the archive"},
      {[this](AppcastRelease& r) { r.archivePath = directory.write("empty.zip", ""); }, "is empty"},
      {[](AppcastRelease& r) { r.newFeedLink = "https://wakeloft.app"; }, "is already there"},
      {[this](AppcastRelease& r) { r.feedPath = directory.write("bad.xml", "<rss version=\"2.0\"><channel>"); },
       "bad.xml is not an appcast to add to: line 1:"},
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

TEST_F(AppcastReleaseTest, CommandLineNamesEachOptionAndChecksItsValue) {
  const std::vector<std::string> full = {
      "--feed", "f.xml", "--archive", "a.zip", "--url", "https://x/a.zip", "--version", "120", "--short-version", "1.2",
      "--minimum-system-version", "14.0", "--private-key", "k", "--public-key", std::string(rfcPublicKey),
      "--changelog", "CHANGELOG.md"};
  const auto parsed = AppcastRelease::parse(full, 7);
  ASSERT_TRUE(std::holds_alternative<AppcastRelease>(parsed));
  EXPECT_EQ(std::get<AppcastRelease>(parsed).version, "120");
  EXPECT_EQ(std::get<AppcastRelease>(parsed).publicationDate, 7);
  EXPECT_FALSE(std::get<AppcastRelease>(parsed).newFeedLink);

  const auto with = [&](std::string option, std::string value) {
    auto arguments = full;
    const auto at = std::find(arguments.begin(), arguments.end(), option);
    if (at == arguments.end()) {
      arguments.insert(arguments.end(), {option, value});
    } else if (value.empty()) {
      arguments.erase(at, at + 2);
    } else {
      at[1] = value;
    }
    const auto result = AppcastRelease::parse(arguments, 7);
    return std::holds_alternative<AppcastRelease::Error>(result) ? std::get<AppcastRelease::Error>(result).message
                                                                 : "accepted";
  };
  EXPECT_EQ(with("--url", ""), "--url is required");
  EXPECT_EQ(with("--verbose", "1"), "unknown argument \"--verbose\"");
  EXPECT_EQ(with("--url", "http://x/a.zip"),
            "\"http://x/a.zip\" is not an https address (printable ASCII, no quotes, "
            "spaces, <, > or \\)");
  EXPECT_EQ(with("--new-feed", "https://a b"), with("--url", "https://a b"));
  EXPECT_EQ(with("--version", "1.2 beta"),
            "\"1.2 beta\" is not a version: up to 64 letters, digits, \".\", \"-\" and \"_\"");
  EXPECT_EQ(with("--minimum-system-version", "14.0.0.1"), "\"14.0.0.1\" is not a macOS version such as 14.0");
  EXPECT_EQ(with("--public-key", "AAAA"),
            "--public-key needs the base64 of a 32-byte Ed25519 key, as SUPublicEDKey holds it");
  EXPECT_EQ(with("--new-feed", "https://wakeloft.app"), "accepted");
  auto twice = full;
  twice.insert(twice.end(), {"--feed", "g.xml"});
  EXPECT_EQ(std::get<AppcastRelease::Error>(AppcastRelease::parse(twice, 7)).message, "--feed is given twice");
  twice.back().clear();
  twice[twice.size() - 2] = "--new-feed";
  EXPECT_EQ(std::get<AppcastRelease::Error>(AppcastRelease::parse(twice, 7)).message, "--new-feed needs a value");
}

}  // namespace
}  // namespace wakeloft
