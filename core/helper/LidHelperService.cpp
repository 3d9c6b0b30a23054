#include "helper/LidHelperService.h"

#include "helper/BundleVersion.h"

namespace wakeloft::LidHelperService {

namespace {

bool isTeamIdentifier(std::string_view team) {
  if (team.size() != 10) return false;
  for (const char c : team) {
    if (!((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'))) return false;
  }
  return true;
}

// Nothing here may close the quoted string or start a new clause.
bool isSigningIdentifier(std::string_view identifier) {
  if (identifier.empty()) return false;
  for (const char c : identifier) {
    const bool allowed =
        (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' || c == '-';
    if (!allowed) return false;
  }
  return true;
}

}  // namespace

PropertyList launchdPlist() {
  return PropertyList::Dictionary{
      {"Label", std::string(label)},
      {"BundleProgram", std::string(bundleProgram)},
      {"MachServices", PropertyList::Dictionary{{std::string(label), true}}},
      {"AssociatedBundleIdentifiers", PropertyList::Array{std::string(appIdentifier)}},
      {"RunAtLoad", true},
      {"KeepAlive", true},
  };
}

std::optional<std::string> codeRequirement(std::string_view identifier,
                                           const std::optional<std::string>& teamIdentifier) {
  if (!teamIdentifier || !isTeamIdentifier(*teamIdentifier)) return std::nullopt;
  if (!isSigningIdentifier(identifier)) return std::nullopt;
  return "anchor apple generic and identifier \"" + std::string(identifier) +
         "\" and certificate leaf[subject.OU] = \"" + *teamIdentifier + "\"";
}

std::optional<std::string> callerRequirement(const std::optional<std::string>& teamIdentifier) {
  if (!teamIdentifier || !isTeamIdentifier(*teamIdentifier)) return std::nullopt;
  return "anchor apple generic and (identifier \"" + std::string(appIdentifier) + "\" or identifier \"" +
         std::string(commandIdentifier) + "\") and certificate leaf[subject.OU] = \"" + *teamIdentifier + "\"";
}

std::string startLine(const std::optional<std::string>& executablePath,
                      const std::optional<std::string>& launchedPath,
                      const std::optional<std::string>& codeDirectoryHash, const PropertyListParser& parser) {
  std::string version = "version unknown";
  if (executablePath) {
    if (const auto bundle = BundleVersion::aroundExecutable(*executablePath, parser)) {
      version = bundle->text();
    }
  }
  std::string line = "helper starting: Wakeloft " + version + ", cdhash " + codeDirectoryHash.value_or("unknown") +
                     ", from " + executablePath.value_or("a path that could not be read");
  if (launchedPath && launchedPath != executablePath) line += ", started as " + *launchedPath;
  return line;
}

}  // namespace wakeloft::LidHelperService
