#pragma once

#include <string>

#include "base/PropertyList.h"

namespace wakeloft {

// Writes property lists as XML documents of the platform's own DTD, indented
// with tabs the way the platform's tools write them.
namespace PropertyListXMLWriter {

// The whole document, ending with a line break. Throws PropertyListError for
// a value that XML cannot carry: text that is not UTF-8 or holds control
// characters, a non-finite real, or a date outside the years 0 to 9999.
std::string document(const PropertyList& value);

}  // namespace PropertyListXMLWriter
}  // namespace wakeloft
