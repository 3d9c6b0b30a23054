#pragma once

#include "base/DefaultsDomain.h"
#include "session/ProcessBindingStore.h"

namespace wakeloft {

// The claims in the user defaults: one dictionary, written in one go so a
// reader in another process never sees half of it. "holds" is an array of
// 1 to 32 dictionaries, each with exactly "pid" (an integer above 1),
// "startTime" (a non-negative integer), "name" (1 to 64 bytes of UTF-8
// without control characters) and, for a hold with its own end, "until" (a
// date); no pid twice. "user", when the user asked for a session too, is
// its end (a date) or true for one without. Anything else reads as
// unreadable.
class UserDefaultsProcessBindingStore final : public ProcessBindingStore {
 public:
  static constexpr const char* key = "com.wakeloft.boundProcesses";
  static constexpr std::size_t longestName = 64;

  explicit UserDefaultsProcessBindingStore(DefaultsDomain& defaults) : defaults_(defaults) {}

  StoredProcessBinding load() const override;
  void save(const std::optional<SessionClaims>& claims) override;

  // Whether a process name may be stored: what load() accepts.
  static bool isStorableName(std::string_view name);

 private:
  DefaultsDomain& defaults_;
};

}  // namespace wakeloft
