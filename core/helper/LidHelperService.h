#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/PropertyList.h"
#include "base/PropertyListParser.h"

namespace wakeloft {

// The lid helper's fixed identity, shared by the app (to register and pin the
// helper) and by the helper itself.
namespace LidHelperService {

// The app's signing identifier.
inline constexpr std::string_view appIdentifier = "com.wakeloft.app";
// The signing identifier of the app's command, Contents/Helpers/wakeloft.
inline constexpr std::string_view commandIdentifier = "com.wakeloft.app.command";
// The launchd label, the mach service name and the helper's signing identifier.
inline constexpr std::string_view label = "com.wakeloft.app.lidhelper";
// The daemon property list's file name, used to register the daemon.
inline constexpr std::string_view plistName = "com.wakeloft.app.lidhelper.plist";
// The helper executable, relative to the app bundle.
inline constexpr std::string_view bundleProgram = "Contents/Helpers/WakeloftLidHelper";

// Seconds. The exit path must put the setting back within `exitTimeout`, so
// its retries stop after `stopRetryWindow`, pausing `stopRetryPause` between.
inline constexpr double exitTimeout = 5;
inline constexpr double stopRetryWindow = 2.5;
inline constexpr double stopRetryPause = 0.5;

// The launch daemon's property list: launchd keeps the helper running and
// starts it as soon as it is registered.
PropertyList launchdPlist();

// The code requirement a peer with this signing identifier and team must
// meet, or absent when either is malformed: then nobody is accepted.
std::optional<std::string> codeRequirement(std::string_view identifier,
                                           const std::optional<std::string>& teamIdentifier);

// What the helper demands of a peer: the app or its command, both signed by
// `teamIdentifier`. Absent when the team is malformed.
std::optional<std::string> callerRequirement(const std::optional<std::string>& teamIdentifier);

// The helper's first log line, naming its version (read with `parser` from
// the Info.plist around the executable), its code and where it runs from.
std::string startLine(const std::optional<std::string>& executablePath,
                      const std::optional<std::string>& launchedPath,
                      const std::optional<std::string>& codeDirectoryHash, const PropertyListParser& parser);

}  // namespace LidHelperService
}  // namespace wakeloft
