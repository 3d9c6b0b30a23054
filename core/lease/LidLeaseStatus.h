#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace wakeloft {

// What the helper says, when asked, of the sleep setting and of its own
// lease, read without touching either: the answer to a status request. It
// crosses the wire as one line of text, so it survives any transport that
// carries the refusal texts.
struct LidLeaseStatus {
  enum class Setting { off, on, unreadable };

  Setting setting = Setting::off;
  // Why the setting could not be read; empty unless it could not.
  std::string unreadableDetail;
  // Seconds left of the lease this helper holds the setting for; absent
  // when it holds none.
  std::optional<double> leaseRemaining;

  // "status setting=0|1|unreadable lease=none|SECONDS[ because=DETAIL]".
  std::string text() const;
  // Strict: anything but exactly that shape, or a term longer than a lease
  // may run, reads as nothing.
  static std::optional<LidLeaseStatus> read(std::string_view text);

  friend bool operator==(const LidLeaseStatus&, const LidLeaseStatus&) = default;
};

}  // namespace wakeloft
