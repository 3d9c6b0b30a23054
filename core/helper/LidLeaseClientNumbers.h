#pragma once

#include <cstdint>
#include <mutex>

namespace wakeloft {

// The numbers the helper's listener gives its connections: 1 for the first,
// never one twice while the helper runs, so a late request of a closed
// connection cannot touch a newer client's term. Safe on any thread; the
// only state the listener touches off the main thread.
class LidLeaseClientNumbers {
 public:
  // `last` is the number handed out before; tests start near the end.
  explicit LidLeaseClientNumbers(std::uint64_t last = 0) : last_(last) {}
  LidLeaseClientNumbers(const LidLeaseClientNumbers&) = delete;
  LidLeaseClientNumbers& operator=(const LidLeaseClientNumbers&) = delete;

  // The next number. Running out stops the process: a number reused would
  // let one client end another's lease.
  std::uint64_t next();

 private:
  std::mutex lock_;
  std::uint64_t last_;
};

}  // namespace wakeloft
