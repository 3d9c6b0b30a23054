#include <gtest/gtest.h>

#include <string>

#include "release/Appcast.h"

namespace wakeloft {
namespace {

const std::string rss = "<rss version=\"2.0\" xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\">";

std::variant<Appcast, Appcast::Error> read(const std::string& text) { return Appcast::read(text); }

std::string refusal(const std::string& text) {
  const auto read = Appcast::read(text);
  return std::holds_alternative<Appcast::Error>(read) ? std::get<Appcast::Error>(read).message : "accepted";
}

AppcastItem sample() {
  AppcastItem item;
  item.title = "Version 1.1";
  item.version = "110";
  item.shortVersion = "1.1";
  item.minimumSystemVersion = "14.0";
  item.publicationDate = 1'444'072'811;  // Mon, 05 Oct 2015 19:20:11 UTC
  item.url = "https://example.com/get?v=1.1&os=mac";
  item.length = 1623481;
  item.edSignature = "c2ln";
  return item;
}

TEST(AppcastTest, ANewItemGoesFirstIndentedLikeTheOthers) {
  const std::string earlier =
      "  <channel>\n    <title>T</title>\n    <item><sparkle:version>1</sparkle:version></item>\n";
  const auto appcast = read(rss + "\n" + earlier + "  </channel>\n</rss>\n");
  ASSERT_TRUE(std::holds_alternative<Appcast>(appcast));
  EXPECT_EQ(std::get<Appcast>(appcast).withItem(sample()),
            rss +
                "\n  <channel>\n    <title>T</title>\n"
                "    <item>\n"
                "      <title>Version 1.1</title>\n"
                "      <pubDate>Mon, 05 Oct 2015 19:20:11 +0000</pubDate>\n"
                "      <sparkle:version>110</sparkle:version>\n"
                "      <sparkle:shortVersionString>1.1</sparkle:shortVersionString>\n"
                "      <sparkle:minimumSystemVersion>14.0</sparkle:minimumSystemVersion>\n"
                "      <enclosure url=\"https://example.com/get?v=1.1&amp;os=mac\" length=\"1623481\" "
                "type=\"application/octet-stream\" sparkle:edSignature=\"c2ln\"/>\n"
                "    </item>\n"
                "    <item><sparkle:version>1</sparkle:version></item>\n  </channel>\n</rss>\n");
}

TEST(AppcastTest, RefusesWhatIsNotAnAppcastOfTheExpectedShape) {
  const std::pair<std::string, std::string> refused[] = {
      {"", "line 1: no <rss> element"},
      {"<feed/>", "line 1: a root element other than <rss>"},
      {"<rss version=\"0.91\"><channel/></rss>", "not version=\"2.0\""},
      {rss + "</rss>", "no <channel> in <rss>"},
      {"<rss version=\"2.0\"><channel/></rss>", "sparkle prefix is not bound"},
      {rss + "<channel xmlns=\"urn:x\"/></rss>", "a <channel> in the namespace urn:x"},
      {rss + "<channel><item><sparkle:version>1\xC3\xA9</sparkle:version></item></channel></rss>", "printable ASCII"},
      {rss + "<channel>\n\n<item><title>1</title></item></channel></rss>",
       "line 3: an <item> without a sparkle:version"},
      {rss + "<channel>", "ends inside <channel>"},
      {"<!DOCTYPE rss [<!ENTITY x \"y\">]>" + rss + "<channel/></rss>", "document type declaration"},
      {rss + "<channel/><!-- sparkle-signatures:\nedSignature: x\n--></rss>", "Sparkle's feed signature"},
      {"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + rss + "<channel/></rss>", "the encoding ISO-8859-1"},
      {rss + "<channel><title>\xFF</title></channel></rss>", "bytes that are not UTF-8"},
  };
  for (const auto& [text, message] : refused) {
    EXPECT_NE(refusal(text).find(message), std::string::npos) << text << "\n  gave: " << refusal(text);
  }
}

}  // namespace
}  // namespace wakeloft
