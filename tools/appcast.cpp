// Adds a release to a Sparkle appcast: signs the archive with the EdDSA key
// exported by Sparkle's generate_keys and writes the feed anew with the new
// item first. Exit status 0 when written, 1 when refused (the feed is then
// untouched), 64 for a malformed command line.
#include <cstdio>
#include <ctime>
#include <exception>
#include <string>
#include <variant>
#include <vector>

#include "release/AppcastRelease.h"

int main(int argc, char** argv) {
  using wakeloft::AppcastItem;
  using wakeloft::AppcastRelease;
  try {
    const auto parsed = AppcastRelease::parse(std::vector<std::string>(argv + 1, argv + argc), std::time(nullptr));
    if (const auto* error = std::get_if<AppcastRelease::Error>(&parsed)) {
      std::fprintf(stderr, "appcast: %s\n%s\n", error->message.c_str(), AppcastRelease::usage);
      return 64;
    }
    const auto& release = std::get<AppcastRelease>(parsed);
    const auto added = release.add();
    if (const auto* error = std::get_if<AppcastRelease::Error>(&added)) {
      std::fprintf(stderr, "appcast: %s\n", error->message.c_str());
      return 1;
    }
    const auto& item = std::get<AppcastItem>(added);
    std::printf("appcast: %s: added %s (build %s), %llu bytes, signed\n", release.feedPath.c_str(),
                item.shortVersion.c_str(), item.version.c_str(), static_cast<unsigned long long>(item.length));
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "appcast: %s\n", error.what());
    return 1;
  }
}
