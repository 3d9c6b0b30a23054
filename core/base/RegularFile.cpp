#include "base/RegularFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <utility>

namespace wakeloft::RegularFile {

namespace {

struct Descriptor {
  int fd;
  explicit Descriptor(int opened) : fd(opened) {}
  Descriptor(Descriptor&& other) noexcept : fd(std::exchange(other.fd, -1)) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor& operator=(Descriptor&&) = delete;
  ~Descriptor() {
    if (fd >= 0) ::close(fd);
  }
};

// Open only when the path names a regular file; its size in `status`.
Descriptor openRegular(const std::string& path, struct stat& status) {
  // Non-blocking so that a pipe put at the path cannot hold us in open();
  // regular files ignore the flag when read.
  Descriptor file{::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK)};
  if (file.fd >= 0 && (::fstat(file.fd, &status) != 0 || !S_ISREG(status.st_mode))) {
    ::close(file.fd);
    file.fd = -1;
  }
  return file;
}

}  // namespace

std::optional<std::string> read(const std::string& path, std::size_t maxBytes) {
  struct stat status {};
  const Descriptor file = openRegular(path, status);
  if (file.fd < 0) return std::nullopt;
  if (status.st_size < 0 || static_cast<unsigned long long>(status.st_size) > maxBytes) return std::nullopt;

  // Read one byte past the limit so a file that grew since fstat is caught.
  std::string content(static_cast<std::size_t>(status.st_size) + 1, '\0');
  std::size_t filled = 0;
  for (;;) {
    if (filled == content.size()) {
      if (content.size() > maxBytes) return std::nullopt;
      content.resize(std::min(content.size() * 2, maxBytes + 1));
    }
    const auto got = ::read(file.fd, content.data() + filled, content.size() - filled);
    if (got < 0) {
      if (errno == EINTR) continue;
      return std::nullopt;
    }
    if (got == 0) break;
    filled += static_cast<std::size_t>(got);
  }
  content.resize(filled);
  if (content.size() > maxBytes) return std::nullopt;
  return content;
}

bool readInPieces(const std::string& path, const std::function<bool(std::string_view piece)>& take) {
  struct stat status {};
  const Descriptor file = openRegular(path, status);
  if (file.fd < 0) return false;
  std::string buffer(64 * 1024, '\0');
  for (;;) {
    const auto got = ::read(file.fd, buffer.data(), buffer.size());
    if (got < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    if (got == 0) return true;
    if (!take(std::string_view(buffer.data(), static_cast<std::size_t>(got)))) return false;
  }
}

int replace(const std::string& path, std::string_view content, mode_t mode) {
  const std::filesystem::path target(path);
  const auto folder = target.parent_path().empty() ? std::filesystem::path(".") : target.parent_path();
  // A hidden name beside the target; appended piece by piece, since GCC 12
  // warns wrongly (-Wrestrict) about a literal put before a string.
  std::string name = ".";
  name += target.filename().string();
  name += ".XXXXXX";
  std::string temporary = (folder / name).string();
  Descriptor file{::mkstemp(temporary.data())};
  if (file.fd < 0) return errno;

  const auto failed = [&] {
    const int error = errno;
    ::unlink(temporary.c_str());
    return error;
  };
  if (::fchmod(file.fd, mode) != 0) return failed();
  for (std::size_t written = 0; written < content.size();) {
    const auto wrote = ::write(file.fd, content.data() + written, content.size() - written);
    if (wrote < 0) {
      if (errno == EINTR) continue;
      return failed();
    }
    written += static_cast<std::size_t>(wrote);
  }
  if (::fsync(file.fd) != 0) return failed();
  if (::close(file.fd) != 0) {
    file.fd = -1;
    return failed();
  }
  file.fd = -1;
  if (::rename(temporary.c_str(), path.c_str()) != 0) return failed();
  // The rename itself lasts once the folder is on disk too.
  Descriptor directory{::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
  if (directory.fd >= 0) ::fsync(directory.fd);
  return 0;
}

}  // namespace wakeloft::RegularFile
