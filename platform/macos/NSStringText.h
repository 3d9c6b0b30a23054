#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

namespace wakeloft {

// Texts between the portable core's UTF-8 and Foundation.

// Never nil: bytes that are not UTF-8 become U+FFFD each, so a caller can
// always pass the result where Foundation wants a text.
NSString* _Nonnull nsString(std::string_view utf8);

// Empty for nil; a text that cannot be encoded whole keeps what it can.
std::string utf8(NSString* _Nullable text);

}  // namespace wakeloft
