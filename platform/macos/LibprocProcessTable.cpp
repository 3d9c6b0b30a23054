#include "LibprocProcessTable.h"

#include <libproc.h>
#include <sys/proc.h>
#include <sys/proc_info.h>

#include <cstring>

namespace wakeloft {

namespace {

// The kernel fills a name field to its end without a terminator.
std::string bounded(const char* text, std::size_t size) { return std::string(text, ::strnlen(text, size)); }

}  // namespace

std::optional<RunningProcess> LibprocProcessTable::find(pid_t pid) const {
  if (pid <= 0) return std::nullopt;
  proc_bsdinfo info{};
  const int filled = ::proc_pidinfo(pid, PROC_PIDTBSDINFO, 0, &info, sizeof info);
  if (filled != static_cast<int>(sizeof info) || static_cast<pid_t>(info.pbi_pid) != pid) return std::nullopt;
  // A zombie has ended, whoever has yet to reap it.
  if (info.pbi_status == SZOMB) return std::nullopt;
  // The longer name when the process registered one, else the command's.
  std::string name = bounded(info.pbi_name, sizeof info.pbi_name);
  if (name.empty()) name = bounded(info.pbi_comm, sizeof info.pbi_comm);
  return RunningProcess{{pid, info.pbi_start_tvsec * 1'000'000 + info.pbi_start_tvusec}, std::move(name)};
}

}  // namespace wakeloft
