// The lease rig's command line: any arguments give options or an error that
// says why, and options given back as arguments parse to the same options.

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "FuzzCheck.h"
#include "rig/RigOptions.h"

using namespace wakeloft;
using fuzz::require;

namespace {

std::vector<std::string> arguments(const RigOptions& options) {
  std::vector<std::string> list = {"--socket", options.socketPath, "--rig-file", options.rigFilePath, "--rig",
                                   "--allow-uid", std::to_string(options.allowedUid)};
  if (options.lidFilePath) list.insert(list.end(), {"--lid-file", *options.lidFilePath});
  return list;
}

bool same(const RigOptions& a, const RigOptions& b) {
  return a.socketPath == b.socketPath && a.rigFilePath == b.rigFilePath && a.lidFilePath == b.lidFilePath &&
         a.allowedUid == b.allowedUid;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  // getuid() never answers (uid_t)-1.
  const auto ownUid = input.ConsumeIntegralInRange<uid_t>(0, static_cast<uid_t>(-2));
  std::vector<std::string> given;
  while (input.remaining_bytes() > 0 && given.size() < 12) {
    // Option names are common enough that the fuzzer meets each combination.
    if (input.ConsumeBool()) {
      given.push_back(input.PickValueInArray({"--rig", "--socket", "--rig-file", "--lid-file", "--allow-uid"}));
    } else {
      given.push_back(input.ConsumeRandomLengthString(24));
    }
  }

  const auto parsed = RigOptions::parse(given, ownUid);
  if (const auto* error = std::get_if<RigOptions::Error>(&parsed)) {
    require(!error->message.empty(), "an error says why");
    return 0;
  }
  const auto& options = std::get<RigOptions>(parsed);
  require(!options.socketPath.empty() && !options.rigFilePath.empty(), "a parsed command line has both paths");
  require(options.allowedUid != static_cast<uid_t>(-1), "no user is never the allowed one");
  const auto again = RigOptions::parse(arguments(options), ownUid + 1);
  const auto* back = std::get_if<RigOptions>(&again);
  require(back && same(*back, options), "options given back as arguments parse the same");
  return 0;
}
