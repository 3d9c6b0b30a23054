#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "release/AppcastItem.h"

namespace wakeloft {

// An appcast file, Sparkle's RSS feed, read strictly and kept byte for byte,
// so that adding a release inserts the new item's text and touches nothing
// else. The reader takes the XML this feed needs (UTF-8, elements,
// attributes, namespaces, character and entity references, comments,
// CDATA, processing instructions) and refuses a document type declaration,
// which an appcast never needs and which could define entities.
//
// The expected shape: a root <rss version="2.0"> holding one <channel>,
// where the sparkle prefix is bound to Sparkle's namespace and the default
// namespace is none; each <item> of the channel has a sparkle:version,
// as an element or as its enclosure's attribute, in printable ASCII.
class Appcast {
 public:
  static constexpr std::string_view sparkleNamespace = "http://www.andymatuschak.org/xml-namespaces/sparkle";
  static constexpr std::size_t maxBytes = 16 * 1024 * 1024;

  struct Error {
    // Starts with the line it concerns: "line 12: ...".
    std::string message;
  };

  // A feed without items: a channel titled `title` that links to `link`.
  static std::string emptyFeed(std::string_view title, std::string_view link);

  static std::variant<Appcast, Error> read(std::string text);

  // The sparkle:version of each item, in the order of the document.
  const std::vector<std::string>& versions() const { return versions_; }

  // The document with `item` as the channel's first item, indented like
  // the items around it; every other byte is as it was.
  std::string withItem(const AppcastItem& item) const;

 private:
  friend class AppcastReader;
  Appcast() = default;

  std::string text_;
  std::vector<std::string> versions_;
  std::size_t insertAt_ = 0;
  std::string indent_;
  std::string step_;
  // Whether the new item gets lines of its own (it does unless the place
  // it goes to shares its line with other markup).
  bool ownLine_ = false;
};

}  // namespace wakeloft
