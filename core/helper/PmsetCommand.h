#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/ChildProcess.h"

namespace wakeloft {

// How the lid helper reads and writes the sleep setting ("disablesleep")
// through the system's power-settings tool, and what its answers mean.
// `PmsetSleepSetting` (macOS) runs it for real; tests run it against fakes.
namespace PmsetCommand {

inline constexpr std::string_view program = "/usr/bin/pmset";

// Runs a program with a time limit in seconds: ChildProcess::run, or a fake.
using Run = std::function<ChildProcess::Result(const std::vector<std::string>& arguments, double timeoutSeconds)>;

// `pmset -a disablesleep 1` (or 0): all power sources at once.
std::vector<std::string> writeArguments(bool disabled, std::string_view pmset = program);
// `pmset -g`: the settings in use, the system-wide ones first.
std::vector<std::string> readArguments(std::string_view pmset = program);

// Writes the setting, giving up after LidSleepLease::writeTimeout. Throws
// with a description fit for a reply when the tool fails or complains.
void write(bool disabled, const Run& run, std::string_view pmset = program);
// Reads the setting, giving up after LidSleepLease::readTimeout. Throws when
// the tool fails or its listing does not say.
bool read(const Run& run, std::string_view pmset = program);

// The setting as `pmset -g` lists it: its "SleepDisabled" line, or 0 when a
// recognisable listing has none (the setting was never changed). Throws
// std::runtime_error for anything else.
bool sleepDisabled(const ChildProcess::Result& listing);
// Throws std::runtime_error unless the write ended well.
void checkWritten(const ChildProcess::Result& result);

}  // namespace PmsetCommand
}  // namespace wakeloft
