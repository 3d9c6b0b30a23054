#pragma once

#include <functional>
#include <optional>
#include <string>

#include "base/Date.h"
#include "lease/SystemSleepSetting.h"

namespace wakeloft {

// The lease rig's stand-in for "disablesleep": the setting is 1 exactly while
// the rig file exists, and while it does the file holds the end of the lease
// the helper honours. Removing or creating the file behind the helper's back
// is the setting changed elsewhere.
class RigSleepSetting final : public SystemSleepSetting {
 public:
  using LeaseEnd = std::function<std::optional<Date>()>;

  RigSleepSetting(std::string path, LeaseEnd leaseEnd);

  void writeDisabled(bool disabled) override;
  bool readDisabled() override;

  // Rewrites the file when the lease end moved while the setting stays 1.
  // A file that went away meanwhile is left gone: that is the setting turned
  // off elsewhere, for the keeper to find.
  void followLeaseEnd();

  const std::string& path() const { return path_; }

 private:
  std::string path_;
  LeaseEnd leaseEnd_;
  std::optional<Date> written_;
};

}  // namespace wakeloft
