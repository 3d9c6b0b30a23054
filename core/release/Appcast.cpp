#include "release/Appcast.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/Utf8.h"

namespace wakeloft {

namespace {

constexpr std::string_view xmlNamespace = "http://www.w3.org/XML/1998/namespace";
constexpr std::size_t npos = std::string::npos;

struct Malformed {
  std::size_t at;
  std::string message;
};

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
bool isAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
// Names as XML has them, with any non-ASCII character allowed in them.
bool isNameStart(char c) { return isAsciiLetter(c) || c == '_' || c == ':' || static_cast<unsigned char>(c) >= 0x80; }
bool isNameChar(char c) { return isNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; }
bool isBlank(std::string_view text) { return std::all_of(text.begin(), text.end(), isSpace); }

// "<name>" or "</name>" for a message, built by appending: GCC 12 warns
// wrongly (-Wrestrict) about a literal put before a string.
std::string tag(std::string_view name, bool end = false) {
  std::string text = end ? "</" : "<";
  text += name;
  text += '>';
  return text;
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
  return text;
}

void appendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | c >> 6);
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | c >> 12);
    out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | c >> 18);
    out += static_cast<char>(0x80 | (c >> 12 & 0x3F));
    out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

bool isXmlChar(char32_t c) {
  return c == '\t' || c == '\n' || c == '\r' || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD) ||
         (c >= 0x10000 && c <= 0x10FFFF);
}

struct Name {
  std::string_view prefix;
  std::string_view local;
  std::string_view qualified;
};

struct Attribute {
  Name name;
  std::string value;
};

struct OpenElement {
  Name name;
  std::string uri;
  std::size_t start;
  std::size_t outerBindings;
};

struct ItemVersions {
  std::size_t start;
  std::optional<std::string> element;
  std::optional<std::string> enclosure;
};

}  // namespace

// One pass over the document; throws Malformed at the first fault.
class AppcastReader {
 public:
  explicit AppcastReader(std::string_view text) : text_(text) {}

  Appcast read() {
    checkCharacters();
    if (text_.substr(0, 3) == "\xEF\xBB\xBF") pos_ = 3;
    if (text_.substr(pos_, 5) == "<?xml" && pos_ + 5 < text_.size() &&
        (isSpace(text_[pos_ + 5]) || text_[pos_ + 5] == '?')) {
      declaration();
    }
    while (pos_ < text_.size()) {
      if (text_[pos_] != '<') {
        characters();
      } else if (starts("<!--")) {
        comment();
      } else if (starts("<?")) {
        processingInstruction();
      } else if (starts("<![CDATA[")) {
        cdata();
      } else if (starts("<!DOCTYPE")) {
        fail("a document type declaration, which an appcast never needs");
      } else if (starts("</")) {
        endTag();
      } else if (pos_ + 1 < text_.size() && isNameStart(text_[pos_ + 1])) {
        startTag();
      } else {
        fail("a \"<\" that starts no markup");
      }
    }
    if (!stack_.empty()) fail("the document ends inside " + tag(stack_.back().name.qualified));
    if (rssStart_ == npos) fail("no <rss> element");
    if (channelStart_ == npos) fail("no <channel> in <rss>");

    Appcast appcast;
    appcast.versions_ = std::move(versions_);
    placeNewItem(appcast);
    return appcast;
  }

 private:
  [[noreturn]] void fail(std::string message) const { throw Malformed{pos_, std::move(message)}; }

  bool starts(std::string_view prefix) const { return text_.substr(pos_, prefix.size()) == prefix; }

  void checkCharacters() {
    for (std::size_t i = 0; i < text_.size();) {
      const auto scalar = Utf8::front(text_.substr(i));
      pos_ = i;
      if (!scalar.valid) fail("bytes that are not UTF-8");
      if (!isXmlChar(scalar.value)) fail("a control character, which XML does not allow");
      i += scalar.length;
    }
    pos_ = 0;
  }

