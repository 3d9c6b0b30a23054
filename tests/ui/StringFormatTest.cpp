#include "ui/StringFormat.h"

#include <gtest/gtest.h>

#include <vector>

namespace wakeloft {
namespace {

using StringFormat::Conversion;

std::optional<std::string> format(std::string_view text, std::vector<TextArgument> arguments) {
  return StringFormat::formatted(text, arguments);
}

TEST(StringFormatTest, FillsPlaceholdersInOrderOrByPositionButArgumentsThatDoNotFitOrMalformedFormatsGiveNothing) {
  EXPECT_EQ(format("On \xC2\xB7 %@ left", {std::string("4:07")}), "On \xC2\xB7 4:07 left");
  EXPECT_EQ(format("%@ and %@", {std::string("a"), std::string("b")}), "a and b");
  EXPECT_EQ(format("100%% %@", {std::string("sure")}), "100% sure");

  EXPECT_EQ(format("%2$@ vor %1$@", {std::string("A"), std::string("B")}), "B vor A");
  EXPECT_EQ(format("%1$@, %1$@", {std::string("x")}), "x, x");
  EXPECT_EQ(StringFormat::conversions("%2$d %1$@"), (std::vector{Conversion::words, Conversion::number}));

  EXPECT_EQ(format("%@", {}), std::nullopt);
  EXPECT_EQ(format("%@", {std::string("a"), std::string("b")}), std::nullopt);
  EXPECT_EQ(format("%d", {std::string("7")}), std::nullopt);
  EXPECT_EQ(format("%@", {std::int32_t{7}}), std::nullopt);

  for (const char* bad : {"%", "50%", "%s", "%ld", "%1$", "%1@", "%0$@", "%1$@ %@", "%2$@", "%1$@ %1$d", "%100$@"}) {
    EXPECT_EQ(StringFormat::conversions(bad), std::nullopt) << bad;
  }
}

TEST(StringFormatTest, ACountIsWrittenInItsDigitsAndAloneMayGoUnsaid) {
  const TextCount three{3, "٣", PluralCategory::few};
  EXPECT_EQ(format("until %d end", {three}), "until ٣ end");
  EXPECT_EQ(format("until one ends", {three}), "until one ends");
  EXPECT_EQ(format("%2$@ alone", {three, std::string("x")}), "x alone");
  EXPECT_EQ(format("%2$@ alone", {std::string("a"), std::string("x")}), std::nullopt);
  EXPECT_EQ(format("%@", {three}), std::nullopt);
}

}  // namespace
}  // namespace wakeloft
