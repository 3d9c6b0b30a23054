#include "release/ReleaseFeed.h"

#include <algorithm>

namespace wakeloft::ReleaseFeed {

namespace {

bool isNamePart(std::string_view part) {
  return !part.empty() && part.size() <= 100 && part != "." && part != ".." &&
         std::all_of(part.begin(), part.end(), [](char c) {
           return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
                  c == '_' || c == '.';
         });
}

}  // namespace

std::optional<std::string> latestReleaseFeed(std::string_view repository) {
  const auto slash = repository.find('/');
  if (slash == std::string_view::npos || !isNamePart(repository.substr(0, slash)) ||
      !isNamePart(repository.substr(slash + 1))) {
    return std::nullopt;
  }
  return "https://github.com/" + std::string(repository) + "/releases/latest/download/appcast.xml";
}

}  // namespace wakeloft::ReleaseFeed
