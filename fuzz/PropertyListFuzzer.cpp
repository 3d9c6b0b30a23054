// Property lists from disk (the helper reads its bundle's Info.plist): any
// bytes are a value or a PropertyListError, and a value that XML can carry
// is written out and read back the same.

#include <cmath>
#include <cstdint>
#include <exception>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "FuzzCheck.h"
#include "LibplistPropertyListParser.h"
#include "base/PropertyListXMLWriter.h"
#include "base/Utf8.h"

using namespace wakeloft;
using fuzz::require;

namespace {

// Equal, except that XML keeps dates to the whole second.
bool sameAfterXML(const PropertyList& a, const PropertyList& b) {
  if (a.value.index() != b.value.index()) return false;
  if (const auto* date = a.get<Date>()) {
    return std::floor(date->secondsSince1970) == b.get<Date>()->secondsSince1970;
  }
  if (const auto* array = a.get<PropertyList::Array>()) {
    const auto& other = *b.get<PropertyList::Array>();
    if (array->size() != other.size()) return false;
    for (std::size_t i = 0; i < array->size(); ++i) {
      if (!sameAfterXML((*array)[i], other[i])) return false;
    }
    return true;
  }
  if (const auto* dictionary = a.get<PropertyList::Dictionary>()) {
    const auto& other = *b.get<PropertyList::Dictionary>();
    if (dictionary->size() != other.size()) return false;
    for (std::size_t i = 0; i < dictionary->size(); ++i) {
      if ((*dictionary)[i].first != other[i].first || !sameAfterXML((*dictionary)[i].second, other[i].second)) {
        return false;
      }
    }
    return true;
  }
  return a == b;
}

// A dictionary that repeats a key is malformed: readers take its first entry,
// but XML readers disagree on which one a document means, so it has no
// round trip to check.
bool repeatsAKey(const PropertyList& value) {
  if (const auto* array = value.get<PropertyList::Array>()) {
    for (const auto& element : *array) {
      if (repeatsAKey(element)) return true;
    }
  }
  if (const auto* dictionary = value.get<PropertyList::Dictionary>()) {
    std::set<std::string_view> keys;
    for (const auto& [key, element] : *dictionary) {
      if (!keys.insert(key).second || repeatsAKey(element)) return true;
    }
  }
  return false;
}

// libplist 2.2 reads an XML date into 32-bit seconds from 2001, so only
// dates from 1932-12-13 to 2069-01-19 come back from a written document.
bool datesFitLibplist(const PropertyList& value) {
  if (const auto* date = value.get<Date>()) {
    constexpr double reference = 978307200, limit = 2147483648.0;
    const double seconds = std::floor(date->secondsSince1970) - reference;
    return seconds >= -limit && seconds < limit;
  }
  if (const auto* array = value.get<PropertyList::Array>()) {
    for (const auto& element : *array) {
      if (!datesFitLibplist(element)) return false;
    }
  }
  if (const auto* dictionary = value.get<PropertyList::Dictionary>()) {
    for (const auto& entry : *dictionary) {
      if (!datesFitLibplist(entry.second)) return false;
    }
  }
  return true;
}

void checkTexts(const PropertyList& value) {
  if (const auto* text = value.get<std::string>()) require(Utf8::isValid(*text), "texts are UTF-8");
  if (const auto* array = value.get<PropertyList::Array>()) {
    for (const auto& element : *array) checkTexts(element);
  }
  if (const auto* dictionary = value.get<PropertyList::Dictionary>()) {
    for (const auto& [key, element] : *dictionary) {
      require(Utf8::isValid(key), "keys are UTF-8");
      checkTexts(element);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const LibplistPropertyListParser parser;
  PropertyList value = false;
  try {
    value = parser.parse(std::span(data, size));
  } catch (const PropertyListError&) {
    return 0;
  } catch (const std::exception&) {
    require(false, "bad bytes are refused only with a PropertyListError");
  }
  checkTexts(value);
  if (repeatsAKey(value) || !datesFitLibplist(value)) return 0;

  std::string document;
  try {
    document = PropertyListXMLWriter::document(value);
  } catch (const PropertyListError&) {
    return 0;  // a value XML cannot carry: a control character, a real that is not finite, a far date
  }
  const auto bytes = std::span(reinterpret_cast<const std::uint8_t*>(document.data()), document.size());
  PropertyList again = false;
  try {
    again = parser.parse(bytes);
  } catch (const std::exception&) {
    require(false, "a written document reads again");
  }
  require(sameAfterXML(value, again), "a value written as XML reads back the same");
  require(PropertyListXMLWriter::document(again) == document, "writing what was read back gives the same document");
  return 0;
}
