#include "ui/StringsFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ui/StringsFileError.h"

namespace wakeloft {
namespace {

// The line a parse fails on, or 0 when it does not fail.
int failingLine(std::string_view bytes) {
  try {
    StringsFile::parse(bytes);
  } catch (const StringsFileError& error) {
    return error.line();
  }
  return 0;
}

TEST(StringsFileTest, ReadsEntriesInOrderAroundCommentsWithEscapesAndUtf8Exactly) {
  const auto file = StringsFile::parse(
      "\xEF\xBB\xBF/* header\n   spanning lines */\n"
      "\"On\" = \"Ein\";  // trailing\n"
      "\n"
      "\"Off\"\t=\n\"Aus\" ;\n");
  ASSERT_EQ(file.entries().size(), 2u);
  EXPECT_EQ(file.entries()[0].key, "On");
  EXPECT_EQ(file.entries()[0].value, "Ein");
  EXPECT_EQ(file.entries()[0].line, 3);
  EXPECT_EQ(file.entries()[1].key, "Off");
  EXPECT_EQ(file.entries()[1].value, "Aus");
  EXPECT_EQ(file.entries()[1].line, 5);
  ASSERT_NE(file.find("Off"), nullptr);
  EXPECT_EQ(*file.find("Off"), "Aus");
  EXPECT_EQ(file.find("off"), nullptr);
  EXPECT_TRUE(StringsFile::parse("").entries().empty());
  EXPECT_TRUE(StringsFile::parse("  /* nothing */ // here\n").entries().empty());

  const auto escaped = StringsFile::parse(
      "\"a\\\"b\\\\c\" = \"1\\n2\\t3\\r\";\n"
      "\"\\U00e9\\U2026\" = \"\\Ud83d\\Ude00\";\n"
      "\"On \xC2\xB7 %@ left\" = \"\xD9\x8A\xD8\xB9\xD9\x85\xD9\x84 \xC2\xB7 %@\";\n");
  ASSERT_EQ(escaped.entries().size(), 3u);
  EXPECT_EQ(escaped.entries()[0].key, "a\"b\\c");
  EXPECT_EQ(escaped.entries()[0].value, "1\n2\t3\r");
  EXPECT_EQ(escaped.entries()[1].key, "\xC3\xA9\xE2\x80\xA6");
  EXPECT_EQ(escaped.entries()[1].value, "\xF0\x9F\x98\x80");
  EXPECT_EQ(escaped.entries()[2].value, "\xD9\x8A\xD8\xB9\xD9\x85\xD9\x84 \xC2\xB7 %@");
}

// Loose forms, unfinished parts where they start, bad escapes, and bytes
// that are not UTF-8 text.
TEST(StringsFileTest, WhatIsNotATableIsRefusedWithItsLineAndWhatIsWrong) {
  const std::vector<std::pair<std::string_view, int>> cases = {
      {"\"a\" = \"b\";\n\"c\" = \"d\"\n", 2},    // no semicolon
      {"a = \"b\";", 1},                       // unquoted key
      {"\"a\" = b;", 1},                       // unquoted value
      {"\"a\";", 1},                           // key alone
      {"\"a\" \"b\";", 1},                     // no "="
      {"\"\" = \"b\";", 1},                    // empty key
      {"\"a\" = \"b\";\n\n\"a\" = \"c\";", 3},  // same key twice
      {"\"a\" = \"b\"; \"c\" = \"d\";;", 1},   // stray semicolon
      {"\"a\" = \"b\";\n/* open\n\n", 2},
      {"\n\"a\" = \"b;\n", 2},  // raw newline in quotes
      {"\"a\" = \"b", 1},
      {"\"a\" = \"b\\", 1},
      {"\"a\" = ", 1},
      {"\"a\" = \"\\x41\";", 1},
      {"\"a\" = \"\\U00g1\";", 1},
      {"\"a\" = \"\\U00\";", 1},
      {"\"a\" = \"\\Ude00\";", 1},        // lone low surrogate
      {"\"a\" = \"\\Ud83d.\";", 1},       // high without low
      {"\"a\" = \"\\Ud83d\\U0041\";", 1},  // high with a non-surrogate
      {"\"a\" = \"\\U0000\";", 1},
      {"\"a\" = \"b\";\n\"c\" = \"\xC3\x28\";", 2},
      {"\xFF\xFE\"\0a\0\"\0", 1},  // UTF-16 with its mark
      {std::string_view("\"a\" = \"b\";\n\"c\0\" = \"d\";", 22), 2},
      {"\"a\" = \"b\x01\";", 1},
  };
  for (const auto& [bytes, line] : cases) EXPECT_EQ(failingLine(bytes), line) << bytes;

  try {
    StringsFile::parse("\"a\" = \"b\";\n\"a\" = \"c\";");
    FAIL() << "a duplicate key was accepted";
  } catch (const StringsFileError& error) {
    EXPECT_STREQ(error.what(), "line 2: the key \"a\" appears twice");
  }
}

}  // namespace
}  // namespace wakeloft
