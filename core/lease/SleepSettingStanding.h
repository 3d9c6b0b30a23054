#pragma once

#include <string>

namespace wakeloft {

// How the sleep setting stands compared with what this helper last wrote.
class SleepSettingStanding {
 public:
  enum class Kind {
    unread,
    // As this helper last wrote it, or there is nothing to compare with.
    asWritten,
    // 1, although this helper last wrote 0.
    onElsewhere,
    // 0, although this helper last wrote 1.
    offElsewhere,
  };

  // `detail` is the read error's description.
  static SleepSettingStanding unread(std::string detail) { return {Kind::unread, std::move(detail)}; }
  static SleepSettingStanding asWritten() { return {Kind::asWritten, {}}; }
  static SleepSettingStanding onElsewhere() { return {Kind::onElsewhere, {}}; }
  static SleepSettingStanding offElsewhere() { return {Kind::offElsewhere, {}}; }

  Kind kind() const { return kind_; }
  // The read error of `unread`; empty for the others.
  const std::string& detail() const { return detail_; }

  friend bool operator==(const SleepSettingStanding&, const SleepSettingStanding&) = default;

 private:
  SleepSettingStanding(Kind kind, std::string detail) : kind_(kind), detail_(std::move(detail)) {}

  Kind kind_;
  std::string detail_;
};

}  // namespace wakeloft
