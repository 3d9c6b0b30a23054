#pragma once

#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>

#include "base/PropertyList.h"
#include "base/PropertyListXMLWriter.h"

namespace wakeloft::testing {

inline std::span<const std::uint8_t> bytesOf(const std::string& text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// The value as a binary property list, written by libplist.
inline std::string binaryPropertyList(const PropertyList& value) {
  const std::string xml = PropertyListXMLWriter::document(value);
  plist_t node = nullptr;
  plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &node);
  if (!node) throw std::runtime_error("libplist did not read the XML");
  char* binary = nullptr;
  std::uint32_t length = 0;
  plist_to_bin(node, &binary, &length);
  plist_free(node);
  if (!binary) throw std::runtime_error("libplist did not write binary");
  std::string result(binary, length);
  plist_to_bin_free(binary);
  return result;
}

}  // namespace wakeloft::testing
