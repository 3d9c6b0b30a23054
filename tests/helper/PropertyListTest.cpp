#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "support/SystemPropertyListParser.h"
#include "PlistBytes.h"
#include "base/PropertyList.h"
#include "base/PropertyListError.h"
#include "base/PropertyListXMLWriter.h"
#include "support/NestedPropertyLists.h"

namespace wakeloft {
namespace {

using testing::binaryPropertyList;
using testing::bytesOf;
using testing::nestedBinaryArrays;
using testing::nestedXMLArrays;

PropertyList everyKind() {
  return PropertyList::Dictionary{
      {"yes", true},
      {"no", false},
      {"negative", std::int64_t{-42}},
      {"large", std::numeric_limits<std::int64_t>::max()},
      {"real", 0.1},
      {"huge", -1.5e300},
      {"text", "a < b && c > \"d\" 'e'\tline\nnext\rreturn \u00e9\u20ac\U0001F319"},
      {"empty text", ""},
      {"date", Date{1731700000}},
      {"before 1970", Date{-86400 * 365.0}},
      {"no bytes", PropertyList::Data{}},
      {"one byte", PropertyList::Data{0xFF}},
      {"two bytes", PropertyList::Data{0x00, 0x10}},
      {"three bytes", PropertyList::Data{0xFB, 0xFF, 0xBF}},
      {"four bytes", PropertyList::Data{1, 2, 3, 4}},
      {"empty array", PropertyList::Array{}},
      {"empty dictionary", PropertyList::Dictionary{}},
      {"nested", PropertyList::Array{PropertyList::Dictionary{{"k<&>", PropertyList::Array{1, "two", 3.5}}}}},
  };
}

TEST(PropertyListTest, EveryKindSurvivesTheXMLWriterAndTheSystemParserAndReadsLikeABinaryList) {
  const testing::SystemPropertyListParser parser;
  const auto xml = PropertyListXMLWriter::document(everyKind());
  EXPECT_EQ(parser.parse(bytesOf(xml)), everyKind());

  const auto binary = binaryPropertyList(everyKind());
  ASSERT_EQ(binary.substr(0, 8), "bplist00");
  EXPECT_EQ(parser.parse(bytesOf(binary)), everyKind());
}

// The round trip above shows the forms are the platform's; these are the
// values it cannot show.
TEST(PropertyListTest, TheWriterDropsAFractionOfASecondTowardThePast) {
  const auto doc = PropertyListXMLWriter::document(Date{-0.5});
  EXPECT_NE(doc.find("<date>1969-12-31T23:59:59Z</date>"), std::string::npos) << doc;
}

TEST(PropertyListTest, TheWriterRefusesWhatXMLCannotCarry) {
  const PropertyList refused[] = {
      std::string("bell \x07"),
      std::string("broken \xC3"),
      std::string("\xEF\xBF\xBF"),  // U+FFFF
      std::nan(""),
      std::numeric_limits<double>::infinity(),
      Date{std::nan("")},
      Date{253402300800.0},  // 10000-01-01
      PropertyList::Dictionary{{"key\x01", 1}},
  };
  for (const auto& uncarried : refused) EXPECT_THROW(PropertyListXMLWriter::document(uncarried), PropertyListError);
  EXPECT_NO_THROW(PropertyListXMLWriter::document(Date{253402300799.0}));
  EXPECT_NO_THROW(PropertyListXMLWriter::document(Date{-62167219200.0}));
}

TEST(PropertyListTest, DeeplyNestedListsAreRefusedBeforeTheReaderRecursesIntoThem) {
  const testing::SystemPropertyListParser parser;
  std::string unclosed = "<plist>";
  for (int i = 0; i < 100'000; ++i) unclosed += "<array>";
  // libplist recurses to read the binary one (900 KB) and to free the XML one.
  for (const auto& deep : {nestedBinaryArrays(100'000), nestedXMLArrays(1'000'000), unclosed}) {
    try {
      parser.parse(bytesOf(deep));
      ADD_FAILURE() << "a list nested 100,000 deep was accepted";
    } catch (const PropertyListError& error) {
      EXPECT_STREQ(error.what(), "The property list is nested too deeply.");
    }
  }
  EXPECT_NO_THROW(parser.parse(bytesOf(nestedBinaryArrays(512, true))));
}

// A binary list of one dictionary whose one key is the given object and
// whose value is the text "x".
std::string oneEntryBinaryList(const std::string& keyObject) {
  std::string list = "bplist00";
  list += "\xD1\x01\x02";
  const auto keyAt = list.size();
  list += keyObject;
  const auto valueAt = list.size();
  list += "\x51x";
  const auto tableAt = list.size();
  list += {'\x08', static_cast<char>(keyAt), static_cast<char>(valueAt)};
  list += std::string(6, '\0') + "\x01\x01";
  list += std::string(7, '\0') + "\x03";
  list += std::string(8, '\0');
  list += std::string(7, '\0') + static_cast<char>(tableAt);
  return list;
}

TEST(PropertyListTest, TheParserRefusesBinaryKeysWithAZeroCharacter) {
  const testing::SystemPropertyListParser parser;
  using namespace std::string_literals;
  EXPECT_EQ(parser.parse(bytesOf(oneEntryBinaryList("\x53" "a b"))),
            PropertyList(PropertyList::Dictionary{{"a b", "x"}}));
  EXPECT_EQ(parser.parse(bytesOf(oneEntryBinaryList("\x62\0a\0b"s))),
            PropertyList(PropertyList::Dictionary{{"ab", "x"}}));
  EXPECT_THROW(parser.parse(bytesOf(oneEntryBinaryList("\x53" "a\0b"s))), PropertyListError);
  EXPECT_THROW(parser.parse(bytesOf(oneEntryBinaryList("\x62\0a\0\0"s))), PropertyListError);
}

TEST(PropertyListTest, TheParserRefusesWhatIsNotAWholePropertyList) {
  const testing::SystemPropertyListParser parser;
  const auto binary = binaryPropertyList(everyKind());
  const auto xml = PropertyListXMLWriter::document(everyKind());
  const std::string refused[] = {
      "hello",
      xml.substr(0, xml.size() / 2),
      binary.substr(0, binary.size() - 20),
      "bplist00",
      std::string("<plist><string>\xC3\x28</string></plist>"),
      std::string("<plist><dict><key>a\0b</key><string>x</string></dict></plist>", 60),
  };
  for (const auto& bytes : refused) {
    EXPECT_THROW(parser.parse(bytesOf(bytes)), PropertyListError) << bytes.size() << " bytes";
  }
}

}  // namespace
}  // namespace wakeloft
