#include "helper/BundleVersion.h"

#include <cstdint>
#include <filesystem>
#include <span>

#include "base/RegularFile.h"

namespace wakeloft {

namespace {

bool isAsciiAlphanumeric(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

}  // namespace

bool BundleVersion::isVersionText(std::string_view text) {
  if (text.empty() || text.size() > maxVersionTextBytes) return false;
  for (const char c : text) {
    if (!isAsciiAlphanumeric(c) && c != '.' && c != '-' && c != '_') return false;
  }
  return true;
}

std::optional<BundleVersion> BundleVersion::fromInfoDictionary(const PropertyList& info) {
  if (!info.holds<PropertyList::Dictionary>()) return std::nullopt;
  const auto* shortVersion = findEntry(info, "CFBundleShortVersionString");
  const auto* build = findEntry(info, "CFBundleVersion");
  if (!shortVersion || !build) return std::nullopt;
  const auto* shortText = shortVersion->get<std::string>();
  const auto* buildText = build->get<std::string>();
  if (!shortText || !buildText || !isVersionText(*shortText) || !isVersionText(*buildText)) return std::nullopt;
  return BundleVersion{*shortText, *buildText};
}

std::optional<BundleVersion> BundleVersion::aroundExecutable(std::string_view executablePath,
                                                             const PropertyListParser& parser) {
  // A path that names a directory, or has no directory part, has no
  // Contents folder to go up to.
  if (executablePath.empty() || executablePath.back() == '/') return std::nullopt;
  const std::filesystem::path program(executablePath);
  if (!program.has_parent_path()) return std::nullopt;
  const auto contents = program.parent_path().parent_path();
  const auto infoPlist = contents.empty() ? std::filesystem::path("Info.plist") : contents / "Info.plist";

  const auto bytes = RegularFile::read(infoPlist.string(), maxInfoPlistBytes);
  if (!bytes) return std::nullopt;
  try {
    const auto info = parser.parse(std::span(reinterpret_cast<const std::uint8_t*>(bytes->data()), bytes->size()));
    return fromInfoDictionary(info);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

}  // namespace wakeloft
