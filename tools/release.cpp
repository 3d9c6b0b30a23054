// The release workflow's decisions, each a subcommand, so that they are
// tested on Linux rather than first run on a release day:
//
//   release feed-url OWNER/REPO
//       prints the update feed of the repository's latest release
//   release check-key --private-key FILE --public-key BASE64
//       whether the file generate_keys -x exported is the key of
//       SUPublicEDKey (before anything is built or notarized)
//   release publish TAG TITLE FILE...
//       creates the tag's release as a draft (or takes its draft), uploads
//       every file, then publishes it; runs `gh`, from $GH or the PATH
//
// Exit status 0 when done, 1 when refused or failed, 64 for a malformed
// command line.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

#include "base/ChildProcess.h"
#include "base/RegularFile.h"
#include "release/GitHubReleasePublishing.h"
#include "release/ReleaseFeed.h"
#include "release/SparkleSigningKey.h"

namespace {

using namespace wakeloft;

constexpr const char* usage =
    "usage: release feed-url OWNER/REPO\n"
    "       release check-key --private-key FILE --public-key BASE64\n"
    "       release publish TAG TITLE FILE...";
// Uploading an archive of a few megabytes takes seconds; this is the limit.
constexpr double ghSeconds = 600;

int refuse(const std::string& message) {
  std::fprintf(stderr, "release: %s\n", message.c_str());
  return 1;
}

std::string gh() {
  if (const char* given = std::getenv("GH"); given && *given) return given;
  std::stringstream path(std::getenv("PATH") ? std::getenv("PATH") : "");
  for (std::string folder; std::getline(path, folder, ':');) {
    const std::string candidate = folder + "/gh";
    if (!folder.empty() && ::access(candidate.c_str(), X_OK) == 0) return candidate;
  }
  return {};
}

int publish(const std::string& tag, const std::string& title, const std::vector<std::string>& files) {
  const std::string program = gh();
  if (program.empty()) return refuse("no gh on the PATH (or in $GH)");
  const auto view = ChildProcess::run({program, "release", "view", tag, "--json", "isDraft", "--jq", ".isDraft"},
                                      ghSeconds);
  const auto state = GitHubReleasePublishing::stateFromView(view.exitStatus, view.output);
  if (!state) return refuse("gh release view " + tag + " gave no answer to go by:\n" + view.output);
  const auto steps = GitHubReleasePublishing::steps(*state, tag, title, files);
  if (const auto* error = std::get_if<GitHubReleasePublishing::Error>(&steps)) return refuse(error->message);
  for (const auto& step : std::get<std::vector<GitHubReleasePublishing::Command>>(steps)) {
    std::vector<std::string> command{program};
    command.insert(command.end(), step.begin(), step.end());
    std::string shown = "gh";
    for (const auto& argument : step) shown += " " + argument;
    std::printf("release: %s\n", shown.c_str());
    std::fflush(stdout);
    const auto result = ChildProcess::run(command, ghSeconds);
    std::fputs(result.output.c_str(), stdout);
    if (result.exitStatus != 0) return refuse(shown + " failed with exit status " + std::to_string(result.exitStatus));
  }
  return 0;
}

int checkKey(const std::vector<std::string>& arguments) {
  std::string keyPath;
  std::string publicKey;
  for (std::size_t i = 0; i + 1 < arguments.size(); i += 2) {
    if (arguments[i] == "--private-key") keyPath = arguments[i + 1];
    if (arguments[i] == "--public-key") publicKey = arguments[i + 1];
  }
  if (arguments.size() != 4 || keyPath.empty() || publicKey.empty()) {
    std::fprintf(stderr, "%s\n", usage);
    return 64;
  }
  const auto text = RegularFile::read(keyPath, 4096);
  if (!text) return refuse("cannot read the private key file " + keyPath);
  const auto key = SparkleSigningKey::forPublicKey(*text, publicKey);
  if (const auto* error = std::get_if<SparkleSigningKey::Error>(&key)) return refuse(error->message);
  std::printf("release: the private key belongs to %s\n", publicKey.c_str());
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  const std::string command = arguments.empty() ? "" : arguments[0];
  try {
    if (command == "feed-url" && arguments.size() == 2) {
      const auto feed = ReleaseFeed::latestReleaseFeed(arguments[1]);
      if (!feed) return refuse("\"" + arguments[1] + "\" is not a GitHub repository such as owner/name");
      std::printf("%s\n", feed->c_str());
      return 0;
    }
    if (command == "check-key") return checkKey({arguments.begin() + 1, arguments.end()});
    if (command == "publish" && arguments.size() >= 4) {
      return publish(arguments[1], arguments[2], {arguments.begin() + 3, arguments.end()});
    }
    std::fprintf(stderr, "%s\n", usage);
    return 64;
  } catch (const std::exception& error) {
    return refuse(error.what());
  }
}
