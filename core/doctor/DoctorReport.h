#pragma once

#include <optional>
#include <string>
#include <vector>

#include "doctor/DoctorFacts.h"

namespace wakeloft {

// What `wakeloft doctor` says of its facts: one line per fact, in English
// like the command's other output, with what to do where the fact is wrong.
// Wrong are: the setting at 1 with no Wakeloft lease, a helper whose version
// differs from the app's, a helper that needs approval or is not found once
// Deepwake was used, an app that runs translocated or outside the
// Applications folders, and a stored value that cannot be read. The rest is
// information.
class DoctorReport {
 public:
  struct Line {
    // Names the fact in the JSON form: "sleepSetting".
    std::string key;
    std::string fact;
    // What to do; present exactly when the fact is wrong.
    std::optional<std::string> advice;

    friend bool operator==(const Line&, const Line&) = default;
  };

  explicit DoctorReport(const DoctorFacts& facts);

  const std::vector<Line>& lines() const { return lines_; }
  bool isWrong() const;
  // The command's exit status: 1 when something is wrong, else 0.
  int exitStatus() const { return isWrong() ? 1 : 0; }

  // Each fact on a line, its advice indented below it.
  std::string text() const;
  // The same as one JSON object: whether something is wrong, the lines, and
  // the assertion holders one by one.
  std::string json() const;

 private:
  void add(std::string key, std::string fact, std::optional<std::string> advice = std::nullopt);
  void addApp(const DoctorFacts& facts);
  void addHelper(const DoctorFacts& facts);
  // Returns the setting's value as the report takes it.
  std::optional<bool> addSetting(const DoctorFacts& facts);
  void addMachine(const DoctorFacts& facts, std::optional<bool> isSettingOn);

  std::vector<Line> lines_;
  std::optional<std::vector<AssertionHolder>> holders_;
};

}  // namespace wakeloft
