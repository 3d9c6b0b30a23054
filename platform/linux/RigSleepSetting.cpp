#include "RigSleepSetting.h"

#include <sys/stat.h>

#include <cerrno>
#include <system_error>

#include "helper/RigLeaseFile.h"

namespace wakeloft {

RigSleepSetting::RigSleepSetting(std::string path, LeaseEnd leaseEnd)
    : path_(std::move(path)), leaseEnd_(std::move(leaseEnd)) {}

void RigSleepSetting::writeDisabled(bool disabled) {
  if (!disabled) {
    RigLeaseFile::remove(path_);
    written_.reset();
    return;
  }
  const auto end = leaseEnd_();
  if (!end) throw std::logic_error("the rig setting was asked for 1 with no lease to record");
  RigLeaseFile::write(*end, path_);
  written_ = end;
}

bool RigSleepSetting::readDisabled() {
  struct stat status {};
  if (lstat(path_.c_str(), &status) == 0) return true;
  if (errno == ENOENT) return false;
  throw std::system_error(errno, std::generic_category(), path_);
}

void RigSleepSetting::followLeaseEnd() {
  if (!written_) return;
  const auto end = leaseEnd_();
  if (!end || end == written_) return;
  struct stat status {};
  if (lstat(path_.c_str(), &status) != 0) return;
  try {
    RigLeaseFile::write(*end, path_);
    written_ = end;
  } catch (const std::system_error&) {
    // The old end stays on record; the next change or tick tries again.
  }
}

}  // namespace wakeloft
