#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>

#include "base/PropertyListError.h"

namespace wakeloft {

// The layout of a binary property list ("bplist00"), read from its trailer
// and offset table without building a single value, so that checks can run
// before a parser recurses into it. Every read is bounds-checked: bytes that
// do not follow the layout throw PropertyListError.
class BinaryPropertyListTable {
 public:
  // The only version of the format this reads: "bplist00".
  static bool isBinary(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view magic = "bplist00";
    return bytes.size() >= magic.size() && std::equal(magic.begin(), magic.end(), bytes.begin());
  }

  explicit BinaryPropertyListTable(std::span<const std::uint8_t> bytes) : bytes_(bytes) {
    constexpr std::size_t headerSize = 8, trailerSize = 32;
    if (bytes_.size() < headerSize + trailerSize) malformed();
    const std::size_t trailer = bytes_.size() - trailerSize;
    offsetSize_ = bytes_[trailer + 6];
    referenceSize_ = bytes_[trailer + 7];
    objectCount_ = number(trailer + 8, 8);
    topObject_ = number(trailer + 16, 8);
    table_ = number(trailer + 24, 8);
    if (offsetSize_ == 0 || offsetSize_ > 8 || referenceSize_ == 0 || referenceSize_ > 8) malformed();
    if (objectCount_ > bytes_.size() || table_ > trailer || (trailer - table_) / offsetSize_ < objectCount_) {
      malformed();
    }
    if (topObject_ >= objectCount_) malformed();
  }

  [[noreturn]] static void malformed() { throw PropertyListError("The binary property list is malformed."); }

  std::size_t size() const { return bytes_.size(); }
  std::uint64_t objectCount() const { return objectCount_; }
  std::uint64_t topObject() const { return topObject_; }
  std::size_t referenceSize() const { return referenceSize_; }

  // Where the object with this index starts: at its marker byte.
  std::size_t objectOffset(std::uint64_t index) const {
    if (index >= objectCount_) malformed();
    const auto at = number(static_cast<std::size_t>(table_ + index * offsetSize_), offsetSize_);
    if (at < 8 || at >= table_) malformed();
    return static_cast<std::size_t>(at);
  }

  // The high half of the marker: 0xA array, 0xC set, 0xD dictionary, 0x5
  // and 0x6 texts, and so on.
  unsigned kind(std::size_t at) const { return bytes_[at] >> 4; }

  // The element count of the object at `at`, and where its content starts.
  std::pair<std::uint64_t, std::size_t> lengthAfterMarker(std::size_t at) const {
    const unsigned low = bytes_[at] & 0x0F;
    if (low != 0x0F) return {low, at + 1};
    if (at + 1 >= bytes_.size() || (bytes_[at + 1] >> 4) != 0x1) malformed();
    const std::size_t size = std::size_t{1} << (bytes_[at + 1] & 0x0F);
    if (size > 8) malformed();
    return {number(at + 2, size), at + 2 + size};
  }

  // The objects a container at `at` refers to, as a count and where their
  // indices start: an array's or set's elements, a dictionary's keys and
  // then its values. None for anything else.
  std::pair<std::uint64_t, std::size_t> references(std::size_t at) const {
    const unsigned k = kind(at);
    if (k != 0xA && k != 0xB && k != 0xC && k != 0xD) return {0, at};
    auto [count, start] = lengthAfterMarker(at);
    if (k == 0xD) {
      if (count > bytes_.size()) malformed();
      count *= 2;
    }
    if (count > bytes_.size() / referenceSize_ || start + count * referenceSize_ > bytes_.size()) malformed();
    return {count, start};
  }

  // The `i`th index of a reference list that starts at `start`.
  std::uint64_t reference(std::size_t start, std::uint64_t i) const {
    return number(static_cast<std::size_t>(start + i * referenceSize_), referenceSize_);
  }

  // A big-endian unsigned number of `size` bytes at `at`.
  std::uint64_t number(std::size_t at, std::size_t size) const {
    if (at > bytes_.size() || bytes_.size() - at < size) malformed();
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i) value = (value << 8) | bytes_[at + i];
    return value;
  }

 private:
  std::span<const std::uint8_t> bytes_;
  std::size_t offsetSize_ = 0, referenceSize_ = 0;
  std::uint64_t objectCount_ = 0, topObject_ = 0, table_ = 0;
};

}  // namespace wakeloft
