#pragma once

#include <array>
#include <cstddef>
#include <functional>

#include "lid/MachineConditionsSnapshot.h"

namespace wakeloft {

// Which lid-closed precaution the panel shows.
class LidClosePrecaution {
 public:
  enum class Kind {
    // Nothing to show.
    none,
    // The heat warning was never acknowledged; wins over everything else.
    beforeFirstUse,
    // Deepwake is on, on battery, and no external display is attached.
    noHeatPath,
  };

  static const LidClosePrecaution none;
  static const LidClosePrecaution beforeFirstUse;
  static const LidClosePrecaution noHeatPath;
  static const std::array<LidClosePrecaution, 3> allCases;

  // The heat path only matters while Deepwake runs; before the warning is
  // acknowledged, the warning itself is the precaution.
  static LidClosePrecaution shown(bool isOn, bool hasAcknowledged, const MachineConditionsSnapshot& conditions);

  constexpr Kind kind() const { return kind_; }

  friend constexpr bool operator==(LidClosePrecaution, LidClosePrecaution) = default;

 private:
  constexpr explicit LidClosePrecaution(Kind kind) : kind_(kind) {}

  Kind kind_;
};

inline constexpr LidClosePrecaution LidClosePrecaution::none{Kind::none};
inline constexpr LidClosePrecaution LidClosePrecaution::beforeFirstUse{Kind::beforeFirstUse};
inline constexpr LidClosePrecaution LidClosePrecaution::noHeatPath{Kind::noHeatPath};
inline constexpr std::array<LidClosePrecaution, 3> LidClosePrecaution::allCases{none, beforeFirstUse, noHeatPath};

}  // namespace wakeloft

template <>
struct std::hash<wakeloft::LidClosePrecaution> {
  std::size_t operator()(wakeloft::LidClosePrecaution precaution) const noexcept {
    return static_cast<std::size_t>(precaution.kind());
  }
};
