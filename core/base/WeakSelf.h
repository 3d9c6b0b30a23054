#pragma once

#include <memory>
#include <utility>

namespace wakeloft {

// Lets an object hand out callbacks that hold it weakly: once the object is
// gone they do nothing. Not for crossing threads; main-thread objects only.
template <typename T>
class WeakSelf {
 public:
  explicit WeakSelf(T* self) : self_(std::make_shared<T*>(self)) {}
  WeakSelf(const WeakSelf&) = delete;
  WeakSelf& operator=(const WeakSelf&) = delete;

  // Wraps `body(T&, args...)` into a callable that runs it only while the
  // object lives.
  template <typename Body>
  auto operator()(Body body) const {
    return [weak = std::weak_ptr<T*>(self_), body = std::move(body)](auto&&... args) {
      if (auto self = weak.lock()) body(**self, std::forward<decltype(args)>(args)...);
    };
  }

 private:
  std::shared_ptr<T*> self_;
};

}  // namespace wakeloft
