#include "release/AppcastItem.h"

#include <cstdio>
#include <stdexcept>

namespace wakeloft {

std::string AppcastItem::escaped(std::string_view text) {
  std::string out;
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\'':
        out += "&apos;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::string AppcastItem::rfc822Date(std::time_t time) {
  // English names whatever the locale: RSS readers parse these.
  static constexpr const char* days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  static constexpr const char* months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                           "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  std::tm utc{};
  if (!gmtime_r(&time, &utc)) throw std::invalid_argument("a publication date out of range");
  char text[40];
  std::snprintf(text, sizeof text, "%s, %02d %s %04d %02d:%02d:%02d +0000", days[utc.tm_wday], utc.tm_mday,
                months[utc.tm_mon], utc.tm_year + 1900, utc.tm_hour, utc.tm_min, utc.tm_sec);
  return text;
}

std::string AppcastItem::xml(std::string_view indent, std::string_view step) const {
  const std::string inner = std::string("\n") + std::string(indent) + std::string(step);
  const auto element = [&](std::string_view name, std::string_view value) {
    return inner + "<" + std::string(name) + ">" + escaped(value) + "</" + std::string(name) + ">";
  };
  return "<item>" + element("title", title) + (description.empty() ? "" : element("description", description)) +
         element("pubDate", rfc822Date(publicationDate)) +
         element("sparkle:version", version) + element("sparkle:shortVersionString", shortVersion) +
         element("sparkle:minimumSystemVersion", minimumSystemVersion) + inner + "<enclosure url=\"" + escaped(url) +
         "\" length=\"" + std::to_string(length) + "\" type=\"application/octet-stream\" sparkle:edSignature=\"" +
         escaped(edSignature) + "\"/>\n" + std::string(indent) + "</item>";
}

}  // namespace wakeloft