  std::size_t find(std::string_view what, std::string_view unterminated) {
    const auto at = text_.find(what, pos_);
    if (at == npos) fail(std::string(unterminated));
    return at;
  }

  void skipSpace() {
    while (pos_ < text_.size() && isSpace(text_[pos_])) ++pos_;
  }

  Name name() {
    const std::size_t start = pos_;
    if (pos_ >= text_.size() || !isNameStart(text_[pos_])) fail("a name was expected");
    while (pos_ < text_.size() && isNameChar(text_[pos_])) ++pos_;
    const std::string_view qualified = text_.substr(start, pos_ - start);
    const auto colon = qualified.find(':');
    if (colon == std::string_view::npos) return {{}, qualified, qualified};
    const std::string_view local = qualified.substr(colon + 1);
    if (colon == 0 || local.empty() || local.find(':') != std::string_view::npos || !isNameStart(local[0])) {
      pos_ = start;
      fail("the malformed name \"" + std::string(qualified) + "\"");
    }
    return {qualified.substr(0, colon), local, qualified};
  }

  // Replaces each reference in `raw` by its character; only XML's five
  // entities exist without a document type. In an attribute value, white
  // space reads as spaces (unless written as a reference).
  std::string decoded(std::string_view raw, std::size_t rawStart, bool attributeValue = false) {
    std::string out;
    for (std::size_t i = 0; i < raw.size(); ++i) {
      if (raw[i] != '&') {
        out += attributeValue && isSpace(raw[i]) ? ' ' : raw[i];
        continue;
      }
      const auto end = raw.find(';', i);
      pos_ = rawStart + i;
      if (end == std::string_view::npos) fail("a \"&\" that starts no reference");
      const std::string_view entity = raw.substr(i + 1, end - i - 1);
      static constexpr std::pair<std::string_view, char> predefined[] = {
          {"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"apos", '\''}, {"quot", '"'}};
      const auto* known = std::find_if(std::begin(predefined), std::end(predefined),
                                       [&](const auto& pair) { return pair.first == entity; });
      if (known != std::end(predefined)) {
        out += known->second;
      } else if (entity.size() > 1 && entity[0] == '#') {
        out += characterReference(entity.substr(1));
      } else {
        fail("the undefined entity &" + std::string(entity) + ";");
      }
      i = end;
    }
    return out;
  }

  std::string characterReference(std::string_view digits) {
    const bool hex = digits.front() == 'x';
    if (hex) digits.remove_prefix(1);
    char32_t value = 0;
    for (const char c : digits) {
      const std::string_view digitsOfBase = hex ? "0123456789abcdef" : "0123456789";
      const auto digit = digitsOfBase.find(static_cast<char>(hex ? c | 0x20 : c));
      if (digit == std::string_view::npos || value > 0x10FFFF) fail("a malformed character reference");
      value = value * (hex ? 16 : 10) + static_cast<char32_t>(digit);
    }
    if (digits.empty() || !isXmlChar(value)) fail("a character reference to a character XML does not allow");
    std::string out;
    appendUtf8(out, value);
    return out;
  }

  void declaration() {
    pos_ += 5;
    const auto attributes = attributeList("?>");
    pos_ += 2;
    if (attributes.empty() || attributes[0].name.qualified != "version") fail("an XML declaration without its version");
    for (const auto& attribute : attributes) {
      if (attribute.name.qualified != "encoding") continue;
      std::string encoding = attribute.value;
      std::transform(encoding.begin(), encoding.end(), encoding.begin(), [](char c) { return c | 0x20; });
      if (encoding != "utf-8") fail("the encoding " + attribute.value + "; an appcast is read as UTF-8");
    }
  }

  // Attributes up to `end` ("/>", ">" or "?>"), which is left unread.
  std::vector<Attribute> attributeList(std::string_view end) {
    std::vector<Attribute> attributes;
    for (;;) {
      const std::size_t before = pos_;
      skipSpace();
      if (starts(end) || (end == "/>" && starts(">"))) return attributes;
      if (pos_ == before) fail("attributes must be separated by white space");
      Attribute attribute{name(), {}};
      for (const auto& other : attributes) {
        if (other.name.qualified == attribute.name.qualified) {
          fail("the attribute " + std::string(attribute.name.qualified) + " twice");
        }
      }
      skipSpace();
      if (!starts("=")) fail("an attribute without a value");
      ++pos_;
      skipSpace();
      if (pos_ >= text_.size() || (text_[pos_] != '"' && text_[pos_] != '\'')) {
        fail("an attribute value without quotes");
      }
      const char quote = text_[pos_++];
      const std::size_t valueStart = pos_;
      const auto valueEnd = find(std::string_view(&quote, 1), "an attribute value that is never closed");
      const std::string_view raw = text_.substr(valueStart, valueEnd - valueStart);
      if (raw.find('<') != std::string_view::npos) fail("a \"<\" in an attribute value");
      attribute.value = decoded(raw, valueStart, true);
      pos_ = valueEnd + 1;
      attributes.push_back(std::move(attribute));
    }
  }

  // The namespace a prefix stands for here; the empty prefix for the
  // default namespace, which is none unless declared.
  std::optional<std::string> lookup(std::string_view prefix) const {
    if (prefix == "xml") return std::string(xmlNamespace);
    for (auto binding = bindings_.rbegin(); binding != bindings_.rend(); ++binding) {
      if (binding->first == prefix) return binding->second;
    }
    if (prefix.empty()) return std::string();
    return std::nullopt;
  }

  std::string resolve(std::string_view prefix) const {
    auto uri = lookup(prefix);
    if (!uri) fail("the prefix " + std::string(prefix) + " without a namespace declared for it");
    return std::move(*uri);
  }

  void startTag() {
    const std::size_t start = pos_++;
    OpenElement element{name(), {}, start, bindings_.size()};
    auto attributes = attributeList("/>");
    const bool empty = starts("/>");
    const std::size_t tagEnd = pos_ + (empty ? 2 : 1);

    for (const auto& attribute : attributes) {
      const auto& n = attribute.name;
      if (n.qualified == "xmlns") {
        bindings_.emplace_back("", attribute.value);
      } else if (n.prefix == "xmlns") {
        if (attribute.value.empty()) fail("an empty namespace for the prefix " + std::string(n.local));
        bindings_.emplace_back(std::string(n.local), attribute.value);
      }
    }
    element.uri = resolve(element.name.prefix);
    const auto attributeNamespace = [&](const Attribute& attribute) {
      return attribute.name.prefix.empty() || attribute.name.prefix == "xmlns" ? std::string()
                                                                               : resolve(attribute.name.prefix);
    };
    for (const auto& attribute : attributes) attributeNamespace(attribute);

    const auto is = [&](std::string_view local, std::string_view uri = {}) {
      return element.name.local == local && element.uri == uri;
    };
    const auto attributeValue = [&](std::string_view local, std::string_view uri = {}) -> const std::string* {
      for (const auto& attribute : attributes) {
        if (attribute.name.local == local && attribute.name.prefix != "xmlns" && attributeNamespace(attribute) == uri) {
          return &attribute.value;
        }
      }
      return nullptr;
    };

    pos_ = start;
    switch (stack_.size()) {
      case 0: {
        if (rssStart_ != npos) fail("a second root element");
        if (!is("rss")) fail("a root element other than <rss> (in no namespace)");
        const auto* version = attributeValue("version");
        if (!version || *version != "2.0") fail("an <rss> element that is not version=\"2.0\"");
        rssStart_ = start;
        break;
      }
      case 1:
        if (element.name.local != "channel") {
          fail(tag(element.name.qualified) + " in <rss>, where only <channel> goes");
        }
        // Unprefixed and in no namespace, so the items written into it are
        // RSS items too.
        if (!element.uri.empty()) fail("a <channel> in the namespace " + element.uri + "; RSS elements have none");
        if (channelStart_ != npos) fail("a second <channel>");
        if (lookup("sparkle") != sparkleNamespace()) {
          fail("a <channel> where the sparkle prefix is not bound to " + std::string(Appcast::sparkleNamespace));
        }
        channelStart_ = start;
        break;
      case 2:
        if (is("item")) {
          if (firstItem_ == npos) firstItem_ = start;
          item_ = ItemVersions{start, {}, {}};
        }
        break;
      case 3:
        if (!item_ || stack_.back().start != item_->start) break;
        if (is("version", sparkleNamespace())) {
          if (item_->element || capturing_) fail("an <item> with two sparkle:version elements");
          capturing_ = true;
          captured_.clear();
        } else if (is("enclosure")) {
          if (const auto* version = attributeValue("version", sparkleNamespace()); version && !item_->enclosure) {
            item_->enclosure = *version;
          }
        }
        break;
      default:
        if (capturing_) fail("markup inside a sparkle:version");
    }
    pos_ = tagEnd;
    stack_.push_back(std::move(element));
    if (empty) close();
  }

  void endTag() {
    const std::size_t start = pos_;
    pos_ += 2;
    const Name closing = name();
    skipSpace();
    if (!starts(">")) fail("an end tag that does not end with \">\"");
    ++pos_;
    if (stack_.empty()) {
      pos_ = start;
      fail(tag(closing.qualified, true) + " without its start tag");
    }
    if (closing.qualified != stack_.back().name.qualified) {
      pos_ = start;
      fail(tag(stack_.back().name.qualified) + " closed by " + tag(closing.qualified, true));
    }
    if (stack_.size() == 2) channelEnd_ = start;
    const std::size_t after = pos_;
    pos_ = start;
    close();
    pos_ = after;
  }

  void close() {
    const OpenElement element = std::move(stack_.back());
    stack_.pop_back();
    bindings_.resize(element.outerBindings);
    if (capturing_ && stack_.size() == 3) {
      capturing_ = false;
      item_->element = captured_;
    } else if (item_ && element.start == item_->start) {
      const auto& version = item_->element ? item_->element : item_->enclosure;
      const std::size_t after = pos_;
      pos_ = element.start;
      if (!version) fail("an <item> without a sparkle:version");
      const std::string_view text = trimmed(*version);
      const bool printable = std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
      if (text.empty() || !printable) {
        fail("an <item> whose sparkle:version \"" + *version + "\" is not a version in printable ASCII");
      }
      versions_.emplace_back(text);
      item_.reset();
      pos_ = after;
    }
  }

  void characters() {
    const std::size_t start = pos_;
    const auto end = std::min(text_.find('<', pos_), text_.size());
    const std::string_view raw = text_.substr(start, end - start);
    if (raw.find("]]>") != std::string_view::npos) fail("\"]]>\" in text");
    const std::string text = decoded(raw, start);
    pos_ = start;
    if (stack_.size() < 2 && !isBlank(raw)) {
      fail(stack_.empty() ? "text outside the root element" : "text in <rss>, where only <channel> goes");
    }
    if (capturing_) captured_ += text;
    pos_ = end;
  }

  void cdata() {
    if (stack_.size() < 2) fail("a CDATA section outside the channel");
    pos_ += 9;
    const auto end = find("]]>", "a CDATA section that is never closed");
    if (capturing_) captured_ += text_.substr(pos_, end - pos_);
    pos_ = end + 3;
  }

  void comment() {
    const std::size_t start = pos_;
    pos_ += 4;
    const auto end = find("-->", "a comment that is never closed");
    const std::string_view body = text_.substr(pos_, end - pos_);
    pos_ = start;
    if (body.find("--") != std::string_view::npos || body.ends_with("-")) fail("\"--\" inside a comment");
    // Sparkle signs a whole feed into such a comment; a new item would
    // break that signature.
    if (trimmed(body).starts_with("sparkle-signatures:")) {
      fail("Sparkle's feed signature, which a new item would break");
    }
    pos_ = end + 3;
  }

  void processingInstruction() {
    pos_ += 2;
    const Name target = name();
    std::string lower(target.qualified);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) { return c | 0x20; });
    if (lower == "xml") fail("an XML declaration that is not at the start");
    pos_ = find("?>", "a processing instruction that is never closed") + 2;
  }

