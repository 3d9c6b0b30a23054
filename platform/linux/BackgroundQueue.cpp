#include "clock/BackgroundQueue.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <queue>
#include <thread>
#include <vector>

#include "clock/WaitDuration.h"

namespace wakeloft::BackgroundQueue {

namespace {

using Clock = std::chrono::steady_clock;

// One thread that sleeps until the earliest due item; it wakes only when an
// item is due or an earlier one arrives.
class TimerThread {
 public:
  void add(double seconds, std::function<void()> work) {
    const auto due = Clock::now() + std::chrono::nanoseconds(WaitDuration::nanoseconds(seconds));
    {
      std::lock_guard lock(mutex_);
      items_.push(Item{due, next_++, std::move(work)});
      if (!thread_.joinable()) thread_ = std::thread([this] { run(); });
    }
    wake_.notify_one();
  }

 private:
  struct Item {
    Clock::time_point due;
    unsigned long long order;
    std::function<void()> work;
    bool operator>(const Item& other) const { return due != other.due ? due > other.due : order > other.order; }
  };

  void run() {
    std::unique_lock lock(mutex_);
    for (;;) {
      if (items_.empty()) {
        wake_.wait(lock);
        continue;
      }
      // A copy: the queue may grow, and move its items, while we wait.
      const Clock::time_point due = items_.top().due;
      if (Clock::now() < due) {
        wake_.wait_until(lock, due);
        continue;
      }
      auto work = std::move(const_cast<Item&>(items_.top()).work);
      items_.pop();
      lock.unlock();
      work();
      lock.lock();
    }
  }

  std::mutex mutex_;
  std::condition_variable wake_;
  std::priority_queue<Item, std::vector<Item>, std::greater<>> items_;
  unsigned long long next_ = 0;
  std::thread thread_;
};

TimerThread& timerThread() {
  // Never destroyed: work may still be pending when the process exits.
  static auto* thread = new TimerThread;
  return *thread;
}

}  // namespace

void runAfter(double seconds, std::function<void()> work) { timerThread().add(seconds, std::move(work)); }

}  // namespace wakeloft::BackgroundQueue
