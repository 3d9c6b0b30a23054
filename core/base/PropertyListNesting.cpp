#include "base/PropertyListNesting.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "base/BinaryPropertyListTable.h"
#include "base/PropertyListError.h"

namespace wakeloft::PropertyListNesting {

namespace {

[[noreturn]] void tooDeep() { throw PropertyListError("The property list is nested too deeply."); }

// Depth first without recursion, remembering how far below each object the
// values reach, so an object shared by many containers is walked once.
void checkBinary(std::span<const std::uint8_t> bytes) {
  const BinaryPropertyListTable table(bytes);
  constexpr int unseen = -1, onPath = -2;
  std::vector<std::int16_t> below(static_cast<std::size_t>(table.objectCount()), unseen);
  struct Frame {
    std::uint64_t object, count, next;
    std::size_t references;
    int below;
  };
  std::vector<Frame> path;

  const auto reached = [&](int depthBelow) {
    if (depthBelow > maxDepth) tooDeep();
    if (!path.empty()) path.back().below = std::max(path.back().below, depthBelow);
  };
  const auto enter = [&](std::uint64_t object) {
    const auto [count, references] = table.references(table.objectOffset(object));
    if (count == 0) {
      below[object] = 0;
      return reached(path.empty() ? 0 : 1);
    }
    // The path holds the containers above: its length is this one's depth.
    if (static_cast<int>(path.size()) >= maxDepth) tooDeep();
    below[object] = onPath;
    path.push_back({object, count, 0, references, 0});
  };

  enter(table.topObject());
  while (!path.empty()) {
    Frame& frame = path.back();
    if (frame.next == frame.count) {
      const auto done = frame;
      path.pop_back();
      below[done.object] = static_cast<std::int16_t>(done.below);
      reached(path.empty() ? done.below : done.below + 1);
      continue;
    }
    const auto child = table.reference(frame.references, frame.next++);
    if (child >= table.objectCount()) BinaryPropertyListTable::malformed();
    if (below[child] == onPath) throw PropertyListError("The binary property list holds a value that contains itself.");
    if (below[child] == unseen) {
      enter(child);
    } else {
      reached(below[child] + 1);
    }
  }
}

// Skips what cannot hold elements (comments, character data, processing
// instructions, declarations) and counts the elements open at each tag.
void checkMarkup(std::string_view text) {
  // The plist element and a leaf's own element come on top of the values.
  constexpr int maxElements = maxDepth + 2;
  int open = 0;
  for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at)) {
    const auto rest = text.substr(at);
    std::size_t end = std::string_view::npos;
    if (rest.starts_with("<!--")) {
      end = text.find("-->", at + 4);
    } else if (rest.starts_with("<![CDATA[")) {
      end = text.find("]]>", at + 9);
    } else if (rest.starts_with("<?")) {
      end = text.find("?>", at + 2);
    } else if (rest.starts_with("<!")) {
      // A document type: its internal subset in brackets may hold '>'.
      const auto subset = text.find_first_of("[>", at);
      end = subset != std::string_view::npos && text[subset] == '[' ? text.find("]", subset) : subset;
      if (end != std::string_view::npos) end = text.find('>', end);
    } else if (rest.starts_with("</")) {
      open = std::max(open - 1, 0);
      end = text.find('>', at);
    } else {
      // Attribute values are quoted and may hold '/' or '>'.
      char quote = 0;
      for (std::size_t i = at + 1; i < text.size() && end == std::string_view::npos; ++i) {
        if (quote) {
          if (text[i] == quote) quote = 0;
        } else if (text[i] == '"' || text[i] == '\'') {
          quote = text[i];
        } else if (text[i] == '>') {
          end = i;
        }
      }
      if (end != std::string_view::npos && text[end - 1] != '/' && ++open > maxElements) tooDeep();
    }
    if (end == std::string_view::npos) return;  // unterminated: the parser refuses it
    at = end + 1;
  }
}

// The OpenStep form: arrays in parentheses, dictionaries in braces, texts
// quoted with backslash escapes, C and C++ comments.
void checkBrackets(std::string_view text) {
  // The top value's own bracket comes on top.
  constexpr int maxBrackets = maxDepth + 1;
  int open = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    const char next = at + 1 < text.size() ? text[at + 1] : '\0';
    if (c == '"' || c == '\'') {
      for (++at; at < text.size() && text[at] != c; ++at) {
        if (text[at] == '\\') ++at;
      }
    } else if (c == '/' && next == '/') {
      at = std::min(text.find('\n', at), text.size());
    } else if (c == '/' && next == '*') {
      at = std::min(text.find("*/", at + 2), text.size()) + 1;
    } else if (c == '(' || c == '{') {
      if (++open > maxBrackets) tooDeep();
    } else if (c == ')' || c == '}') {
      open = std::max(open - 1, 0);
    }
  }
}

}  // namespace

void check(std::span<const std::uint8_t> bytes) {
  constexpr std::string_view binaryMagic = "bplist";
  const std::string_view raw(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  if (BinaryPropertyListTable::isBinary(bytes)) return checkBinary(bytes);
  if (raw.starts_with(binaryMagic)) {
    throw PropertyListError("The binary property list is of a version that is not read here.");
  }

  // Zero bytes dropped, UTF-16 and UTF-32 markup reads as ASCII does.
  std::string narrowed;
  std::string_view text = raw;
  if (raw.find('\0') != std::string_view::npos) {
    std::copy_if(raw.begin(), raw.end(), std::back_inserter(narrowed), [](char c) { return c != '\0'; });
    text = narrowed;
  }
  const auto start = text.find_first_not_of(" \t\r\n\xEF\xBB\xBF\xFE\xFF");
  if (start != std::string_view::npos && text[start] == '<') {
    checkMarkup(text.substr(start));
  } else {
    checkBrackets(text);
  }
}

}  // namespace wakeloft::PropertyListNesting
