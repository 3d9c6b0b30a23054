#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace wakeloft {

// Writes one JSON document, compact, in the order it is told. Strings are
// escaped as the format demands, and bytes that are not UTF-8 become U+FFFD,
// so whatever a fact holds, the document parses. Commas are the writer's
// business; nesting the caller's.
class JsonWriter {
 public:
  JsonWriter& beginObject();
  JsonWriter& endObject();
  JsonWriter& beginArray();
  JsonWriter& endArray();
  // Names the next member of the object being written.
  JsonWriter& key(std::string_view name);

  JsonWriter& string(std::string_view text);
  JsonWriter& integer(std::int64_t number);
  // A number that is not finite has no JSON form and is written as null.
  JsonWriter& number(double number);
  JsonWriter& boolean(bool value);
  JsonWriter& null();

  const std::string& text() const { return text_; }

  // `text` as a JSON string, quotes included.
  static std::string quoted(std::string_view text);

 private:
  void beforeValue();

  std::string text_;
  // One entry per open object or array: whether it has a member yet.
  std::vector<bool> hasMembers_;
  bool afterKey_ = false;
};

}  // namespace wakeloft
