#include "ui/LocalizedText.h"

#include <cstdint>
#include <span>

#include "base/Utf8.h"
#include "ui/StringFormat.h"

namespace wakeloft {

namespace {

std::string repaired(const std::string& text) {
  if (Utf8::isValid(text)) return text;
  return Utf8::repaired(std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

}  // namespace

LocalizedText::LocalizedText(std::optional<TextKey> key, std::string words, std::vector<TextArgument> arguments)
    : key_(key), words_(std::move(words)), arguments_(std::move(arguments)) {}

LocalizedText::LocalizedText(TextKey key, std::vector<TextArgument> arguments)
    : key_(key), arguments_(std::move(arguments)) {
  for (auto& argument : arguments_) {
    if (auto* words = std::get_if<std::string>(&argument)) *words = repaired(*words);
  }
}

LocalizedText LocalizedText::verbatim(std::string text) { return {std::nullopt, repaired(text), {}}; }

std::string LocalizedText::resolved(const TextLookup& lookup) const {
  if (!key_) return words_;
  if (lookup) {
    std::vector<TextKey> keys;
    for (const auto& argument : arguments_) {
      if (const auto* count = std::get_if<TextCount>(&argument)) {
        keys.push_back(key_->inPluralForm(count->category));
        break;
      }
    }
    keys.push_back(*key_);
    for (const auto key : keys) {
      if (const auto translation = lookup(key)) {
        if (auto text = StringFormat::formatted(*translation, arguments_)) return std::move(*text);
      }
    }
  }
  return english();
}

std::string LocalizedText::english() const {
  if (!key_) return words_;
  // The catalog's keys are checked against their arguments by the tests; the
  // bare key is the last resort should one ever slip through.
  return StringFormat::formatted(key_->key(), arguments_).value_or(std::string(key_->key()));
}

}  // namespace wakeloft
