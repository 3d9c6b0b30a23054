#pragma once

#include <functional>
#include <memory>
#include <string>

#include "clock/ClockChangeNotifier.h"
#include "clock/DeadlineRecheckNotifier.h"

namespace wakeloft {

// Asks for deadlines to be judged again when the wall clock is set and when
// the system's zone changes, since a schedule's boundaries move with the
// zone. The zone is the file `zoneFile` names (the system's /etc/localtime,
// a link that setting the zone replaces); a watch on it, not a poll, hears
// the change, and ICU's cached zone is read anew before the handler runs.
// Main thread.
class SystemDeadlineRecheckNotifier final : public DeadlineRecheckNotifier {
 public:
  static constexpr const char* systemZoneFile = "/etc/localtime";

  // Throws std::system_error when the system refuses either watch.
  explicit SystemDeadlineRecheckNotifier(const std::string& zoneFile = systemZoneFile);
  ~SystemDeadlineRecheckNotifier() override;
  SystemDeadlineRecheckNotifier(const SystemDeadlineRecheckNotifier&) = delete;
  SystemDeadlineRecheckNotifier& operator=(const SystemDeadlineRecheckNotifier&) = delete;

  // Replaces any earlier handler.
  void observe(std::function<void()> handler) override;

 private:
  struct ZoneWatch;  // GIO's monitor of the zone file

  ClockChangeNotifier clock_;
  std::unique_ptr<ZoneWatch> zone_;
};

}  // namespace wakeloft
