// Localisation tables from disk: a table either reads into unique keys with
// UTF-8 texts, or is refused with the line where reading stopped; a table
// read and written out again reads the same.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <set>
#include <string>
#include <string_view>

#include "FuzzCheck.h"
#include "base/Utf8.h"
#include "ui/StringsFile.h"
#include "ui/StringsFileError.h"

using namespace wakeloft;
using fuzz::require;

namespace {

// The table's quoting: the named escapes where they exist, \U for the other
// control characters, everything else as it is.
std::string quoted(std::string_view text) {
  std::string out = "\"";
  for (const char c : text) {
    switch (c) {
      case '"': out += "\\\""; break;
      case '\\': out += "\\\\"; break;
      case '\n': out += "\\n"; break;
      case '\t': out += "\\t"; break;
      case '\r': out += "\\r"; break;
      default:
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
          char code[8];
          std::snprintf(code, sizeof code, "\\U%04X", static_cast<unsigned>(c));
          out += code;
        } else {
          out += c;
        }
    }
  }
  return out + "\"";
}

std::string written(const StringsFile& table) {
  std::string out;
  for (const auto& entry : table.entries()) {
    out += "/* from line " + std::to_string(entry.line) + " */\n";
    out += quoted(entry.key) + " = " + quoted(entry.value) + ";\n";
  }
  return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const int lines = 1 + static_cast<int>(std::count(bytes.begin(), bytes.end(), '\n'));
  try {
    const auto table = StringsFile::parse(bytes);
    std::set<std::string> keys;
    int previousLine = 1;
    for (const auto& entry : table.entries()) {
      require(!entry.key.empty() && keys.insert(entry.key).second, "keys are unique and not empty");
      require(Utf8::isValid(entry.key) && Utf8::isValid(entry.value), "keys and values are UTF-8");
      require(entry.key.find('\0') == std::string::npos && entry.value.find('\0') == std::string::npos,
              "no text holds U+0000");
      require(entry.line >= previousLine && entry.line <= lines, "entries come in file order with their lines");
      previousLine = entry.line;
      const auto* found = table.find(entry.key);
      require(found && *found == entry.value, "each key finds its own value");
    }

    const auto again = StringsFile::parse(written(table));
    require(again.entries().size() == table.entries().size(), "a table written out has the same number of entries");
    for (std::size_t i = 0; i < again.entries().size(); ++i) {
      const auto& before = table.entries()[i];
      const auto& after = again.entries()[i];
      require(after.key == before.key && after.value == before.value, "a table written out reads the same");
      require(after.line == 2 * static_cast<int>(i + 1), "each written entry is found on its own line");
    }
  } catch (const StringsFileError& error) {
    require(error.line() >= 1 && error.line() <= lines, "a refusal names a line of the table");
  } catch (const std::exception&) {
    require(false, "a table is refused only with a StringsFileError");
  }
  return 0;
}
