#include "rig/RigOptions.h"

#include <charconv>
#include <limits>
#include <map>

#include "helper/RigLeaseFile.h"

namespace wakeloft {

std::variant<RigOptions, RigOptions::Error> RigOptions::parse(const std::vector<std::string>& arguments, uid_t ownUid) {
  bool rig = false;
  std::map<std::string, std::string> values;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& name = arguments[i];
    if (name == "--rig") {
      if (rig) return Error{"--rig is given twice"};
      rig = true;
      continue;
    }
    if (name != "--socket" && name != "--rig-file" && name != "--lid-file" && name != "--allow-uid") {
      return Error{"unknown argument \"" + name + "\""};
    }
    if (values.contains(name)) return Error{name + " is given twice"};
    if (i + 1 >= arguments.size() || arguments[i + 1].empty()) return Error{name + " needs a value"};
    values[name] = arguments[++i];
  }
  if (!rig) return Error{"--rig is required: on this system the helper serves only the lease rig"};
  if (!values.contains("--socket")) return Error{"--socket PATH is required"};

  RigOptions options;
  options.socketPath = values["--socket"];
  options.rigFilePath = values.contains("--rig-file") ? values["--rig-file"] : std::string(RigLeaseFile::defaultPath);
  if (values.contains("--lid-file")) options.lidFilePath = values["--lid-file"];
  options.allowedUid = ownUid;
  if (values.contains("--allow-uid")) {
    const std::string& text = values["--allow-uid"];
    unsigned long long uid = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), uid);
    // (uid_t)-1 stands for "no user" and is never a peer's uid.
    if (error != std::errc() || end != text.data() + text.size() || uid >= std::numeric_limits<uid_t>::max()) {
      return Error{"--allow-uid needs a user id, not \"" + text + "\""};
    }
    options.allowedUid = static_cast<uid_t>(uid);
  }
  return options;
}

}  // namespace wakeloft
