#pragma once

#include <array>
#include <string>

namespace wakeloft {

// The length of a timed session, in seconds. No clamping or rounding.
struct AwakeDuration {
  double seconds = 0;

  // Identity in lists is the length itself.
  double id() const { return seconds; }

  // Hours and minutes in the locale's abbreviated words, zero units left out,
  // no fractions: 5400 s is one hour and thirty minutes.
  std::string label(const std::string& locale) const;
  // The same in full words, for VoiceOver: "1 hour, 30 minutes".
  std::string spokenLabel(const std::string& locale) const;

  static const std::array<AwakeDuration, 3> presets;
  // What Deepwake asks for when there is no timed session to join.
  static const AwakeDuration lidClosedDefault;

  friend bool operator==(const AwakeDuration&, const AwakeDuration&) = default;
};

}  // namespace wakeloft

template <>
struct std::hash<wakeloft::AwakeDuration> {
  std::size_t operator()(const wakeloft::AwakeDuration& d) const noexcept { return std::hash<double>{}(d.seconds); }
};
