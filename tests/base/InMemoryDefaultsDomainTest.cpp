#include "base/InMemoryDefaultsDomain.h"

#include <gtest/gtest.h>

namespace wakeloft {
namespace {

TEST(InMemoryDefaultsDomainTest, BooleanReadingConvertsLikeThePlatform) {
  InMemoryDefaultsDomain defaults;
  EXPECT_FALSE(defaults.boolean("missing"));
  const std::pair<DefaultsValue, bool> cases[] = {
      {true, true},  {std::int64_t{0}, false}, {std::int64_t{-3}, true}, {0.5, true},  {"yes", true},
      {"  T", true}, {"007", true},            {"000", false},           {"NO", false}, {"maybe", false},
      {"", false},   {Date{5}, false},         {DefaultsValue::Data{1}, false},
  };
  for (const auto& [value, expected] : cases) {
    defaults.set("flag", value);
    EXPECT_EQ(defaults.boolean("flag"), expected) << ::testing::PrintToString(value.value.index());
  }
}

TEST(InMemoryDefaultsDomainTest, BooleansAreNotNumbers) {
  InMemoryDefaultsDomain defaults;
  defaults.set("n", std::int64_t{1});
  defaults.set("b", true);
  EXPECT_EQ(defaults.object("b")->number(), std::nullopt);
  EXPECT_EQ(defaults.object("n")->number(), 1.0);
  defaults.remove("n");
  EXPECT_FALSE(defaults.object("n").has_value());
}

}  // namespace
}  // namespace wakeloft
