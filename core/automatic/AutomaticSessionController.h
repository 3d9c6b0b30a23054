#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "automatic/AutomaticRules.h"
#include "automatic/AutomaticSessionStore.h"
#include "automatic/RunningApplications.h"
#include "base/Observation.h"
#include "base/WeakSelf.h"
#include "clock/ContinuousTimeProvider.h"
#include "clock/DateProvider.h"
#include "clock/DeadlineRecheckNotifier.h"
#include "clock/DeadlineScheduler.h"
#include "clock/TimeZoneProvider.h"
#include "lid/MachineConditions.h"
#include "lid/MachineConditionsNotifier.h"
#include "session/AwakeController.h"
#include "session/ProcessBindingController.h"

namespace wakeloft {

// Sessions that the automatic rules keep. While the rules hold and no other
// session runs, the awake controller runs an automatic one; it ends a grace
// period after the rules stop holding, so a dock reconnecting or an app
// relaunching does not end and restart it. Rides on the awake controller and
// never fights the user:
// - any other start makes the session the user's, with its own end, and the
//   rules stopping never ends it;
// - a session that ends by itself (its time runs out, the processes it was
//   held for end) while the rules hold gives way to an automatic one;
// - the user turning a session off while the rules hold suppresses automatic
//   sessions until they have stopped holding for the grace period, or until
//   resumed; the suppression is remembered across launches;
// - a session held for processes stays until they end;
// - Deepwake is never turned on here.
// The rules are judged as states whenever a fact changes, at launch, after a
// wake and when the clock or the zone is set; nothing polls. Main thread only.
class AutomaticSessionController {
 public:
  static constexpr double gracePeriod = 30;

  // Where the facts come from, and word of their changes.
  struct FactSources {
    std::shared_ptr<const MachineConditions> machine;
    std::shared_ptr<MachineConditionsNotifier> machineChanges;
    std::shared_ptr<RunningApplications> apps;
    std::shared_ptr<const TimeZoneProvider> zones;
  };

  AutomaticSessionController(std::shared_ptr<AwakeController> awake, std::shared_ptr<ProcessBindingController> binding,
                             std::shared_ptr<AutomaticSessionStore> store, FactSources facts,
                             std::shared_ptr<const DateProvider> dates,
                             std::shared_ptr<const ContinuousTimeProvider> continuous,
                             std::shared_ptr<DeadlineScheduler> scheduler,
                             std::shared_ptr<DeadlineRecheckNotifier> recheck);
  AutomaticSessionController(const AutomaticSessionController&) = delete;
  AutomaticSessionController& operator=(const AutomaticSessionController&) = delete;

  // Keeps and applies new settings; false, changing nothing, for settings
  // that cannot be kept or while a profile fixes the rules.
  bool setSettings(const AutomaticRules::Settings& settings);
  // Reads the settings again, for a profile that arrived or changed.
  void reload();
  // Ends a suppression: the rules that hold start a session at once.
  void resume();
  // Judges the rules again, as after a fact changed.
  void evaluate();
  // The screen locked where a lock ends sessions: the automatic session
  // ends, none starts while it stays locked, and a session that ends
  // meanwhile is not the user's "not now". Unlocked, the rules that hold
  // start one again.
  void setScreenLocked(bool locked);

  const AutomaticRules::Settings& settings() const { return settings_; }
  const AutomaticRules::Facts& facts() const { return facts_; }
  // The enabled rules that hold, in naming order.
  const std::vector<AutomaticRules::Rule>& holding() const { return holding_; }
  bool isSuppressed() const { return suppressed_; }
  bool areRulesForced() const { return rulesForced_; }
  // While the rules have stopped holding and an automatic session or a
  // suppression waits out the grace period: when it ends.
  const std::optional<Date>& graceEndsAt() const { return graceEndsAt_; }
  // The seconds of it left now, for the panel's countdown.
  std::optional<double> graceLeft() const;

  [[nodiscard]] Subscription observe(std::function<void()> handler) { return changed_.observe(std::move(handler)); }

 private:
  // The session as last seen, to tell how it ended.
  struct SeenSession {
    bool requested = false;
    std::optional<Date> until;
    std::optional<double> continuousEnd;
    bool heldOnlyForProcesses = false;
  };

  AutomaticRules::Facts readFacts() const;
  void sessionChanged();
  void setSuppressed(bool suppressed);
  void remember();
  template <typename Change>
  void changeSession(Change change);

  std::shared_ptr<AwakeController> awake_;
  std::shared_ptr<ProcessBindingController> binding_;
  std::shared_ptr<AutomaticSessionStore> store_;
  FactSources sources_;
  std::shared_ptr<const DateProvider> dates_;
  std::shared_ptr<const ContinuousTimeProvider> continuous_;
  std::shared_ptr<DeadlineScheduler> scheduler_;
  std::shared_ptr<DeadlineRecheckNotifier> recheck_;

  ChangeSignal changed_;
  Published<AutomaticRules::Settings> settings_{changed_, {}};
  Published<AutomaticRules::Facts> facts_{changed_, {}};
  Published<std::vector<AutomaticRules::Rule>> holding_{changed_, {}};
  Published<bool> suppressed_{changed_, false};
  Published<bool> rulesForced_{changed_, false};
  Published<std::optional<Date>> graceEndsAt_{changed_, std::nullopt};
  // On the continuous clock, so neither a clock change nor a sleep stretches
  // the grace period.
  std::optional<double> rulesStoppedAt_;
  SeenSession seen_;
  bool turnedOffWhileHeldForProcesses_ = false;
  bool isChangingSession_ = false;
  bool isScreenLocked_ = false;
  Subscription bindingChanges_;
  WeakSelf<AutomaticSessionController> weakSelf_{this};
};

}  // namespace wakeloft
