#include "LibprocProcessTable.h"

#include <libproc.h>
#include <sys/proc.h>
#include <sys/proc_info.h>
#include <sys/sysctl.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

namespace wakeloft {

namespace {

// The kernel fills a name field to its end without a terminator.
std::string bounded(const char* text, std::size_t size) { return std::string(text, ::strnlen(text, size)); }

// The kernel's process list, which answers for every user's processes where
// libproc answers only for the caller's own.
std::optional<RunningProcess> findInProcessList(pid_t pid) {
  int name[] = {CTL_KERN, KERN_PROC, KERN_PROC_PID, pid};
  kinfo_proc info{};
  std::size_t size = sizeof info;
  // A pid nobody has comes back as success with nothing filled in.
  if (::sysctl(name, 4, &info, &size, nullptr, 0) != 0 || size != sizeof info) return std::nullopt;
  const extern_proc& process = info.kp_proc;
  if (process.p_pid != pid || process.p_stat == SZOMB) return std::nullopt;
  const timeval started = process.p_starttime;
  const auto microseconds = static_cast<std::uint64_t>(started.tv_sec) * 1'000'000 + static_cast<std::uint64_t>(started.tv_usec);
  return RunningProcess{{pid, microseconds},
                        bounded(process.p_comm, sizeof process.p_comm)};
}

}  // namespace

std::optional<RunningProcess> LibprocProcessTable::find(pid_t pid) const {
  if (pid <= 0) return std::nullopt;
  proc_bsdinfo info{};
  const int filled = ::proc_pidinfo(pid, PROC_PIDTBSDINFO, 0, &info, sizeof info);
  // Another user's process, say one started through sudo.
  if (filled <= 0 && errno == EPERM) return findInProcessList(pid);
  if (filled != static_cast<int>(sizeof info) || static_cast<pid_t>(info.pbi_pid) != pid) return std::nullopt;
  // A zombie has ended, whoever has yet to reap it.
  if (info.pbi_status == SZOMB) return std::nullopt;
  // The longer name when the process registered one, else the command's.
  std::string name = bounded(info.pbi_name, sizeof info.pbi_name);
  if (name.empty()) name = bounded(info.pbi_comm, sizeof info.pbi_comm);
  return RunningProcess{{pid, info.pbi_start_tvsec * 1'000'000 + info.pbi_start_tvusec}, std::move(name)};
}

}  // namespace wakeloft
