#include "base/InMemoryDefaultsDomain.h"

#include <gtest/gtest.h>

namespace wakeloft {
namespace {

TEST(InMemoryDefaultsDomainTest, BooleanReadingConvertsLikeThePlatformAndKindsStayApart) {
  InMemoryDefaultsDomain defaults;
  EXPECT_FALSE(defaults.boolean("missing"));
  const std::pair<DefaultsValue, bool> cases[] = {
      {true, true},        {false, false},          {std::int64_t{0}, false}, {std::int64_t{-3}, true},
      {0.0, false},        {0.5, true},             {"YES", true},            {"yes", true},
      {"true", true},      {"  T", true},           {"1", true},              {"007", true},
      {"-9", true},        {"000", false},          {"NO", false},            {"false", false},
      {"", false},         {"maybe", false},        {Date{5}, false},         {DefaultsValue::Data{1}, false},
  };
  for (const auto& [value, expected] : cases) {
    defaults.set("flag", value);
    EXPECT_EQ(defaults.boolean("flag"), expected) << ::testing::PrintToString(value.value.index());
  }

  defaults.set("n", std::int64_t{1});
  defaults.set("b", true);
  EXPECT_TRUE(defaults.object("n")->holds<std::int64_t>());
  EXPECT_TRUE(defaults.object("b")->holds<bool>());
  EXPECT_EQ(defaults.object("b")->number(), std::nullopt);
  EXPECT_EQ(defaults.object("n")->number(), 1.0);
  defaults.remove("n");
  EXPECT_FALSE(defaults.object("n").has_value());
}

}  // namespace
}  // namespace wakeloft
