#include "prefs/FeedbackLink.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <vector>

#ifndef WAKELOFT_FEEDBACK_HOST
#error "WAKELOFT_FEEDBACK_HOST must name the feedback site; the build sets it."
#endif

namespace wakeloft::FeedbackLink {

namespace {

bool isLabel(std::string_view label) {
  if (label.empty() || label.size() > 63 || label.front() == '-' || label.back() == '-') return false;
  for (const char c : label) {
    const bool letterOrDigit = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    if (!letterOrDigit && c != '-') return false;
  }
  return true;
}

bool isHostName(std::string_view name) {
  if (name.empty() || name.size() > 253) return false;
  for (std::size_t start = 0;;) {
    const auto dot = name.find('.', start);
    if (!isLabel(name.substr(start, dot == std::string_view::npos ? std::string_view::npos : dot - start))) return false;
    if (dot == std::string_view::npos) return true;
    start = dot + 1;
  }
}

bool isPort(std::string_view digits) {
  if (digits.empty() || digits.size() > 5 || digits.front() == '0') return false;
  unsigned value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return error == std::errc() && end == digits.data() + digits.size() && value <= 65535;
}

// The site part of the form, checked once.
const std::string& site() {
  static const std::string checked = [] {
    const std::string_view host = WAKELOFT_FEEDBACK_HOST;
    if (!formOn(host)) {
      std::fprintf(stderr, "Wakeloft: the feedback site \"%.*s\" is not a host name.\n", static_cast<int>(host.size()),
                   host.data());
      std::fflush(stderr);
      std::abort();
    }
    return "https://" + std::string(host);
  }();
  return checked;
}

// Everything but the unreserved characters, so that "&", "=", "+" and "#"
// in a value cannot change how the query reads.
std::string percentEncoded(std::string_view text) {
  static constexpr char hex[] = "0123456789ABCDEF";
  std::string encoded;
  encoded.reserve(text.size());
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool unreserved = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
                            c == '.' || c == '_' || c == '~';
    if (unreserved) {
      encoded += c;
    } else {
      encoded += '%';
      encoded += hex[byte >> 4];
      encoded += hex[byte & 0x0F];
    }
  }
  return encoded;
}

}  // namespace

std::optional<std::string> formOn(std::string_view host) {
  const auto colon = host.rfind(':');
  const auto name = host.substr(0, colon);
  if (!isHostName(name)) return std::nullopt;
  if (colon != std::string_view::npos && !isPort(host.substr(colon + 1))) return std::nullopt;
  return "https://" + std::string(host) + std::string(path);
}

const std::string& form() {
  static const std::string address = site() + std::string(path);
  return address;
}

const std::set<std::string, std::less<>>& languages() {
  static const std::set<std::string, std::less<>> translated = {"ar", "de", "es", "fr", "fr-CA", "it",
                                                               "ja", "pl", "ru", "uk", "zh-Hans", "zh-Hant"};
  return translated;
}

std::string macOSVersion(const OperatingSystemVersion& version) {
  auto text = std::to_string(version.majorVersion) + "." + std::to_string(version.minorVersion);
  if (version.patchVersion != 0) text += "." + std::to_string(version.patchVersion);
  return text;
}

std::string url(const std::optional<std::string>& appVersion, const std::optional<std::string>& systemVersion,
                const std::optional<std::string>& language) {
  auto address = site();
  if (language && languages().contains(*language)) address += "/" + *language;
  address += path;

  std::vector<std::pair<std::string_view, std::string_view>> items;
  if (appVersion && !appVersion->empty()) items.emplace_back("app", *appVersion);
  if (systemVersion && !systemVersion->empty()) items.emplace_back("macos", *systemVersion);
  for (std::size_t i = 0; i < items.size(); ++i) {
    address += i == 0 ? '?' : '&';
    address += percentEncoded(items[i].first);
    address += '=';
    address += percentEncoded(items[i].second);
  }
  return address;
}

}  // namespace wakeloft::FeedbackLink
