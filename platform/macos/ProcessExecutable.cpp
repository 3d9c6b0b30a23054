#include "ProcessExecutable.h"

#include <libproc.h>
#include <limits.h>
#include <mach-o/dyld.h>
#include <mach-o/ldsyms.h>
#include <sys/proc_info.h>
#include <sys/sysctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

namespace wakeloft::ProcessExecutable {

std::optional<LidHelperFileWatch::File> runningFile() {
  // The region that holds the executable's own header is mapped from its file.
  const auto header = reinterpret_cast<std::uint64_t>(&_mh_execute_header);
  proc_regionwithpathinfo region{};
  static_assert(sizeof region == 1272, "the kernel's region-with-path record");
  const int filled = proc_pidinfo(::getpid(), PROC_PIDREGIONPATHINFO, header, &region, sizeof region);
  if (filled < static_cast<int>(sizeof region)) return std::nullopt;
  // Asked for an address outside any region, the kernel answers with the next.
  const auto& mapped = region.prp_prinfo;
  if (header < mapped.pri_address || header - mapped.pri_address >= mapped.pri_size) return std::nullopt;
  const auto& status = region.prp_vip.vip_vi.vi_stat;
  // Widened the way stat(2)'s st_dev is, so the two compare equal.
  return LidHelperFileWatch::File{static_cast<std::uint64_t>(static_cast<dev_t>(status.vst_dev)), status.vst_ino};
}

std::optional<std::string> launchedPath(pid_t process) {
  int name[] = {CTL_KERN, KERN_PROCARGS2, process};
  size_t size = 0;
  if (::sysctl(name, 3, nullptr, &size, nullptr, 0) != 0 || size == 0) return std::nullopt;
  std::vector<std::uint8_t> area(size);
  if (::sysctl(name, 3, area.data(), &size, nullptr, 0) != 0) return std::nullopt;
  area.resize(std::min(size, area.size()));
  return LidHelperFileWatch::launchedPath(area);
}

std::optional<std::string> path() {
  std::vector<char> buffer(PATH_MAX);
  auto size = static_cast<uint32_t>(buffer.size());
  if (_NSGetExecutablePath(buffer.data(), &size) != 0) {
    // Too small: `size` now says how much is needed.
    buffer.assign(size, '\0');
    if (_NSGetExecutablePath(buffer.data(), &size) != 0) return std::nullopt;
  }
  const auto length = ::strnlen(buffer.data(), buffer.size());
  if (length == 0 || length == buffer.size()) return std::nullopt;
  return std::string(buffer.data(), length);
}

}  // namespace wakeloft::ProcessExecutable
