#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace wakeloft {

// A localisation table in the platform's ".strings" form, read strictly:
//
//   /* a comment */
//   "key" = "value";  // another comment
//
// UTF-8 only (a leading byte-order mark is allowed); keys and values quoted;
// escapes \" \\ \n \t \r and \Uxxxx (UTF-16, surrogate pairs joined); no raw
// control characters inside quotes, no key twice, no empty key. The looser
// forms the platform also takes (unquoted words, a key without a value) are
// refused, so a table means exactly one thing.
class StringsFile {
 public:
  struct Entry {
    std::string key;
    std::string value;
    // Where the key starts, counted from 1.
    int line = 0;
  };

  // Throws StringsFileError, naming the line.
  static StringsFile parse(std::string_view bytes);

  // In file order.
  const std::vector<Entry>& entries() const { return entries_; }
  // Nothing when the table has no such key.
  const std::string* find(std::string_view key) const;

 private:
  std::vector<Entry> entries_;
};

}  // namespace wakeloft
