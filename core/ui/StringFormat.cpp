#include "ui/StringFormat.h"

#include <cstddef>

namespace wakeloft::StringFormat {

namespace {

// One placeholder, or a run of literal text when `argument` is empty.
struct Piece {
  std::string_view literal;
  std::optional<std::size_t> argument;
};

struct Parsed {
  std::vector<Piece> pieces;
  // By position; a gap is a position no placeholder names.
  std::vector<std::optional<Conversion>> conversions;
};

std::optional<Parsed> parse(std::string_view format) {
  Parsed parsed;
  auto& byPosition = parsed.conversions;
  bool positional = false;
  bool plain = false;
  std::size_t nextPlain = 0;

  std::size_t i = 0;
  while (i < format.size()) {
    const auto percent = format.find('%', i);
    if (percent != i) {
      const auto end = percent == std::string_view::npos ? format.size() : percent;
      parsed.pieces.push_back({format.substr(i, end - i), std::nullopt});
      i = end;
      continue;
    }
    ++i;
    if (i >= format.size()) return std::nullopt;
    if (format[i] == '%') {
      parsed.pieces.push_back({format.substr(i, 1), std::nullopt});
      ++i;
      continue;
    }

    std::size_t index = 0;
    if (format[i] >= '1' && format[i] <= '9') {
      std::size_t position = 0;
      while (i < format.size() && format[i] >= '0' && format[i] <= '9') {
        position = position * 10 + static_cast<std::size_t>(format[i] - '0');
        if (position > 99) return std::nullopt;
        ++i;
      }
      if (i >= format.size() || format[i] != '$') return std::nullopt;
      ++i;
      positional = true;
      index = position - 1;
    } else {
      plain = true;
      index = nextPlain++;
    }
    if (positional && plain) return std::nullopt;
    if (i >= format.size()) return std::nullopt;

    Conversion conversion;
    if (format[i] == '@') {
      conversion = Conversion::words;
    } else if (format[i] == 'd') {
      conversion = Conversion::number;
    } else {
      return std::nullopt;
    }
    ++i;

    if (byPosition.size() <= index) byPosition.resize(index + 1);
    if (byPosition[index] && *byPosition[index] != conversion) return std::nullopt;
    byPosition[index] = conversion;
    parsed.pieces.push_back({{}, index});
  }

  return parsed;
}

bool fits(Conversion conversion, const TextArgument& argument) {
  return conversion == Conversion::words ? std::holds_alternative<std::string>(argument)
                                         : !std::holds_alternative<std::string>(argument);
}

}  // namespace

std::optional<std::vector<Conversion>> conversions(std::string_view format) {
  const auto parsed = parse(format);
  if (!parsed) return std::nullopt;
  std::vector<Conversion> result;
  for (const auto& conversion : parsed->conversions) {
    if (!conversion) return std::nullopt;
    result.push_back(*conversion);
  }
  return result;
}

std::optional<std::string> formatted(std::string_view format, std::span<const TextArgument> arguments) {
  const auto parsed = parse(format);
  if (!parsed || parsed->conversions.size() > arguments.size()) return std::nullopt;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const auto conversion = i < parsed->conversions.size() ? parsed->conversions[i] : std::nullopt;
    // Only a count may go unsaid: a plural form can put it in words ("one
    // process").
    if (conversion ? !fits(*conversion, arguments[i]) : !std::holds_alternative<TextCount>(arguments[i])) {
      return std::nullopt;
    }
  }

  std::string text;
  for (const auto& piece : parsed->pieces) {
    if (!piece.argument) {
      text += piece.literal;
      continue;
    }
    const auto& argument = arguments[*piece.argument];
    if (const auto* words = std::get_if<std::string>(&argument)) {
      text += *words;
    } else if (const auto* count = std::get_if<TextCount>(&argument)) {
      text += count->digits;
    } else {
      text += std::to_string(std::get<std::int32_t>(argument));
    }
  }
  return text;
}

}  // namespace wakeloft::StringFormat
