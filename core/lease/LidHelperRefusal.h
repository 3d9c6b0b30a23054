#pragma once

#include <string>
#include <string_view>

namespace wakeloft {

// Why the lid helper did not do what was asked, or ended a lease. Crosses the
// process boundary as its English `reason` text and is recognised again by
// exact text or fixed prefix, so it survives the trip although only the text
// is sent. The helper never localises these.
class LidHelperRefusal {
 public:
  enum class Kind {
    settingUnreadable,
    settingUnwritten,
    settingNotPutBack,
    unrecognized,
    deadlineNotANumber,
    settingOnElsewhere,
    settingTurnedOffElsewhere,
  };

  static constexpr std::string_view unreadablePrefix =
      "The sleep setting could not be read, so it was left as it is: ";
  static constexpr std::string_view unwrittenPrefix = "The sleep setting could not be written: ";
  static constexpr std::string_view notPutBackPrefix =
      "The sleep setting could not be put back, and the helper is still trying: ";
  static constexpr std::string_view deadlineNotANumberText = "The lease deadline is not a number.";
  static constexpr std::string_view settingOnElsewhereText =
      "The sleep setting is already on, set by something other than Wakeloft, and was left as it is.";
  static constexpr std::string_view settingTurnedOffElsewhereText =
      "The sleep setting was turned off by something other than Wakeloft, and was left off.";

  static LidHelperRefusal settingUnreadable(std::string detail) { return {Kind::settingUnreadable, std::move(detail)}; }
  static LidHelperRefusal settingUnwritten(std::string detail) { return {Kind::settingUnwritten, std::move(detail)}; }
  static LidHelperRefusal settingNotPutBack(std::string detail) { return {Kind::settingNotPutBack, std::move(detail)}; }
  static LidHelperRefusal unrecognized(std::string text) { return {Kind::unrecognized, std::move(text)}; }
  static LidHelperRefusal deadlineNotANumber() { return {Kind::deadlineNotANumber, {}}; }
  static LidHelperRefusal settingOnElsewhere() { return {Kind::settingOnElsewhere, {}}; }
  static LidHelperRefusal settingTurnedOffElsewhere() { return {Kind::settingTurnedOffElsewhere, {}}; }

  // Decodes a reason text; a text it does not know is kept whole as `unrecognized`.
  static LidHelperRefusal fromReason(std::string_view reason);

  Kind kind() const { return kind_; }
  // The payload: the detail of the three setting failures, the whole text of
  // `unrecognized`, empty for the others.
  const std::string& detail() const { return detail_; }

  std::string reason() const;

  friend bool operator==(const LidHelperRefusal&, const LidHelperRefusal&) = default;

 private:
  LidHelperRefusal(Kind kind, std::string detail) : kind_(kind), detail_(std::move(detail)) {}

  Kind kind_;
  std::string detail_;
};

}  // namespace wakeloft
