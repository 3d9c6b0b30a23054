#include "ui/StringsFile.h"

#include <algorithm>
#include <unordered_set>

#include "base/Utf8.h"
#include "ui/StringsFileError.h"

namespace wakeloft {

namespace {

void appendUtf8(std::string& out, char32_t scalar) {
  if (scalar < 0x80) {
    out += static_cast<char>(scalar);
  } else if (scalar < 0x800) {
    out += static_cast<char>(0xC0 | (scalar >> 6));
    out += static_cast<char>(0x80 | (scalar & 0x3F));
  } else if (scalar < 0x10000) {
    out += static_cast<char>(0xE0 | (scalar >> 12));
    out += static_cast<char>(0x80 | ((scalar >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (scalar & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (scalar >> 18));
    out += static_cast<char>(0x80 | ((scalar >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((scalar >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (scalar & 0x3F));
  }
}

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  std::vector<StringsFile::Entry> entries() {
    std::vector<StringsFile::Entry> entries;
    std::unordered_set<std::string> keys;
    while (skipSpaceAndComments()) {
      const int line = line_;
      auto key = quoted("a quoted key");
      if (key.empty()) fail(line, "a key must not be empty");
      expectAfter('=', "\"=\" after the key");
      skipSpaceAndComments();
      auto value = quoted("a quoted value after \"=\"");
      expectAfter(';', "\";\" after the value");
      if (!keys.insert(key).second) fail(line, "the key \"" + key + "\" appears twice");
      entries.push_back({std::move(key), std::move(value), line});
    }
    return entries;
  }

 private:
  [[noreturn]] void fail(int line, const std::string& what) const { throw StringsFileError(line, what); }
  [[noreturn]] void fail(const std::string& what) const { fail(line_, what); }

  bool atEnd() const { return position_ >= text_.size(); }
  char peek() const { return text_[position_]; }
  void advance() {
    if (text_[position_] == '\n') ++line_;
    ++position_;
  }

  // True when there is more to read.
  bool skipSpaceAndComments() {
    while (!atEnd()) {
      const char c = peek();
      if (c == ' ' || c == '\t' || c == '\n' || c == '\r') {
        advance();
      } else if (text_.substr(position_, 2) == "/*") {
        const int start = line_;
        advance();
        advance();
        while (!atEnd() && text_.substr(position_, 2) != "*/") advance();
        if (atEnd()) fail(start, "a comment is not closed");
        advance();
        advance();
      } else if (text_.substr(position_, 2) == "//") {
        while (!atEnd() && peek() != '\n') advance();
      } else {
        return true;
      }
    }
    return false;
  }

  // A missing separator is reported on the line of what it should follow,
  // which is where it was forgotten.
  void expectAfter(char c, const std::string& what) {
    const int line = line_;
    skipSpaceAndComments();
    if (atEnd() || peek() != c) fail(line, "expected " + what);
    advance();
  }

  std::string quoted(const std::string& what) {
    if (atEnd() || peek() != '"') fail("expected " + what);
    const int start = line_;
    advance();
    std::string out;
    while (true) {
      if (atEnd()) fail(start, "a quoted text is not closed");
      const char c = peek();
      if (c == '"') {
        advance();
        return out;
      }
      if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
        fail("a control character inside quotes; write \\n, \\t or \\r instead");
      }
      if (c == '\\') {
        escape(out);
      } else {
        out += c;
        advance();
      }
    }
  }

  void escape(std::string& out) {
    advance();
    if (atEnd()) fail("a backslash ends the file");
    const char c = peek();
    advance();
    switch (c) {
      case '"': out += '"'; return;
      case '\\': out += '\\'; return;
      case 'n': out += '\n'; return;
      case 't': out += '\t'; return;
      case 'r': out += '\r'; return;
      case 'U': break;
      default: fail(std::string("unknown escape \\") + c);
    }
    const char32_t unit = utf16Unit();
    if (unit >= 0xDC00 && unit <= 0xDFFF) fail("\\U escape with a lone low surrogate");
    if (unit >= 0xD800 && unit <= 0xDBFF) {
      if (text_.substr(position_, 2) != "\\U") fail("\\U escape with a high surrogate not followed by a low one");
      advance();
      advance();
      const char32_t low = utf16Unit();
      if (low < 0xDC00 || low > 0xDFFF) fail("\\U escape with a high surrogate not followed by a low one");
      appendUtf8(out, 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00));
      return;
    }
    if (unit == 0) fail("\\U0000 is not allowed");
    appendUtf8(out, unit);
  }

  char32_t utf16Unit() {
    char32_t unit = 0;
    for (int i = 0; i < 4; ++i) {
      if (atEnd()) fail("\\U needs four hexadecimal digits");
      const char c = peek();
      int digit = 0;
      if (c >= '0' && c <= '9') {
        digit = c - '0';
      } else if (c >= 'a' && c <= 'f') {
        digit = c - 'a' + 10;
      } else if (c >= 'A' && c <= 'F') {
        digit = c - 'A' + 10;
      } else {
        fail("\\U needs four hexadecimal digits");
      }
      unit = unit * 16 + static_cast<char32_t>(digit);
      advance();
    }
    return unit;
  }

  std::string_view text_;
  std::size_t position_ = 0;
  int line_ = 1;
};

// The line of the first byte that is not UTF-8, or 0 when all are.
int firstBadLine(std::string_view bytes) {
  int line = 1;
  while (!bytes.empty()) {
    const auto scalar = Utf8::front(bytes);
    if (!scalar.valid) return line;
    if (bytes.front() == '\n') ++line;
    bytes.remove_prefix(scalar.length);
  }
  return 0;
}

}  // namespace

StringsFile StringsFile::parse(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
    throw StringsFileError(1, "the table is UTF-16; it must be UTF-8");
  }
  if (const int line = firstBadLine(bytes)) throw StringsFileError(line, "bytes that are not UTF-8");
  if (const auto nul = bytes.find('\0'); nul != std::string_view::npos) {
    const auto before = bytes.substr(0, nul);
    const int line = 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
    throw StringsFileError(line, "a NUL byte; the table must be UTF-8 text");
  }
  StringsFile file;
  file.entries_ = Reader(bytes).entries();
  return file;
}

const std::string* StringsFile::find(std::string_view key) const {
  for (const auto& entry : entries_) {
    if (entry.key == key) return &entry.value;
  }
  return nullptr;
}

}  // namespace wakeloft
