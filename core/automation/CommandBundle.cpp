#include "automation/CommandBundle.h"

namespace wakeloft::CommandBundle {

std::optional<std::string> enclosingApp(std::string_view executablePath) {
  constexpr std::string_view helpers = "/Contents/Helpers/";
  const auto name = executablePath.rfind('/');
  if (executablePath.empty() || executablePath.front() != '/' || name == std::string_view::npos ||
      name + 1 == executablePath.size()) {
    return std::nullopt;
  }
  const auto directory = executablePath.substr(0, name + 1);
  if (!directory.ends_with(helpers)) return std::nullopt;
  const auto bundle = directory.substr(0, directory.size() - helpers.size());
  const auto bundleName = bundle.substr(bundle.rfind('/') + 1);
  if (!bundleName.ends_with(".app") || bundleName.size() == 4) return std::nullopt;
  return std::string(bundle);
}

}  // namespace wakeloft::CommandBundle
