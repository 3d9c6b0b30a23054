#include "helper/RigLeaseFile.h"

#include <fcntl.h>
#include <locale.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#if __has_include(<xlocale.h>)
#include <xlocale.h>
#endif

#include <cerrno>
#include <charconv>
#include <cmath>
#include <stdexcept>
#include <system_error>

#include "base/RegularFile.h"
#include "base/Utf8.h"

namespace wakeloft::RigLeaseFile {

namespace {

// The whitespace-and-newline set of the platform's strings: the Unicode
// separators, the C0 blanks and line breaks, and NEL.
bool isWhitespaceOrNewline(char32_t c) {
  return (c >= 0x09 && c <= 0x0D) || c == 0x20 || c == 0x85 || c == 0xA0 || c == 0x1680 ||
         (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x202F || c == 0x205F || c == 0x3000;
}

std::string_view trimmed(std::string_view text) {
  std::size_t start = 0;
  std::size_t end = 0;  // just past the last character that is not whitespace
  bool seenContent = false;
  for (std::size_t at = 0; at < text.size();) {
    const auto scalar = Utf8::front(text.substr(at));
    const bool blank = scalar.valid && isWhitespaceOrNewline(scalar.value);
    if (!blank) {
      if (!seenContent) start = at, seenContent = true;
      end = at + scalar.length;
    }
    at += scalar.length;
  }
  return seenContent ? text.substr(start, end - start) : std::string_view();
}

locale_t cLocale() {
  static const locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
  return locale;
}

[[noreturn]] void fail(int error, const std::string& what) {
  throw std::system_error(error, std::generic_category(), what);
}

// Moves the finished temporary file to `path` in one step; a symbolic link
// at the path is replaced, not followed.
void putInPlace(const std::string& temporary, const std::string& path) {
  const auto refuse = [&](int error) {
    ::unlink(temporary.c_str());
    fail(error, "The rig lease file " + path + " could not be put in place");
  };
#ifdef __linux__
  // A rename over an existing file makes ext4 write the new file's data out
  // at once (its guard for programs that replace files without fsync), which
  // made each renewal wait for the disk. Swapping the two names and then
  // removing the old file is as atomic for readers and does not wait for the
  // disk.
  if (::renameat2(AT_FDCWD, temporary.c_str(), AT_FDCWD, path.c_str(), RENAME_EXCHANGE) == 0) {
    if (::unlink(temporary.c_str()) == 0) return;
    // A directory was at the path: put it back, as a rename would have left it.
    const int error = errno;
    ::renameat2(AT_FDCWD, temporary.c_str(), AT_FDCWD, path.c_str(), RENAME_EXCHANGE);
    refuse(error);
  }
  // Nothing at the path yet, or a file system that cannot swap: a plain
  // rename then costs no more.
#endif
  if (::rename(temporary.c_str(), path.c_str()) != 0) refuse(errno);
}

}  // namespace

std::string encode(Date date) {
  const double seconds = date.secondsSince1970;
  if (!std::isfinite(seconds)) throw std::domain_error("A rig lease date must be a finite number of seconds.");
  // Fixed notation never needs more than about 330 characters for a double.
  char buffer[400];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, seconds, std::chars_format::fixed);
  std::string text(buffer, result.ptr);
  if (text.find('.') == std::string::npos) text += ".0";
  return text;
}

std::optional<Date> decode(std::string_view text) {
  const std::string number(trimmed(text));
  // strtod would skip these itself; the whole text must be the number.
  if (number.empty() || number.front() == '\0' || number.front() == ' ' ||
      (number.front() >= '\t' && number.front() <= '\r')) {
    return std::nullopt;
  }
  const auto locale = cLocale();
  if (locale == static_cast<locale_t>(nullptr)) return std::nullopt;
  char* end = nullptr;
  const double seconds = strtod_l(number.c_str(), &end, locale);
  if (end != number.c_str() + number.size()) return std::nullopt;
  if (!std::isfinite(seconds)) return std::nullopt;
  return Date::fromSecondsSince1970(seconds);
}

std::optional<Date> read(const std::string& path) {
  // Read piece by piece: the blanks around the number may run to any length
  // and are checked and dropped, only the number itself is kept.
  enum class Where { before, inside, after } where = Where::before;
  std::string number;
  std::string cut;  // the start of a character that the previous piece cut off
  const bool whole = RegularFile::readInPieces(path, [&](std::string_view piece) {
    const std::string joined = cut + std::string(piece);
    cut.clear();
    for (std::string_view rest = joined; !rest.empty();) {
      const auto scalar = Utf8::front(rest);
      if (!scalar.valid) {
        if (scalar.length != rest.size()) return false;  // not UTF-8
        cut = rest;  // perhaps whole with the next piece
        break;
      }
      if (isWhitespaceOrNewline(scalar.value)) {
        if (where == Where::inside) where = Where::after;
      } else {
        if (where == Where::after) return false;  // a second word: not one number
        where = Where::inside;
        number.append(rest.substr(0, scalar.length));
        if (number.size() > maxNumberBytes) return false;
      }
      rest.remove_prefix(scalar.length);
    }
    return true;
  });
  if (!whole || !cut.empty()) return std::nullopt;
  return decode(number);
}

void write(Date date, const std::string& path) {
  const std::string text = encode(date);
  std::string temporary = path + ".XXXXXX";
  const int fd = ::mkstemp(temporary.data());
  if (fd < 0) fail(errno, "The rig lease file " + path + " could not be written");

  const auto abandon = [&](int error) {
    ::close(fd);
    ::unlink(temporary.c_str());
    fail(error, "The rig lease file " + path + " could not be written");
  };
  // mkstemp makes the file private; the checker may run as another user.
  if (::fchmod(fd, 0644) != 0) abandon(errno);
  std::size_t written = 0;
  while (written < text.size()) {
    const auto wrote = ::write(fd, text.data() + written, text.size() - written);
    if (wrote < 0) {
      if (errno == EINTR) continue;
      abandon(errno);
    }
    written += static_cast<std::size_t>(wrote);
  }
  if (::close(fd) != 0) {
    const int error = errno;
    ::unlink(temporary.c_str());
    fail(error, "The rig lease file " + path + " could not be written");
  }
  putInPlace(temporary, path);
}

bool remove(const std::string& path) {
  if (::unlink(path.c_str()) == 0) return true;
  if (errno == ENOENT) return false;
  fail(errno, "The rig lease file " + path + " could not be removed");
}

}  // namespace wakeloft::RigLeaseFile
