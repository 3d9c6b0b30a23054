#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace wakeloft {

// A one-shot latch for one call to the lid helper. The reply, the
// connection's error handler and the time-out may all finish it, from any
// thread and at the same moment; the first outcome wins and reaches
// `deliver` on the main loop, every later one is dropped.
class XPCReply : public std::enable_shared_from_this<XPCReply> {
 public:
  class Outcome {
   public:
    enum class Kind { replied, unanswered, failed };

    // No text: granted. A text: the helper's refusal reason.
    static Outcome replied(std::optional<std::string> text) { return Outcome(Kind::replied, std::move(text)); }
    static Outcome unanswered() { return Outcome(Kind::unanswered, std::nullopt); }
    static Outcome failed() { return Outcome(Kind::failed, std::nullopt); }

    Kind kind() const { return kind_; }
    // The reply text of `replied`; absent for the others.
    const std::optional<std::string>& text() const { return text_; }

    friend bool operator==(const Outcome&, const Outcome&) = default;

   private:
    Outcome(Kind kind, std::optional<std::string> text) : kind_(kind), text_(std::move(text)) {}

    Kind kind_;
    std::optional<std::string> text_;
  };

  // Shared, so that a pending time-out keeps the latch alive.
  static std::shared_ptr<XPCReply> make(std::function<void(Outcome)> deliver);

  XPCReply(const XPCReply&) = delete;
  XPCReply& operator=(const XPCReply&) = delete;

  // Any thread. Delivery happens in a later turn of the main loop, never
  // inside this call.
  void finish(Outcome outcome);
  // Finishes with `unanswered` once `seconds` have passed on a monotonic
  // clock, unless something finished first.
  void expire(double seconds);

 private:
  explicit XPCReply(std::function<void(Outcome)> deliver) : deliver_(std::move(deliver)) {}

  std::mutex lock_;
  std::function<void(Outcome)> deliver_;
};

}  // namespace wakeloft
