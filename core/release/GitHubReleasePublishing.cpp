#include "release/GitHubReleasePublishing.h"

namespace wakeloft::GitHubReleasePublishing {

std::variant<std::vector<Command>, Error> steps(State state, const std::string& tag, const std::string& title,
                                                const std::vector<std::string>& files) {
  if (tag.empty() || tag.front() == '-') return Error{"\"" + tag + "\" is not a tag"};
  if (files.empty()) return Error{"a release needs at least one file"};
  std::vector<Command> commands;
  switch (state) {
    case State::published:
      return Error{"the release " + tag + " is already published; its files are not replaced"};
    case State::absent: {
      // --verify-tag: the tag must already be pushed, so gh never makes one.
      Command create{"release", "create", tag, "--draft", "--verify-tag", "--title", title, "--generate-notes"};
      create.insert(create.end(), files.begin(), files.end());
      commands.push_back(std::move(create));
      break;
    }
    case State::draft: {
      Command upload{"release", "upload", tag, "--clobber"};
      upload.insert(upload.end(), files.begin(), files.end());
      commands.push_back(std::move(upload));
      break;
    }
  }
  commands.push_back({"release", "edit", tag, "--draft=false", "--latest"});
  return commands;
}

std::optional<State> stateFromView(int exitStatus, std::string_view output) {
  while (!output.empty() && (output.back() == '\n' || output.back() == '\r')) output.remove_suffix(1);
  if (exitStatus == 0 && output == "true") return State::draft;
  if (exitStatus == 0 && output == "false") return State::published;
  if (exitStatus != 0 && output.find("release not found") != std::string_view::npos) return State::absent;
  return std::nullopt;
}

}  // namespace wakeloft::GitHubReleasePublishing
