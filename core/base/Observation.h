#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace wakeloft {

// Keeps an observer registered for as long as it lives. Dropping it (or the
// signal it came from going away first) ends the observation.
class Subscription {
 public:
  Subscription() = default;
  explicit Subscription(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
  Subscription(Subscription&& other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
  Subscription& operator=(Subscription&& other) noexcept {
    if (this != &other) {
      cancel();
      cancel_ = std::exchange(other.cancel_, nullptr);
    }
    return *this;
  }
  Subscription(const Subscription&) = delete;
  Subscription& operator=(const Subscription&) = delete;
  ~Subscription() { cancel(); }

  void cancel() {
    if (auto cancel = std::exchange(cancel_, nullptr)) cancel();
  }

 private:
  std::function<void()> cancel_;
};

// The change signal of an observable object. Observers are told that
// something changed and read the object again; they may subscribe or cancel
// from inside a notification.
class ChangeSignal {
 public:
  ChangeSignal() = default;
  ChangeSignal(const ChangeSignal&) = delete;
  ChangeSignal& operator=(const ChangeSignal&) = delete;

  [[nodiscard]] Subscription observe(std::function<void()> handler) {
    const auto id = slots_->nextId++;
    slots_->handlers.push_back({id, std::make_shared<std::function<void()>>(std::move(handler))});
    return Subscription([weak = std::weak_ptr<Slots>(slots_), id] {
      if (auto slots = weak.lock()) std::erase_if(slots->handlers, [id](const Slot& s) { return s.id == id; });
    });
  }

  void notify() const {
    const auto snapshot = slots_->handlers;
    for (const auto& slot : snapshot) {
      const bool stillThere = std::any_of(slots_->handlers.begin(), slots_->handlers.end(),
                                          [&](const Slot& s) { return s.id == slot.id; });
      if (stillThere) (*slot.handler)();
    }
  }

 private:
  struct Slot {
    unsigned long id;
    std::shared_ptr<std::function<void()>> handler;
  };
  struct Slots {
    unsigned long nextId = 0;
    std::vector<Slot> handlers;
  };
  std::shared_ptr<Slots> slots_ = std::make_shared<Slots>();
};

// One observable property of an object: setting it signals the object's
// observers only when the new value differs from the old one.
template <typename T>
class Published {
 public:
  Published(ChangeSignal& signal, T initial) : signal_(signal), value_(std::move(initial)) {}
  Published(const Published&) = delete;
  Published& operator=(const Published&) = delete;

  const T& get() const { return value_; }
  operator const T&() const { return value_; }

  void set(T value) {
    if (value == value_) return;
    value_ = std::move(value);
    signal_.notify();
  }

 private:
  ChangeSignal& signal_;
  T value_;
};

}  // namespace wakeloft