  void placeNewItem(Appcast& appcast) const {
    // The white space before `offset` on its line, when only white space
    // is there.
    const auto indentBefore = [&](std::size_t offset) -> std::optional<std::string> {
      const auto lineStart = text_.rfind('\n', offset == 0 ? 0 : offset - 1);
      const std::size_t from = lineStart == npos || offset == 0 ? 0 : lineStart + 1;
      const std::string_view indent = text_.substr(from, offset - from);
      if (!std::all_of(indent.begin(), indent.end(), [](char c) { return c == ' ' || c == '\t'; })) return std::nullopt;
      return std::string(indent);
    };
    const std::string rssIndent = indentBefore(rssStart_).value_or("");
    const std::string channelIndent = indentBefore(channelStart_).value_or("");
    // One step of indentation: the channel's inside <rss>, or a common one.
    if (channelIndent.size() > rssIndent.size() && channelIndent.starts_with(rssIndent)) {
      appcast.step_ = channelIndent.substr(rssIndent.size());
    } else {
      appcast.step_ = channelIndent.find('\t') != std::string::npos ? "\t" : "    ";
    }

    const std::size_t anchor = firstItem_ != npos ? firstItem_ : channelEnd_;
    const auto indent = indentBefore(anchor);
    appcast.ownLine_ = indent.has_value();
    appcast.insertAt_ = indent ? anchor - indent->size() : anchor;
    appcast.indent_ = indent.value_or("");
    if (indent && firstItem_ == npos) appcast.indent_ += appcast.step_;
  }

