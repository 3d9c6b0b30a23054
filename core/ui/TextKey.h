#pragma once

#include <optional>
#include <string_view>

#include "base/PluralCategory.h"
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

  // A counted text's wording for one plural category, which the table's
  // strings dictionary holds under the same key; nothing for the key itself.
  constexpr std::optional<PluralCategory> pluralForm() const { return pluralForm_; }
  constexpr TextKey inPluralForm(PluralCategory category) const {
    TextKey form = *this;
    form.pluralForm_ = category;
    return form;
  }

  friend constexpr bool operator==(TextKey, TextKey) = default;

 private:
  friend class TextCatalog;
  constexpr TextKey(std::string_view key, TextTable table) : key_(key), table_(table) {}

  std::string_view key_;
  TextTable table_;
  std::optional<PluralCategory> pluralForm_;
};

}  // namespace wakeloft
