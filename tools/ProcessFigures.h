#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace wakeloft::bench {

// What the kernel counts for a running process: context switches of all its
// threads, CPU time and resident memory, read from /proc.
struct ProcessFigures {
  long long voluntarySwitches = 0;
  long long involuntarySwitches = 0;
  // utime + stime, in clock ticks (usually 10 ms) ...
  double cpuSeconds = 0;
  // ... and the scheduler's own count of time on a CPU, in nanoseconds.
  double runSeconds = 0;
  long long residentKiB = 0;

  long long switches() const { return voluntarySwitches + involuntarySwitches; }

  static ProcessFigures of(pid_t pid) {
    ProcessFigures figures;
    const std::filesystem::path process = "/proc/" + std::to_string(pid);
    // A thread's status counts only its own switches, so every thread is read.
    std::error_code error;
    for (const auto& task : std::filesystem::directory_iterator(process / "task", error)) {
      figures.voluntarySwitches += field(task.path() / "status", "voluntary_ctxt_switches:");
      figures.involuntarySwitches += field(task.path() / "status", "nonvoluntary_ctxt_switches:");
      std::ifstream schedstat(task.path() / "schedstat");
      long long nanoseconds = 0;
      schedstat >> nanoseconds;
      figures.runSeconds += static_cast<double>(nanoseconds) / 1e9;
    }
    figures.residentKiB = field(process / "status", "VmRSS:");

    // utime and stime are the 14th and 15th fields; the name in parentheses
    // before them may hold blanks, so counting starts after its ")".
    std::ifstream stat(process / "stat");
    std::string line;
    std::getline(stat, line);
    std::istringstream rest(line.substr(line.rfind(')') + 2));
    std::string skipped;
    for (int i = 3; i < 14; ++i) rest >> skipped;
    long long user = 0, system = 0;
    rest >> user >> system;
    figures.cpuSeconds = static_cast<double>(user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
    return figures;
  }

  friend ProcessFigures operator-(const ProcessFigures& later, const ProcessFigures& earlier) {
    return {later.voluntarySwitches - earlier.voluntarySwitches, later.involuntarySwitches - earlier.involuntarySwitches,
            later.cpuSeconds - earlier.cpuSeconds, later.runSeconds - earlier.runSeconds, later.residentKiB};
  }

 private:
  static long long field(const std::filesystem::path& file, const std::string& name) {
    std::ifstream in(file);
    std::string line;
    while (std::getline(in, line)) {
      if (line.starts_with(name)) return std::stoll(line.substr(name.size()));
    }
    return 0;
  }
};

}  // namespace wakeloft::bench
