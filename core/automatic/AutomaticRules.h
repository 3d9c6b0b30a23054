#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "automatic/Schedule.h"

namespace wakeloft {

// The rules that keep the Mac awake by themselves, judged as states of the
// machine, never as edges: whatever held before, the facts of this moment
// decide. The automatic session controller applies them.
class AutomaticRules {
 public:
  // In the order they are named when several hold.
  enum class Rule { externalDisplay, powerAdapter, apps, schedule };
  enum class Combination { any, all };

  // An app the user picked, known by its bundle identifier; the name and the
  // path are what the settings show.
  struct ChosenApp {
    std::string bundleIdentifier;
    std::string name;
    std::string path;
    friend bool operator==(const ChosenApp&, const ChosenApp&) = default;
  };

  // The user's choices, from the Automatic popover.
  struct Settings {
    bool whileExternalDisplay = false;
    bool whileOnPowerAdapter = false;
    bool whileAppsRun = false;
    std::vector<ChosenApp> apps;
    bool onSchedule = false;
    Schedule schedule;
    Combination combination = Combination::any;

    // Far more apps than anyone picks; it keeps the stored list small.
    static constexpr std::size_t mostApps = 64;
    // Bytes of a bundle identifier, name or path.
    static constexpr std::size_t longestText = 1024;

    bool isEnabled(Rule rule) const;
    // Whether it can be kept: a valid schedule, at most `mostApps` apps, each
    // with a bundle identifier of its own, every text UTF-8 without control
    // characters and at most `longestText` bytes.
    bool isValid() const;
    friend bool operator==(const Settings&, const Settings&) = default;
  };

  // The machine at one moment, as far as the rules look at it.
  struct Facts {
    bool hasExternalDisplay = false;
    bool isOnPowerAdapter = false;
    // Bundle identifiers of the running apps.
    std::vector<std::string> runningApps;
    bool isWithinSchedule = false;
    friend bool operator==(const Facts&, const Facts&) = default;
  };

  // The enabled rules that hold, in naming order.
  static std::vector<Rule> holding(const Settings& settings, const Facts& facts);
  // Whether the rules, combined as chosen, keep the Mac awake: any enabled
  // rule holding, or every one; never without an enabled rule.
  static bool hold(const Settings& settings, const Facts& facts);
  // The app a holding app rule is named by: the first chosen that runs.
  static std::optional<ChosenApp> runningApp(const Settings& settings, const Facts& facts);
};

}  // namespace wakeloft
