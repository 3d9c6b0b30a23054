#include <gtest/gtest.h>

#include <string>

#include "release/Changelog.h"

namespace wakeloft {
namespace {

constexpr std::string_view changelog =
    "# Changelog\n\nIntro.\n\n"
    "## [1.10.0] - 2026-06-01\n### Fixed\n- Newer\n\n"
    "## [1.1.0] - 2026-05-01\n\n### Added\n\n- One `wakeloft run`,\n  continued\n* Two <b>\n\nA closing line\nof text.\n\n"
    "## 1.0.0\n- First\n"
    "## [0.9.0]\n\n";

std::string notes(std::string_view version) {
  const auto result = Changelog::releaseNotes(changelog, version);
  return std::holds_alternative<std::string>(result) ? std::get<std::string>(result)
                                                     : "refused: " + std::get<Changelog::Error>(result).message;
}

TEST(ChangelogTest, AVersionsSectionAloneBecomesEscapedHtmlAndAMissingOrEmptyOneIsRefused) {
  EXPECT_EQ(notes("1.1.0"),
            "<h3>Added</h3><ul><li>One <code>wakeloft run</code>, continued</li><li>Two &lt;b&gt;</li></ul>"
            "<p>A closing line of text.</p>");
  EXPECT_EQ(notes("1.0.0"), "<ul><li>First</li></ul>");
  EXPECT_EQ(notes("1.1"), "refused: CHANGELOG.md has no section \"## [1.1]\"");
  EXPECT_EQ(notes("0.9.0"), "refused: the CHANGELOG.md section for 0.9.0 is empty");
}

}  // namespace
}  // namespace wakeloft
