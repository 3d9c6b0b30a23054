#pragma once

#include <memory>
#include <string>

#include "prefs/TimeZone.h"

namespace wakeloft {

// A time zone from the system's own zone database: ICU's on Linux, Core
// Foundation's on macOS.
class SystemTimeZone final : public TimeZone {
 public:
  // An identifier such as "Europe/Berlin". Throws std::invalid_argument for
  // one the database does not know.
  explicit SystemTimeZone(const std::string& identifier);
  // The zone the user has set.
  static SystemTimeZone current();

  SystemTimeZone(SystemTimeZone&&) noexcept;
  SystemTimeZone& operator=(SystemTimeZone&&) noexcept;
  ~SystemTimeZone() override;

  int secondsFromGMT(Date date) const override;

 private:
  struct Zone;
  explicit SystemTimeZone(std::unique_ptr<Zone> zone);

  std::unique_ptr<Zone> zone_;
};

}  // namespace wakeloft
