#pragma once

#include "base/DefaultsDomain.h"
#include "session/ProcessBindingStore.h"

namespace wakeloft {

// The binding in the user defaults: one dictionary, written in one go so a
// reader in another process never sees half of it, holding exactly "pid"
// (an integer above 1), "startTime" (a non-negative integer) and "name"
// (1 to 64 bytes of UTF-8 without control characters). Anything else reads
// as unreadable.
class UserDefaultsProcessBindingStore final : public ProcessBindingStore {
 public:
  static constexpr const char* key = "com.wakeloft.boundProcess";
  static constexpr std::size_t longestName = 64;

  explicit UserDefaultsProcessBindingStore(DefaultsDomain& defaults) : defaults_(defaults) {}

  StoredProcessBinding load() const override;
  void save(const std::optional<RunningProcess>& process) override;

  // Whether a process name may be stored: what load() accepts.
  static bool isStorableName(std::string_view name);

 private:
  DefaultsDomain& defaults_;
};

}  // namespace wakeloft
