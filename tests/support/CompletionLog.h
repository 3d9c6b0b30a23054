#pragma once

#include <exception>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "lid/LidSleepBlocker.h"
#include "lid/LidSleepBlockerError.h"

namespace wakeloft::testing {

// What a completion received: nothing (success), a lid error, or some other
// error by its message.
struct Received {
  bool succeeded = false;
  std::optional<LidSleepBlockerError> lidError;
  std::string otherError;

  static Received from(std::exception_ptr error) {
    Received received;
    if (!error) {
      received.succeeded = true;
      return received;
    }
    try {
      std::rethrow_exception(error);
    } catch (const LidSleepBlockerError& lid) {
      received.lidError = lid;
    } catch (const std::exception& other) {
      received.otherError = other.what();
    }
    return received;
  }
};

inline Received success() { return Received{true, std::nullopt, {}}; }
inline Received failure(LidSleepBlockerError error) { return Received{false, std::move(error), {}}; }

inline bool operator==(const Received& a, const Received& b) {
  return a.succeeded == b.succeeded && a.lidError == b.lidError && a.otherError == b.otherError;
}

inline std::ostream& operator<<(std::ostream& out, const Received& received) {
  if (received.succeeded) return out << "success";
  if (!received.lidError) return out << "error \"" << received.otherError << "\"";
  switch (received.lidError->kind()) {
    case LidSleepBlockerError::Kind::helperRefused:
      return out << "helperRefused(\"" << received.lidError->reason() << "\")";
    case LidSleepBlockerError::Kind::helperUnavailable: return out << "helperUnavailable";
    case LidSleepBlockerError::Kind::helperRequiresApproval: return out << "helperRequiresApproval";
  }
  return out;
}

// Completions in the order they were called, each tagged by the caller.
class CompletionLog {
 public:
  LidSleepBlocker::Completion record(std::string tag) {
    return [this, tag = std::move(tag)](std::exception_ptr error) { entries.push_back({tag, Received::from(error)}); };
  }

  struct Entry {
    std::string tag;
    Received received;
    friend bool operator==(const Entry&, const Entry&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Entry& entry) {
      return out << entry.tag << ": " << entry.received;
    }
  };
  std::vector<Entry> entries;

  std::vector<std::string> tags() const {
    std::vector<std::string> result;
    for (const auto& entry : entries) result.push_back(entry.tag);
    return result;
  }
  // A failure that says so when no completion ran, rather than a crash.
  Received last() const {
    return entries.empty() ? Received{false, std::nullopt, "no completion ran"} : entries.back().received;
  }
};

}  // namespace wakeloft::testing
