#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace wakeloft {

// The code-signing facts each side of the lid lease reads at run time to pin
// the other to the same signing team. Every failure gives absent.
namespace CodeSigningIdentity {

// This process's signing team, from the kernel.
std::optional<std::string> currentTeamIdentifier();
// This process's code-directory hash as 40 hexadecimal digits, from the kernel.
std::optional<std::string> currentCodeDirectoryHash();
// This process's designated requirement as text.
std::optional<std::string> currentDesignatedRequirement();
// The code-directory hash of the code at `path`, only if its signature is
// valid and meets `requirement` (requirement-language text).
std::optional<std::string> codeDirectoryHash(const std::string& path, const std::string& requirement);

// Whether the running process `pid` is validly signed and meets
// `requirement`. False when it cannot be told.
bool processMeets(pid_t pid, const std::string& requirement);

}  // namespace CodeSigningIdentity
}  // namespace wakeloft