  static std::string_view sparkleNamespace() { return Appcast::sparkleNamespace; }

  std::string_view text_;
  std::size_t pos_ = 0;
  std::vector<std::pair<std::string, std::string>> bindings_;
  std::vector<OpenElement> stack_;
  std::size_t rssStart_ = npos;
  std::size_t channelStart_ = npos;
  std::size_t channelEnd_ = npos;
  std::size_t firstItem_ = npos;
  std::optional<ItemVersions> item_;
  bool capturing_ = false;
  std::string captured_;
  std::vector<std::string> versions_;
};

std::variant<Appcast, Appcast::Error> Appcast::read(std::string text) {
  if (text.size() > maxBytes) return Error{"line 1: more than " + std::to_string(maxBytes) + " bytes"};
  try {
    Appcast appcast = AppcastReader(text).read();
    appcast.text_ = std::move(text);
    return appcast;
  } catch (const Malformed& malformed) {
    const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(malformed.at), '\n');
    return Error{"line " + std::to_string(line) + ": " + malformed.message};
  }
}

std::string Appcast::emptyFeed(std::string_view title, std::string_view link) {
  const std::string name = AppcastItem::escaped(title);
  std::string feed = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
  feed += "<rss version=\"2.0\" xmlns:sparkle=\"" + std::string(sparkleNamespace) + "\">\n";
  feed += "    <channel>\n";
  feed += "        <title>" + name + "</title>\n";
  feed += "        <link>" + AppcastItem::escaped(link) + "</link>\n";
  feed += "        <description>Releases of " + name + "</description>\n";
  feed += "    </channel>\n</rss>\n";
  return feed;
}

std::string Appcast::withItem(const AppcastItem& item) const {
  const std::string inserted = ownLine_ ? indent_ + item.xml(indent_, step_) + "\n" : item.xml(indent_, step_);
  std::string result;
  result.reserve(text_.size() + inserted.size());
  result.append(text_, 0, insertAt_).append(inserted).append(text_, insertAt_);
  return result;
}

}  // namespace wakeloft
