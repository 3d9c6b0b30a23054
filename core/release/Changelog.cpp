#include "release/Changelog.h"

#include <vector>

#include "release/AppcastItem.h"

namespace wakeloft::Changelog {

namespace {

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r')) text.remove_suffix(1);
  return text;
}

// "[1.2.0] - 2026-05-01" or "1.2.0 - ..." gives "1.2.0".
std::string_view headingVersion(std::string_view heading) {
  if (heading.starts_with('[')) {
    const auto end = heading.find(']');
    return end == std::string_view::npos ? std::string_view{} : heading.substr(1, end - 1);
  }
  return heading.substr(0, heading.find(' '));
}

// Escaped, with `code` spans as <code>.
std::string inline_(std::string_view text) {
  std::string out;
  bool inCode = false;
  for (std::size_t start = 0;;) {
    const auto tick = text.find('`', start);
    out += AppcastItem::escaped(text.substr(start, tick == std::string_view::npos ? tick : tick - start));
    if (tick == std::string_view::npos) break;
    out += inCode ? "</code>" : "<code>";
    inCode = !inCode;
    start = tick + 1;
  }
  if (inCode) out += "</code>";
  return out;
}

}  // namespace

std::variant<std::string, Error> releaseNotes(std::string_view changelog, std::string_view version) {
  std::vector<std::string_view> lines;
  bool inSection = false;
  bool found = false;
  for (std::size_t start = 0; start <= changelog.size();) {
    auto end = changelog.find('\n', start);
    if (end == std::string_view::npos) end = changelog.size();
    const std::string_view line = changelog.substr(start, end - start);
    start = end + 1;
    if (line.starts_with("## ")) {
      if (inSection) break;
      inSection = found = headingVersion(trimmed(line.substr(3))) == version;
    } else if (inSection) {
      lines.push_back(line);
    }
  }
  if (!found) return Error{"CHANGELOG.md has no section \"## [" + std::string(version) + "]\""};

  // A list item or paragraph gathers its indented continuation lines.
  std::string html;
  std::string block;
  enum class Open { nothing, item, paragraph } open = Open::nothing;
  bool inList = false;
  const auto flush = [&] {
    if (open == Open::item) html += "<li>" + inline_(block) + "</li>";
    if (open == Open::paragraph) html += "<p>" + inline_(block) + "</p>";
    open = Open::nothing;
    block.clear();
  };
  const auto closeList = [&] {
    if (inList) html += "</ul>";
    inList = false;
  };
  for (const auto raw : lines) {
    const std::string_view line = trimmed(raw);
    const bool indented = !raw.empty() && (raw.front() == ' ' || raw.front() == '\t');
    if (line.empty()) {
      flush();
      closeList();
    } else if (line.starts_with("#")) {
      flush();
      closeList();
      const auto text = trimmed(line.substr(line.find_first_not_of('#')));
      html += "<h3>" + inline_(text) + "</h3>";
    } else if (line.starts_with("- ") || line.starts_with("* ")) {
      flush();
      if (!inList) html += "<ul>";
      inList = true;
      open = Open::item;
      block = trimmed(line.substr(2));
    } else if (open != Open::nothing && (indented || open == Open::paragraph)) {
      block += ' ';
      block += line;
    } else {
      flush();
      closeList();
      open = Open::paragraph;
      block = line;
    }
  }
  flush();
  closeList();
  if (html.empty()) return Error{"the CHANGELOG.md section for " + std::string(version) + " is empty"};
  return html;
}

}  // namespace wakeloft::Changelog
