#pragma once

#include <array>
#include <string_view>

namespace wakeloft {

// The two localisation tables of the app: texts about the lid-closed mode
// live in their own table, so that mode's words can be reviewed together.
enum class TextTable { standard, deepwake };

inline constexpr std::array<TextTable, 2> allTextTables{TextTable::standard, TextTable::deepwake};

// The table's name in the bundle, which is also its file name without
// ".strings". The standard one is what the bundle looks in when no table is
// named.
constexpr std::string_view tableName(TextTable table) {
  return table == TextTable::deepwake ? "Deepwake" : "Localizable";
}

}  // namespace wakeloft
