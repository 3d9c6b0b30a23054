#pragma once

#include <string>
#include <utility>
#include <vector>

#include "ui/LocalizedText.h"

namespace wakeloft {

// Sentences shown as one text, each looked up on its own and set one space
// apart in reading order (the layout direction takes care of which side
// that is).
class LocalizedSentences {
 public:
  LocalizedSentences(std::vector<LocalizedText> sentences) : sentences_(std::move(sentences)) {}

  const std::vector<LocalizedText>& sentences() const { return sentences_; }

  std::string resolved(const TextLookup& lookup) const {
    std::string text;
    for (const auto& sentence : sentences_) {
      if (!text.empty()) text += ' ';
      text += sentence.resolved(lookup);
    }
    return text;
  }
  std::string english() const { return resolved(nullptr); }

  friend bool operator==(const LocalizedSentences&, const LocalizedSentences&) = default;

 private:
  std::vector<LocalizedText> sentences_;
};

}  // namespace wakeloft
