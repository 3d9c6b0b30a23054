#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "prefs/OperatingSystemVersion.h"

namespace wakeloft {

// The address of the feedback web page: translated where a translation
// exists, with the app's and the system's versions attached.
namespace FeedbackLink {

inline constexpr std::string_view path = "/feedback";

// https on the site set at build time, path /feedback. Built once; the
// process stops with a message if the build setting is not a host name.
const std::string& form();

// The form's address on `host` (a DNS name, optionally with a port);
// nothing for anything else.
std::optional<std::string> formOn(std::string_view host);

// Interface languages with a translated page, compared exactly, letter case
// included.
const std::set<std::string, std::less<>>& languages();

// "15.0" for 15.0.0, "14.6.1" for 14.6.1.
std::string macOSVersion(const OperatingSystemVersion& version);

// The form, under /<language> when that language has a translated page, with
// the query items "app" and "macos" for the values that are given and not
// empty, percent-encoded.
std::string url(const std::optional<std::string>& appVersion, const std::optional<std::string>& macOSVersion,
                const std::optional<std::string>& language);

}  // namespace FeedbackLink
}  // namespace wakeloft
