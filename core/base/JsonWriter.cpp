#include "base/JsonWriter.h"

#include <charconv>
#include <cmath>

#include "base/Utf8.h"

namespace wakeloft {

std::string JsonWriter::quoted(std::string_view text) {
  std::string out = "\"";
  while (!text.empty()) {
    const auto scalar = Utf8::front(text);
    const auto bytes = text.substr(0, scalar.length);
    text.remove_prefix(scalar.length);
    if (!scalar.valid) {
      out += "\xEF\xBF\xBD";
      continue;
    }
    switch (scalar.value) {
      case '"': out += "\\\""; continue;
      case '\\': out += "\\\\"; continue;
      case '\n': out += "\\n"; continue;
      case '\r': out += "\\r"; continue;
      case '\t': out += "\\t"; continue;
      case '\b': out += "\\b"; continue;
      case '\f': out += "\\f"; continue;
      default: break;
    }
    if (scalar.value < 0x20) {
      constexpr const char* hex = "0123456789abcdef";
      out += "\\u00";
      out += hex[scalar.value >> 4];
      out += hex[scalar.value & 0xF];
      continue;
    }
    out += bytes;
  }
  return out + "\"";
}

void JsonWriter::beforeValue() {
  if (afterKey_) {
    afterKey_ = false;
    return;
  }
  if (!hasMembers_.empty()) {
    if (hasMembers_.back()) text_ += ',';
    hasMembers_.back() = true;
  }
}

JsonWriter& JsonWriter::beginObject() {
  beforeValue();
  text_ += '{';
  hasMembers_.push_back(false);
  return *this;
}

JsonWriter& JsonWriter::endObject() {
  text_ += '}';
  hasMembers_.pop_back();
  return *this;
}

JsonWriter& JsonWriter::beginArray() {
  beforeValue();
  text_ += '[';
  hasMembers_.push_back(false);
  return *this;
}

JsonWriter& JsonWriter::endArray() {
  text_ += ']';
  hasMembers_.pop_back();
  return *this;
}

JsonWriter& JsonWriter::key(std::string_view name) {
  beforeValue();
  text_ += quoted(name) + ':';
  afterKey_ = true;
  return *this;
}

JsonWriter& JsonWriter::string(std::string_view text) {
  beforeValue();
  text_ += quoted(text);
  return *this;
}

JsonWriter& JsonWriter::integer(std::int64_t number) {
  beforeValue();
  text_ += std::to_string(number);
  return *this;
}

JsonWriter& JsonWriter::number(double number) {
  if (!std::isfinite(number)) return null();
  beforeValue();
  char digits[64];
  const auto result = std::to_chars(digits, digits + sizeof digits, number);
  text_.append(digits, result.ptr);
  return *this;
}

JsonWriter& JsonWriter::boolean(bool value) {
  beforeValue();
  text_ += value ? "true" : "false";
  return *this;
}

JsonWriter& JsonWriter::null() {
  beforeValue();
  text_ += "null";
  return *this;
}

}  // namespace wakeloft
