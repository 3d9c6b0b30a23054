// The rig lease file as a checker reads it: whatever the file holds, reading
// gives the date its text decodes to or nothing, and a decoded date is
// written and read back exactly.

#include <stdlib.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

#include "FuzzCheck.h"
#include "base/Utf8.h"
#include "helper/RigLeaseFile.h"

using namespace wakeloft;
using fuzz::require;

namespace {

// One folder for the whole run, in memory where there is a tmpfs, removed
// at exit.
struct ScratchFolder {
  std::string path;
  ScratchFolder() {
    std::string pattern = std::filesystem::is_directory("/dev/shm") ? "/dev/shm/wakeloft-fuzz-lease-XXXXXX"
                                                                    : "/tmp/wakeloft-fuzz-lease-XXXXXX";
    if (!mkdtemp(pattern.data())) {
      std::perror("mkdtemp");
      std::abort();
    }
    path = pattern;
  }
  ~ScratchFolder() { std::filesystem::remove_all(path); }
};

bool sameDate(std::optional<Date> a, std::optional<Date> b) {
  if (a.has_value() != b.has_value()) return false;
  return !a || (a->secondsSince1970 == b->secondsSince1970 &&
                std::signbit(a->secondsSince1970) == std::signbit(b->secondsSince1970));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto decoded = RigLeaseFile::decode(text);
  if (decoded) require(std::isfinite(decoded->secondsSince1970), "a decoded date is finite");
  require(sameDate(RigLeaseFile::decode(" \t\n" + std::string(text) + "\r\n "), decoded),
          "blanks and line breaks around the text change nothing");

  static const ScratchFolder scratch;
  const std::string path = scratch.path + "/rig.lease";
  // A file's number past this length reads as absent; decode has no such cut.
  if (size <= RigLeaseFile::maxNumberBytes) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    require(file != nullptr, "the scratch file can be written");
    std::fwrite(data, 1, size, file);
    std::fclose(file);
    const auto read = RigLeaseFile::read(path);
    require(sameDate(read, Utf8::isValid(text) ? decoded : std::nullopt),
            "a file reads as its UTF-8 text decodes, and as nothing when it is not UTF-8");
  }

  if (decoded) {
    const std::string encoded = RigLeaseFile::encode(*decoded);
    require(encoded.find('.') != std::string::npos && encoded.find_first_of(" \t\r\n") == std::string::npos,
            "an encoded date has a decimal point and no blanks");
    require(sameDate(RigLeaseFile::decode(encoded), decoded), "a decoded date re-encodes and decodes to the same value");
    RigLeaseFile::write(*decoded, path);
    require(sameDate(RigLeaseFile::read(path), decoded), "a written date reads back exactly");
  }
  return 0;
}
