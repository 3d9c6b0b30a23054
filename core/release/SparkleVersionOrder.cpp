#include "release/SparkleVersionOrder.h"

#include <climits>
#include <vector>

namespace wakeloft::SparkleVersionOrder {

namespace {

enum class Kind { number, letters, period, punctuation, whitespace, dash };

// Foundation's character sets, restricted to ASCII: its punctuation set is
// Unicode's P categories, so "$+<=>^`|~" (symbols) count as letters.
Kind kindOf(char c) {
  if (c == '.') return Kind::period;
  if (c == '-') return Kind::dash;
  if (c >= '0' && c <= '9') return Kind::number;
  if (c == ' ' || (c >= '\t' && c <= '\r')) return Kind::whitespace;
  if (std::string_view("!\"#%&'()*,/:;?@[\\]_{}").find(c) != std::string_view::npos) return Kind::punctuation;
  return Kind::letters;
}

Kind kindOf(std::string_view part) { return kindOf(part.front()); }

bool isSeparator(Kind kind) { return kind == Kind::period || kind == Kind::punctuation || kind == Kind::whitespace; }

std::vector<std::string_view> split(std::string_view version) {
  std::vector<std::string_view> parts;
  if (version.empty()) return parts;
  std::size_t start = 0;
  Kind previous = kindOf(version[0]);
  for (std::size_t i = 1; i < version.size(); ++i) {
    const Kind kind = kindOf(version[i]);
    if (kind == Kind::dash) {
      version = version.substr(0, i);
      break;
    }
    if (kind != previous || isSeparator(previous)) {
      parts.push_back(version.substr(start, i - start));
      start = i;
    }
    previous = kind;
  }
  parts.push_back(version.substr(start));
  return parts;
}

std::size_t leadingNumbersAndPeriods(const std::vector<std::string_view>& parts) {
  std::size_t count = 0;
  while (count < parts.size() && (kindOf(parts[count]) == Kind::number || kindOf(parts[count]) == Kind::period))
    ++count;
  return count;
}

// Pads the shorter run of leading numbers and periods with "0" and "." as
// the longer one has them, so "1.0b1" meets "1.0.0b1" as "1.0.0b1".
void balance(std::vector<std::string_view>& a, std::vector<std::string_view>& b) {
  const std::size_t countA = leadingNumbersAndPeriods(a);
  const std::size_t countB = leadingNumbersAndPeriods(b);
  auto& shorter = countA < countB ? a : b;
  const auto& longer = countA < countB ? b : a;
  const std::size_t from = std::min(countA, countB);
  for (std::size_t i = from; i < std::max(countA, countB); ++i) {
    shorter.insert(shorter.begin() + static_cast<std::ptrdiff_t>(i),
                   kindOf(longer[i]) == Kind::period ? std::string_view(".") : std::string_view("0"));
  }
}

// NSString's longLongValue of a run of digits: saturates when too large.
long long valueOf(std::string_view digits) {
  long long value = 0;
  for (const char c : digits) {
    const int digit = c - '0';
    if (value > (LLONG_MAX - digit) / 10) return LLONG_MAX;
    value = value * 10 + digit;
  }
  return value;
}

}  // namespace

std::strong_ordering compare(std::string_view a, std::string_view b) {
  auto partsA = split(a);
  auto partsB = split(b);
  balance(partsA, partsB);

  const std::size_t common = std::min(partsA.size(), partsB.size());
  for (std::size_t i = 0; i < common; ++i) {
    const Kind kindA = kindOf(partsA[i]);
    const Kind kindB = kindOf(partsB[i]);
    const bool sameClass = kindA == kindB || (isSeparator(kindA) && isSeparator(kindB));
    if (sameClass) {
      if (kindA == Kind::number) {
        if (const auto order = valueOf(partsA[i]) <=> valueOf(partsB[i]); order != 0) return order;
      } else if (kindA == Kind::letters) {
        if (const auto order = partsA[i].compare(partsB[i]) <=> 0; order != 0) return order;
      }
    } else if (kindB == Kind::letters) {
      return std::strong_ordering::greater;
    } else if (kindA == Kind::letters) {
      return std::strong_ordering::less;
    } else {
      // A number beside a separator: the number wins.
      return kindA == Kind::number ? std::strong_ordering::greater : std::strong_ordering::less;
    }
  }
  if (partsA.size() == partsB.size()) return std::strong_ordering::equal;
  // One is longer: its next part decides; letters make it the older one
  // ("1.0b" < "1.0"), anything else the newer ("1.0" < "1.0.1").
  const bool aLonger = partsA.size() > partsB.size();
  const bool nextIsLetters = kindOf((aLonger ? partsA : partsB)[common]) == Kind::letters;
  return aLonger != nextIsLetters ? std::strong_ordering::greater : std::strong_ordering::less;
}

}  // namespace wakeloft::SparkleVersionOrder
