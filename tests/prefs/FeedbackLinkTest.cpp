#include "prefs/FeedbackLink.h"

#include <gtest/gtest.h>

#include <string>

namespace wakeloft {
namespace {

const std::string site = std::string("https://") + WAKELOFT_FEEDBACK_HOST;

TEST(FeedbackLinkTest, OnlyATranslatedLanguageExactlyAsWrittenGetsItsOwnPage) {
  EXPECT_EQ(FeedbackLink::url(std::nullopt, std::nullopt, "fr-CA"), site + "/fr-CA/feedback");
  for (const std::string language : {"en", "zh-hans", "DE", "fr_CA", "de/../x", ""}) {
    EXPECT_EQ(FeedbackLink::url(std::nullopt, std::nullopt, language), site + "/feedback") << language;
  }
  EXPECT_EQ(FeedbackLink::form(), site + "/feedback");  // on the site set at build time
}

TEST(FeedbackLinkTest, GivenVersionsGoInTheQueryPercentEncoded) {
  EXPECT_EQ(FeedbackLink::url("1.4", "14.6.1", "ja"), site + "/ja/feedback?app=1.4&macos=14.6.1");
  EXPECT_EQ(FeedbackLink::url("", "15.0", std::nullopt), site + "/feedback?macos=15.0");
  EXPECT_EQ(FeedbackLink::url("1.4", "", std::nullopt), site + "/feedback?app=1.4");
  // Nothing in a value can start another item, end the query or read as a
  // space.
  EXPECT_EQ(FeedbackLink::url("1&macos=0 (", "1+2#x%", std::nullopt),
            site + "/feedback?app=1%26macos%3D0%20%28&macos=1%2B2%23x%25");
  EXPECT_EQ(FeedbackLink::url(std::string("\xce\xb2~_-\0", 6), std::nullopt, std::nullopt),
            site + "/feedback?app=%CE%B2~_-%00");
}

TEST(FeedbackLinkTest, OnlyAHostNameWithAnOptionalPortMakesAForm) {
  EXPECT_EQ(FeedbackLink::formOn("feedback.example-site.co.uk:8443"),
            "https://feedback.example-site.co.uk:8443/feedback");
  EXPECT_EQ(FeedbackLink::formOn("localhost"), "https://localhost/feedback");
  for (const char* bad : {"", "https://example.com", "example.com/", "example..com", ".example.com", "example.com.",
                          "-example.com", "exa mple.com", "example.com:", "example.com:0", "example.com:65536",
                          "example.com:80x", "user@example.com", "example.com?x", "ex\xc3\xa4mple.com"}) {
    EXPECT_EQ(FeedbackLink::formOn(bad), std::nullopt) << bad;
  }
}

}  // namespace
}  // namespace wakeloft
