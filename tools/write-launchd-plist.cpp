// Prints the lid helper's launch-daemon property list, for the build to put
// into the app bundle under its file name.
#include <cstdio>
#include <exception>
#include <string>

#include "base/PropertyListXMLWriter.h"
#include "helper/LidHelperService.h"

int main() {
  try {
    const std::string document = wakeloft::PropertyListXMLWriter::document(wakeloft::LidHelperService::launchdPlist());
    if (std::fwrite(document.data(), 1, document.size(), stdout) != document.size() || std::fflush(stdout) != 0) {
      std::perror("write-launchd-plist");
      return 1;
    }
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "write-launchd-plist: %s\n", error.what());
    return 1;
  }
}
