#pragma once

#if defined(__APPLE__)
#include <CoreFoundation/CoreFoundation.h>
#else
#include <plist/plist.h>
#endif

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>

#include "base/PropertyList.h"
#include "base/PropertyListXMLWriter.h"

namespace wakeloft::testing {

inline std::span<const std::uint8_t> bytesOf(const std::string& text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// The value as a binary property list, written by the platform's own
// library (Core Foundation or libplist).
inline std::string binaryPropertyList(const PropertyList& value) {
  const std::string xml = PropertyListXMLWriter::document(value);
#if defined(__APPLE__)
  CFDataRef xmlData =
      CFDataCreate(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(xml.data()), static_cast<CFIndex>(xml.size()));
  CFPropertyListRef list =
      CFPropertyListCreateWithData(kCFAllocatorDefault, xmlData, kCFPropertyListImmutable, nullptr, nullptr);
  CFRelease(xmlData);
  if (!list) throw std::runtime_error("Core Foundation did not read the XML");
  CFDataRef binary = CFPropertyListCreateData(kCFAllocatorDefault, list, kCFPropertyListBinaryFormat_v1_0, 0, nullptr);
  CFRelease(list);
  if (!binary) throw std::runtime_error("Core Foundation did not write binary");
  std::string result(reinterpret_cast<const char*>(CFDataGetBytePtr(binary)), static_cast<std::size_t>(CFDataGetLength(binary)));
  CFRelease(binary);
  return result;
#else
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
#endif
}

}  // namespace wakeloft::testing
