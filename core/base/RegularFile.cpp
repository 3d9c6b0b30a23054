#include "base/RegularFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace wakeloft::RegularFile {

namespace {

struct Descriptor {
  int fd;
  ~Descriptor() {
    if (fd >= 0) ::close(fd);
  }
};

}  // namespace

std::optional<std::string> read(const std::string& path, std::size_t maxBytes) {
  // Non-blocking so that a pipe put at the path cannot hold us in open();
  // regular files ignore the flag when read.
  Descriptor file{::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK)};
  if (file.fd < 0) return std::nullopt;

  struct stat status {};
  if (::fstat(file.fd, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
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

}  // namespace wakeloft::RegularFile
