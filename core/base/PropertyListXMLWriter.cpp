#include "base/PropertyListXMLWriter.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

#include "base/PropertyListError.h"
#include "base/Utf8.h"

namespace wakeloft::PropertyListXMLWriter {

namespace {

// Text content of <string> and <key>: escaped, and refused when XML 1.0
// cannot hold a character at all.
void appendText(std::string& out, std::string_view text) {
  while (!text.empty()) {
    const auto scalar = Utf8::front(text);
    if (!scalar.valid) throw PropertyListError("A property-list text is not valid UTF-8.");
    const char32_t c = scalar.value;
    const bool allowed = c == U'\t' || c == U'\n' || c == U'\r' || (c >= 0x20 && c <= 0xFFFD) || c >= 0x10000;
    if (!allowed) {
      char code[16];
      std::snprintf(code, sizeof code, "U+%04X", static_cast<unsigned>(c));
      throw PropertyListError(std::string("A property-list text holds the character ") + code +
                              ", which XML cannot carry.");
    }
    switch (c) {
      case U'&': out += "&amp;"; break;
      case U'<': out += "&lt;"; break;
      case U'>': out += "&gt;"; break;
      // A bare carriage return would come back as a line feed.
      case U'\r': out += "&#13;"; break;
      default: out.append(text.substr(0, scalar.length));
    }
    text.remove_prefix(scalar.length);
  }
}

std::string realText(double value) {
  if (!std::isfinite(value)) throw PropertyListError("A property-list real is not a finite number.");
  char buffer[64];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
}

// ISO 8601 in UTC to the whole second, as the XML format keeps dates.
std::string dateText(Date date) {
  using namespace std::chrono;
  if (!std::isfinite(date.secondsSince1970)) throw PropertyListError("A property-list date is not a finite instant.");
  const double whole = std::floor(date.secondsSince1970);
  // Year 0 to 9999, the years four digits can write.
  if (whole < -62167219200.0 || whole > 253402300799.0) {
    throw PropertyListError("A property-list date lies outside the years 0 to 9999.");
  }
  const sys_seconds instant{seconds{static_cast<long long>(whole)}};
  const auto day = floor<days>(instant);
  const year_month_day ymd{day};
  const hh_mm_ss time{instant - day};
  // Room for any value of each field, not only those a date can have, so
  // that no compiler has to take the ranges on trust.
  char buffer[96];
  std::snprintf(buffer, sizeof buffer, "%04d-%02u-%02uT%02lld:%02lld:%02lldZ", static_cast<int>(ymd.year()),
                static_cast<unsigned>(ymd.month()), static_cast<unsigned>(ymd.day()),
                static_cast<long long>(time.hours().count()), static_cast<long long>(time.minutes().count()),
                static_cast<long long>(time.seconds().count()));
  return buffer;
}

std::string base64(const PropertyList::Data& data) {
  static constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string out;
  out.reserve((data.size() + 2) / 3 * 4);
  std::size_t i = 0;
  for (; i + 2 < data.size(); i += 3) {
    const unsigned bits = (data[i] << 16) | (data[i + 1] << 8) | data[i + 2];
    out += alphabet[(bits >> 18) & 63];
    out += alphabet[(bits >> 12) & 63];
    out += alphabet[(bits >> 6) & 63];
    out += alphabet[bits & 63];
  }
  if (const auto rest = data.size() - i; rest > 0) {
    const unsigned bits = (data[i] << 16) | (rest == 2 ? data[i + 1] << 8 : 0);
    out += alphabet[(bits >> 18) & 63];
    out += alphabet[(bits >> 12) & 63];
    out += rest == 2 ? alphabet[(bits >> 6) & 63] : '=';
    out += '=';
  }
  return out;
}

void appendValue(std::string& out, const PropertyList& value, int depth) {
  const std::string indent(static_cast<std::size_t>(depth), '\t');
  out += indent;
  if (const auto* flag = value.get<bool>()) {
    out += *flag ? "<true/>\n" : "<false/>\n";
  } else if (const auto* integer = value.get<std::int64_t>()) {
    out += "<integer>" + std::to_string(*integer) + "</integer>\n";
  } else if (const auto* real = value.get<double>()) {
    out += "<real>" + realText(*real) + "</real>\n";
  } else if (const auto* text = value.get<std::string>()) {
    out += "<string>";
    appendText(out, *text);
    out += "</string>\n";
  } else if (const auto* date = value.get<Date>()) {
    out += "<date>" + dateText(*date) + "</date>\n";
  } else if (const auto* data = value.get<PropertyList::Data>()) {
    out += "<data>" + base64(*data) + "</data>\n";
  } else if (const auto* array = value.get<PropertyList::Array>()) {
    if (array->empty()) {
      out += "<array/>\n";
      return;
    }
    out += "<array>\n";
    for (const auto& element : *array) appendValue(out, element, depth + 1);
    out += indent + "</array>\n";
  } else if (const auto* dictionary = value.get<PropertyList::Dictionary>()) {
    if (dictionary->empty()) {
      out += "<dict/>\n";
      return;
    }
    out += "<dict>\n";
    for (const auto& [key, element] : *dictionary) {
      out += indent + "\t<key>";
      appendText(out, key);
      out += "</key>\n";
      appendValue(out, element, depth + 1);
    }
    out += indent + "</dict>\n";
  }
}

}  // namespace

std::string document(const PropertyList& value) {
  std::string out =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
      "<plist version=\"1.0\">\n";
  appendValue(out, value, 0);
  out += "</plist>\n";
  return out;
}

}  // namespace wakeloft::PropertyListXMLWriter
