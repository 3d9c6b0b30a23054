#include "LibplistPropertyListParser.h"

#include <plist/plist.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "base/BinaryPropertyListTable.h"
#include "base/PropertyListNesting.h"
#include "base/Utf8.h"

namespace wakeloft {

namespace {

// libplist counts dates from 2001-01-01, as the formats do.
constexpr double referenceDateSince1970 = 978307200;

struct NodeFree {
  void operator()(plist_t node) const { plist_free(node); }
};
struct MallocFree {
  void operator()(void* pointer) const { std::free(pointer); }
};

// libplist 2.2 stops the whole process (a failed assert) when asked for a
// dictionary key that holds a zero byte, which only the binary format can
// express. So every key a dictionary in the object table names must be a
// string without U+0000.
void checkKey(const BinaryPropertyListTable& table, std::uint64_t index) {
  const auto at = table.objectOffset(index);
  const unsigned kind = table.kind(at);
  if (kind != 0x5 && kind != 0x6) return;  // libplist refuses keys that are not strings
  const auto [count, content] = table.lengthAfterMarker(at);
  const std::uint64_t unit = kind == 0x5 ? 1 : 2;
  if (count > table.size() / unit || content + count * unit > table.size()) BinaryPropertyListTable::malformed();
  for (std::uint64_t i = 0; i < count; ++i) {
    if (table.number(static_cast<std::size_t>(content + i * unit), unit) == 0) {
      throw PropertyListError("The property list holds a dictionary key with a zero character.");
    }
  }
}

void checkKeys(std::span<const std::uint8_t> bytes) {
  const BinaryPropertyListTable table(bytes);
  for (std::uint64_t i = 0; i < table.objectCount(); ++i) {
    const auto at = table.objectOffset(i);
    if (table.kind(at) != 0xD) continue;
    const auto [count, references] = table.references(at);
    for (std::uint64_t k = 0; k < count / 2; ++k) checkKey(table, table.reference(references, k));
  }
}

std::string checkedText(const char* bytes, std::size_t length) {
  std::string text(bytes, length);
  if (!Utf8::isValid(text)) throw PropertyListError("The property list holds a text that is not valid UTF-8.");
  return text;
}

PropertyList convert(plist_t node, int depth) {
  if (depth > PropertyListNesting::maxDepth) throw PropertyListError("The property list is nested too deeply.");
  switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
      std::uint8_t flag = 0;
      plist_get_bool_val(node, &flag);
      return flag != 0;
    }
    case PLIST_UINT: {
      // libplist keeps every integer as 64 bits; negative ones come back in
      // two's complement.
      std::uint64_t bits = 0;
      plist_get_uint_val(node, &bits);
      return static_cast<std::int64_t>(bits);
    }
    case PLIST_REAL: {
      double real = 0;
      plist_get_real_val(node, &real);
      return real;
    }
    case PLIST_STRING: {
      std::uint64_t length = 0;
      const char* text = plist_get_string_ptr(node, &length);
      if (!text) return std::string();
      return checkedText(text, length);
    }
    case PLIST_DATE: {
      std::int32_t seconds = 0, microseconds = 0;
      plist_get_date_val(node, &seconds, &microseconds);
      return Date{referenceDateSince1970 + seconds + microseconds / 1e6};
    }
    case PLIST_DATA: {
      std::uint64_t length = 0;
      const auto* bytes = reinterpret_cast<const std::uint8_t*>(plist_get_data_ptr(node, &length));
      if (!bytes) return PropertyList::Data{};
      return PropertyList::Data(bytes, bytes + length);
    }
    case PLIST_ARRAY: {
      PropertyList::Array array;
      const auto count = plist_array_get_size(node);
      array.reserve(count);
      for (std::uint32_t i = 0; i < count; ++i) array.push_back(convert(plist_array_get_item(node, i), depth + 1));
      return array;
    }
    case PLIST_DICT: {
      PropertyList::Dictionary dictionary;
      plist_dict_iter rawIter = nullptr;
      plist_dict_new_iter(node, &rawIter);
      const std::unique_ptr<void, MallocFree> iter(rawIter);
      for (;;) {
        char* rawKey = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, rawIter, &rawKey, &item);
        const std::unique_ptr<char, MallocFree> key(rawKey);
        if (!item) break;
        if (!key) throw PropertyListError("The property list holds a dictionary entry without a key.");
        dictionary.emplace_back(checkedText(key.get(), std::char_traits<char>::length(key.get())),
                                convert(item, depth + 1));
      }
      return dictionary;
    }
    default:
      // Keys outside a dictionary and keyed-archive UIDs are not values.
      throw PropertyListError("The property list holds a value of a kind that is not supported.");
  }
}

}  // namespace

// libplist reads binary lists and frees every list recursively: parse() has
// already bounded the nesting.
PropertyList LibplistPropertyListParser::parseChecked(std::span<const std::uint8_t> bytes) const {
  if (bytes.empty()) throw PropertyListError("The property list is empty.");
  if (bytes.size() > std::numeric_limits<std::uint32_t>::max()) throw PropertyListError("The property list is too large.");
  if (plist_is_binary(reinterpret_cast<const char*>(bytes.data()), static_cast<std::uint32_t>(bytes.size()))) {
    checkKeys(bytes);
  } else if (std::find(bytes.begin(), bytes.end(), std::uint8_t{0}) != bytes.end()) {
    // XML allows no zero byte, and libplist would cut texts short at one.
    throw PropertyListError("The XML property list holds a zero byte.");
  }
  plist_t raw = nullptr;
  plist_from_memory(reinterpret_cast<const char*>(bytes.data()), static_cast<std::uint32_t>(bytes.size()), &raw);
  const std::unique_ptr<void, NodeFree> root(raw);
  if (!root) throw PropertyListError("The data is not a property list in XML or binary form.");
  return convert(root.get(), 0);
}

}  // namespace wakeloft
