#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace wakeloft {

// Four-character Apple-event codes as the platform packs them, first
// character in the highest byte.
constexpr std::uint32_t fourCharCode(const char (&code)[5]) {
  return static_cast<std::uint32_t>(static_cast<unsigned char>(code[0])) << 24 |
         static_cast<std::uint32_t>(static_cast<unsigned char>(code[1])) << 16 |
         static_cast<std::uint32_t>(static_cast<unsigned char>(code[2])) << 8 |
         static_cast<std::uint32_t>(static_cast<unsigned char>(code[3]));
}

// What the quit flow needs of the application's current Apple event: its
// class and identifier, and the enumeration code of its quit reason, read
// once as a parameter and once as an attribute (either may be missing).
struct QuitAppleEvent {
  static constexpr std::uint32_t coreEventClass = fourCharCode("aevt");
  static constexpr std::uint32_t quitApplication = fourCharCode("quit");
  // The keyword under which the reason travels.
  static constexpr std::uint32_t quitReasonKeyword = fourCharCode("why?");
  // Quit all, really log out, restart, shut down, log out.
  static constexpr std::array<std::uint32_t, 5> systemQuitReasons{fourCharCode("quia"), fourCharCode("rlgo"),
                                                                  fourCharCode("rest"), fourCharCode("shut"),
                                                                  fourCharCode("logo")};

  std::uint32_t eventClass = 0;
  std::uint32_t eventID = 0;
  std::optional<std::uint32_t> reasonParameter;
  std::optional<std::uint32_t> reasonAttribute;

  // Whether the system, not the user, is quitting the app: a quit event whose
  // reason (the parameter, else the attribute) is one of the system's. No
  // event, another event or no reason is the user's own quit.
  static bool isSystemQuit(const std::optional<QuitAppleEvent>& current);
};

}  // namespace wakeloft
