#pragma once

#import <Foundation/Foundation.h>

#include <string_view>

#include "ui/LocalizedSentences.h"
#include "ui/LocalizedText.h"

namespace wakeloft {

// The interface's words as the app's bundle has them for the user's
// language: each key is looked up in its table, a counted text's plural form
// in the table's strings dictionary, then the placeholders are filled by the
// portable format code. Main thread or not, the bundle's
// tables do not change while the app runs.
namespace BundleTexts {

// Looks keys up in the main bundle's tables.
const TextLookup& lookup();

NSString* string(const LocalizedText& text);
NSString* string(const LocalizedSentences& sentences);

// UTF-8 text as a string; bytes that are not UTF-8 give an empty one.
NSString* string(std::string_view utf8);

}  // namespace BundleTexts
}  // namespace wakeloft
