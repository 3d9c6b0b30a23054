#pragma once

#include <string>
#include <string_view>
#include <variant>

namespace wakeloft {

// CHANGELOG.md, one section a version in the Keep a Changelog manner:
//   ## [1.2.0] - 2026-05-01
//   ### Fixed
//   - A line of notes, `code` allowed,
//     continued on an indented line.
// Each release's notes in the appcast come from its section.
namespace Changelog {

struct Error {
  std::string message;
};

// The section of `version` as the HTML Sparkle shows (headings, lists and
// paragraphs; every other character escaped), or why there is none: no
// such heading, or a section with nothing in it.
std::variant<std::string, Error> releaseNotes(std::string_view changelog, std::string_view version);

}  // namespace Changelog
}  // namespace wakeloft
