#include "prefs/FeedbackLink.h"

#include <gtest/gtest.h>

#include <string>

namespace wakeloft {
namespace {

const std::string site = std::string("https://") + WAKELOFT_FEEDBACK_HOST;

TEST(FeedbackLinkTest, TranslatedLanguagesGetTheirOwnPageVersionsGoInTheQueryPercentEncodedAndOnlyAHostMakesAForm) {
  EXPECT_EQ(FeedbackLink::url(std::nullopt, std::nullopt, "de"), site + "/de/feedback");
  EXPECT_EQ(FeedbackLink::url(std::nullopt, std::nullopt, "fr-CA"), site + "/fr-CA/feedback");
  EXPECT_EQ(FeedbackLink::url(std::nullopt, std::nullopt, "zh-Hant"), site + "/zh-Hant/feedback");

  for (const std::string language : {"en", "pt", "zh-hans", "DE", "fr_CA", "fr-ca", "de/../x", ""}) {
    EXPECT_EQ(FeedbackLink::url(std::nullopt, std::nullopt, language), site + "/feedback") << language;
  }
  EXPECT_EQ(FeedbackLink::url(std::nullopt, std::nullopt, std::nullopt), site + "/feedback");
  EXPECT_EQ(FeedbackLink::form(), site + "/feedback");  // on the site set at build time

  EXPECT_EQ(FeedbackLink::url("1.4", "14.6.1", "ja"), site + "/ja/feedback?app=1.4&macos=14.6.1");
  EXPECT_EQ(FeedbackLink::url(std::nullopt, "15.0", "en"), site + "/feedback?macos=15.0");
  EXPECT_EQ(FeedbackLink::url("", "15.0", std::nullopt), site + "/feedback?macos=15.0");
  EXPECT_EQ(FeedbackLink::url("1.4", std::nullopt, std::nullopt), site + "/feedback?app=1.4");
  EXPECT_EQ(FeedbackLink::url("1.4", "", std::nullopt), site + "/feedback?app=1.4");


  EXPECT_EQ(FeedbackLink::url("1.4 (212)", std::nullopt, std::nullopt), site + "/feedback?app=1.4%20%28212%29");
  // Nothing in a value can start another item, end the query or read as a
  // space.
  EXPECT_EQ(FeedbackLink::url("1&macos=0", "1+2#x%", std::nullopt),
            site + "/feedback?app=1%26macos%3D0&macos=1%2B2%23x%25");
  EXPECT_EQ(FeedbackLink::url("1.4\xce\xb2~_-", std::nullopt, std::nullopt), site + "/feedback?app=1.4%CE%B2~_-");
  EXPECT_EQ(FeedbackLink::url(std::string("a\0b", 3), std::nullopt, std::nullopt), site + "/feedback?app=a%00b");
  EXPECT_EQ(FeedbackLink::url("\xff", std::nullopt, std::nullopt), site + "/feedback?app=%FF");

  EXPECT_EQ(FeedbackLink::formOn("example.com"), "https://example.com/feedback");
  EXPECT_EQ(FeedbackLink::formOn("feedback.example-site.co.uk:8443"), "https://feedback.example-site.co.uk:8443/feedback");
  EXPECT_EQ(FeedbackLink::formOn("localhost"), "https://localhost/feedback");
  for (const char* bad : {"", "https://example.com", "example.com/", "example..com", ".example.com", "example.com.",
                          "-example.com", "exa mple.com", "example.com:", "example.com:0", "example.com:65536",
                          "example.com:80x", "user@example.com", "example.com?x", "ex\xc3\xa4mple.com"}) {
    EXPECT_EQ(FeedbackLink::formOn(bad), std::nullopt) << bad;
  }
  EXPECT_EQ(FeedbackLink::formOn(std::string(64, 'a') + ".com"), std::nullopt);
  EXPECT_TRUE(FeedbackLink::formOn(std::string(63, 'a') + ".com"));
}

}  // namespace
}  // namespace wakeloft
