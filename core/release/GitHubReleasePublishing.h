#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace wakeloft {

// How a release reaches its users whole: created as a draft, every file
// uploaded to it, and only then published. A published release with a file
// still missing would send updaters to an enclosure that is not there yet.
namespace GitHubReleasePublishing {

enum class State { absent, draft, published };

struct Error {
  std::string message;
};

// A `gh` command line, without "gh" itself.
using Command = std::vector<std::string>;

// The commands that take the release of `tag` from `state` to published
// with `files` attached: a new draft carrying the files, or the files
// uploaded to the existing draft (replacing any of the same name); then the
// publication, as the repository's latest release. A published release is
// refused: its files are already in users' hands.
std::variant<std::vector<Command>, Error> steps(State state, const std::string& tag, const std::string& title,
                                                const std::vector<std::string>& files);

// The state from `gh release view TAG --json isDraft --jq .isDraft`: its
// exit status and output ("true", "false", or "release not found").
std::optional<State> stateFromView(int exitStatus, std::string_view output);

}  // namespace GitHubReleasePublishing
}  // namespace wakeloft
