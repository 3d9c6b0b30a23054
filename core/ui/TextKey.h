#pragma once

#include <string_view>

#include "ui/TextTable.h"

namespace wakeloft {

class TextCatalog;

// One user-visible text: its English wording, which is also its key, and the
// table it is looked up in. Only the catalog makes them, so every text the
// app can show is listed there.
class TextKey {
 public:
  constexpr std::string_view key() const { return key_; }
  constexpr TextTable table() const { return table_; }

  friend constexpr bool operator==(TextKey, TextKey) = default;

 private:
  friend class TextCatalog;
  constexpr TextKey(std::string_view key, TextTable table) : key_(key), table_(table) {}

  std::string_view key_;
  TextTable table_;
};

}  // namespace wakeloft
