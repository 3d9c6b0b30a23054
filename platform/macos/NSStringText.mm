#import "NSStringText.h"

#include <cstdint>
#include <span>

#include "base/Utf8.h"

namespace wakeloft {

NSString* nsString(std::string_view utf8) {
  // NSString answers nil to bytes that are not UTF-8; repair them first.
  const std::string valid =
      Utf8::isValid(utf8) ? std::string(utf8)
                          : Utf8::repaired(std::span(reinterpret_cast<const std::uint8_t*>(utf8.data()), utf8.size()));
  NSString* text = [[NSString alloc] initWithBytes:valid.data() length:valid.size() encoding:NSUTF8StringEncoding];
  return text ? text : @"";
}

std::string utf8(NSString* text) {
  if (!text) return {};
  NSData* bytes = [text dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
  if (bytes.length == 0) return {};
  return std::string(static_cast<const char*>(bytes.bytes), bytes.length);
}

}  // namespace wakeloft
