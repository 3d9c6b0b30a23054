#pragma once

#include <exception>
#include <ostream>
#include <string>
#include <vector>

#include "lid/LidSleepBlocker.h"
#include "lid/LidSleepBlockerError.h"

namespace wakeloft::testing {

// What a completion received, in words: success, a lid error by its kind
// (and a refusal by its reason), or some other error by its message.
struct Received {
  std::string text;
  friend bool operator==(const Received&, const Received&) = default;
  friend std::ostream& operator<<(std::ostream& out, const Received& received) { return out << received.text; }
};

inline Received success() { return {"success"}; }

inline Received failure(const LidSleepBlockerError& error) {
  switch (error.kind()) {
    case LidSleepBlockerError::Kind::helperRefused: return {"helperRefused(\"" + error.reason() + "\")"};
    case LidSleepBlockerError::Kind::helperUnavailable: return {"helperUnavailable"};
    case LidSleepBlockerError::Kind::helperRequiresApproval: return {"helperRequiresApproval"};
  }
  return {"an unknown lid error"};
}

// Completions in the order they were called, each tagged by the caller.
class CompletionLog {
 public:
  LidSleepBlocker::Completion record(std::string tag) {
    return [this, tag = std::move(tag)](std::exception_ptr error) { entries.push_back({tag, received(error)}); };
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
  Received last() const { return entries.empty() ? Received{"no completion ran"} : entries.back().received; }

 private:
  static Received received(std::exception_ptr error) {
    if (!error) return success();
    try {
      std::rethrow_exception(error);
    } catch (const LidSleepBlockerError& lid) {
      return failure(lid);
    } catch (const std::exception& other) {
      return {"error \"" + std::string(other.what()) + "\""};
    }
  }
};

}  // namespace wakeloft::testing
