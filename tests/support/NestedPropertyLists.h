#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace wakeloft::testing {

// A binary property list of `levels` arrays, each the one element of the one
// before; the innermost holds the text "x" when `leaf` is set. Object i
// refers to `next(i)` instead of i + 1 when given, `times` times.
inline std::string nestedBinaryArrays(std::uint32_t levels, bool leaf = false, std::uint32_t times = 1) {
  std::string list = "bplist00";
  std::vector<std::uint32_t> offsets;
  const auto put = [&list](std::uint64_t value, int bytes) {
    for (int b = bytes - 1; b >= 0; --b) list += static_cast<char>((value >> (8 * b)) & 0xFF);
  };
  for (std::uint32_t i = 0; i < levels; ++i) {
    offsets.push_back(static_cast<std::uint32_t>(list.size()));
    const bool last = i + 1 == levels;
    const std::uint32_t count = last ? (leaf ? 1 : 0) : times;
    list += static_cast<char>(0xA0 | count);
    for (std::uint32_t k = 0; k < count; ++k) put(i + 1, 4);
  }
  if (leaf) {
    offsets.push_back(static_cast<std::uint32_t>(list.size()));
    list += "\x51x";
  }
  const std::uint64_t table = list.size();
  for (const auto offset : offsets) put(offset, 4);
  list += std::string(6, '\0') + "\x04\x04";
  put(offsets.size(), 8);
  put(0, 8);  // the top object
  put(table, 8);
  return list;
}

// The same nesting as XML: `levels` arrays inside the plist element.
inline std::string nestedXMLArrays(std::size_t levels) {
  std::string list = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">";
  for (std::size_t i = 0; i < levels; ++i) list += "<array>";
  for (std::size_t i = 0; i < levels; ++i) list += "</array>";
  return list + "</plist>\n";
}

}  // namespace wakeloft::testing
