#include "base/PropertyListNesting.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/PropertyListError.h"
#include "support/NestedPropertyLists.h"

namespace wakeloft {
namespace {

using testing::nestedBinaryArrays;
using testing::nestedXMLArrays;

bool refused(const std::string& list) {
  try {
    PropertyListNesting::check({reinterpret_cast<const std::uint8_t*>(list.data()), list.size()});
    return false;
  } catch (const PropertyListError&) {
    return true;
  }
}

std::string utf16(const std::string& ascii) {
  std::string wide = "\xFF\xFE";
  for (const char c : ascii) wide += {c, '\0'};
  return wide;
}

TEST(PropertyListNestingTest, ValuesMayLieAtDepth512AndNoDeeperInListsThatDoNotContainThemselvesOrBreakTheLayout) {
  struct Case {
    std::string list;
    bool refused;
  };
  const std::string openStepText = "(\"" + std::string(600, '(') + "\")";
  const std::vector<Case> cases = {
      {nestedBinaryArrays(513), false},  // the innermost, empty, at 512
      {nestedBinaryArrays(513, true), true},
      // Each level refers to the next twice: 2^300 paths, walked once each level.
      {nestedBinaryArrays(300, true, 2), false},
      {nestedXMLArrays(513), false},
      {nestedXMLArrays(514), true},
      {utf16(nestedXMLArrays(1000)), true},
      {"<plist><!--" + nestedXMLArrays(1000) + "--><string><![CDATA[" + nestedXMLArrays(1000) + "]]></string></plist>",
       false},
      {std::string(513, '(') + std::string(513, ')'), false},
      {std::string(514, '(') + std::string(514, ')'), true},
      {openStepText + "/* " + std::string(600, '{') + " */", false},
  };
  for (std::size_t i = 0; i < cases.size(); ++i) EXPECT_EQ(refused(cases[i].list), cases[i].refused) << "case " << i;

  std::string loop = nestedBinaryArrays(2);
  loop[12] = 0;  // the first array holds itself
  std::string outside = nestedBinaryArrays(2);
  outside[12] = 9;  // an object that does not exist
  EXPECT_TRUE(refused(loop));
  EXPECT_TRUE(refused(outside));
  EXPECT_TRUE(refused(nestedBinaryArrays(3).substr(0, 40)));
  EXPECT_TRUE(refused("bplist15" + nestedBinaryArrays(1).substr(8)));
}

}  // namespace
}  // namespace wakeloft
