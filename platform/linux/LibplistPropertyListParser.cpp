#include "LibplistPropertyListParser.h"

#include <plist/plist.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "base/Utf8.h"

namespace wakeloft {

namespace {

// libplist counts dates from 2001-01-01, as the formats do.
constexpr double referenceDateSince1970 = 978307200;
// Deeper nesting than any real list has; stops a crafted one from
// exhausting the stack.
constexpr int maxDepth = 512;

struct NodeFree {
  void operator()(plist_t node) const { plist_free(node); }
};
struct MallocFree {
  void operator()(void* pointer) const { std::free(pointer); }
};

// libplist 2.2 stops the whole process (a failed assert) when asked for a
// dictionary key that holds a zero byte, which only the binary format can
// express. So the binary object table is checked first: every key a
// dictionary names must be a string without U+0000. Anything that does not
// follow the format's layout is refused here too.
class BinaryKeyCheck {
 public:
  explicit BinaryKeyCheck(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  void run() {
    constexpr std::size_t headerSize = 8, trailerSize = 32;
    if (bytes_.size() < headerSize + trailerSize) malformed();
    const std::size_t trailer = bytes_.size() - trailerSize;
    offsetSize_ = bytes_[trailer + 6];
    refSize_ = bytes_[trailer + 7];
    const auto objects = number(trailer + 8, 8);
    const auto tableOffset = number(trailer + 24, 8);
    if (offsetSize_ == 0 || offsetSize_ > 8 || refSize_ == 0 || refSize_ > 8) malformed();
    if (objects > bytes_.size() || tableOffset > trailer || (trailer - tableOffset) / offsetSize_ < objects) malformed();
    objects_ = objects;
    table_ = tableOffset;
    for (std::uint64_t i = 0; i < objects_; ++i) {
      const auto at = objectOffset(i);
      if ((bytes_[at] >> 4) != 0xD) continue;
      auto [count, refs] = lengthAfterMarker(at);
      for (std::uint64_t k = 0; k < count; ++k) {
        if (refs + refSize_ > bytes_.size()) malformed();
        checkKey(number(refs, refSize_));
        refs += refSize_;
      }
    }
  }

 private:
  [[noreturn]] static void malformed() { throw PropertyListError("The binary property list is malformed."); }

  std::uint64_t number(std::size_t at, std::size_t size) const {
    if (at > bytes_.size() || bytes_.size() - at < size) malformed();
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i) value = (value << 8) | bytes_[at + i];
    return value;
  }

  std::size_t objectOffset(std::uint64_t index) const {
    if (index >= objects_) malformed();
    const auto at = number(static_cast<std::size_t>(table_ + index * offsetSize_), offsetSize_);
    if (at < 8 || at >= table_) malformed();
    return static_cast<std::size_t>(at);
  }

  // The element count of the object at `at`, and where its content starts.
  std::pair<std::uint64_t, std::size_t> lengthAfterMarker(std::size_t at) const {
    const unsigned low = bytes_[at] & 0x0F;
    if (low != 0x0F) return {low, at + 1};
    if (at + 1 >= bytes_.size() || (bytes_[at + 1] >> 4) != 0x1) malformed();
    const std::size_t size = std::size_t{1} << (bytes_[at + 1] & 0x0F);
    if (size > 8) malformed();
    return {number(at + 2, size), at + 2 + size};
  }

  void checkKey(std::uint64_t index) const {
    const auto at = objectOffset(index);
    const unsigned kind = bytes_[at] >> 4;
    if (kind != 0x5 && kind != 0x6) return;  // libplist refuses keys that are not strings
    const auto [count, content] = lengthAfterMarker(at);
    const std::uint64_t unit = kind == 0x5 ? 1 : 2;
    if (count > bytes_.size() / unit || content + count * unit > bytes_.size()) malformed();
    for (std::uint64_t i = 0; i < count; ++i) {
      const auto codeUnit = number(static_cast<std::size_t>(content + i * unit), unit);
      if (codeUnit == 0) throw PropertyListError("The property list holds a dictionary key with a zero character.");
    }
  }

  std::span<const std::uint8_t> bytes_;
  std::size_t offsetSize_ = 0, refSize_ = 0;
  std::uint64_t objects_ = 0, table_ = 0;
};

std::string checkedText(const char* bytes, std::size_t length) {
  std::string text(bytes, length);
  if (!Utf8::isValid(text)) throw PropertyListError("The property list holds a text that is not valid UTF-8.");
  return text;
}

PropertyList convert(plist_t node, int depth) {
  if (depth > maxDepth) throw PropertyListError("The property list is nested too deeply.");
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

PropertyList LibplistPropertyListParser::parse(std::span<const std::uint8_t> bytes) const {
  if (bytes.empty()) throw PropertyListError("The property list is empty.");
  if (bytes.size() > std::numeric_limits<std::uint32_t>::max()) throw PropertyListError("The property list is too large.");
  if (plist_is_binary(reinterpret_cast<const char*>(bytes.data()), static_cast<std::uint32_t>(bytes.size()))) {
    BinaryKeyCheck(bytes).run();
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
