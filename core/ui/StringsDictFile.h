#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "base/PluralCategory.h"
#include "base/PropertyList.h"

namespace wakeloft {

// A localisation table's counted texts in the platform's ".stringsdict"
// form: for each key, a format with one plural variable and that
// variable's wording per plural category:
//
//   "until %d processes end" = {
//     NSStringLocalizedFormatKey = "%#@processes@";
//     processes = { NSStringFormatSpecTypeKey = NSStringPluralRuleType;
//                   NSStringFormatValueTypeKey = d;
//                   one = "until %d process ends"; other = "until %d processes end"; };
//   };
//
// Each form is kept with the format around the variable already in place.
class StringsDictFile {
 public:
  using Forms = std::map<PluralCategory, std::string>;

  // Nothing when `list` is not a dictionary of such entries: a format
  // without exactly one variable, a variable that is not a plural rule, a
  // category name CLDR does not have, or no "other" form.
  static std::optional<StringsDictFile> from(const PropertyList& list);

  const std::map<std::string, Forms, std::less<>>& entries() const { return entries_; }

  // The wording for `category`, or the "other" one when the table has none
  // for it, as Foundation does; nothing for a key the table does not have.
  const std::string* find(std::string_view key, PluralCategory category) const;

 private:
  std::map<std::string, Forms, std::less<>> entries_;
};

}  // namespace wakeloft
