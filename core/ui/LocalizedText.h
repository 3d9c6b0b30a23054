#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ui/TextArgument.h"
#include "ui/TextKey.h"

namespace wakeloft {

// Finds the translation of a key in its table, as the app's bundle does for
// the user's language; nothing when the table has none. A key in a plural
// form is looked up in the table's strings dictionary only.
using TextLookup = std::function<std::optional<std::string>(TextKey)>;

// A text as the portable code hands it to the views: a catalog key with the
// arguments for its placeholders, or words that are shown as they are (a
// duration the platform already put into words, a message from elsewhere).
// The app resolves it through its bundle.
class LocalizedText {
 public:
  LocalizedText(TextKey key, std::vector<TextArgument> arguments = {});
  // Ill-formed UTF-8 is repaired here, so a view never meets bytes it cannot
  // show.
  static LocalizedText verbatim(std::string text);

  bool isVerbatim() const { return !key_; }
  // Nothing for verbatim words.
  const std::optional<TextKey>& key() const { return key_; }
  const std::vector<TextArgument>& arguments() const { return arguments_; }

  // The translation found by `lookup` with the arguments in place. A text
  // with a count takes the wording of the count's plural form first, then
  // the key's own. A missing translation, or one whose placeholders do not
  // fit the arguments, falls back to the English key, so a broken table
  // shows English rather than garbage.
  std::string resolved(const TextLookup& lookup) const;
  // The English key with the arguments in place; a counted text's key is
  // its "other" wording.
  std::string english() const;

  friend bool operator==(const LocalizedText&, const LocalizedText&) = default;

 private:
  LocalizedText(std::optional<TextKey> key, std::string words, std::vector<TextArgument> arguments);

  std::optional<TextKey> key_;
  std::string words_;
  std::vector<TextArgument> arguments_;
};

}  // namespace wakeloft
