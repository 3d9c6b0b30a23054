#pragma once

#include <cstdint>
#include <span>

namespace wakeloft {

// How deep the values of a property list may nest, judged from its bytes
// before any parser reads them: the platforms' readers recurse once per
// level, so a crafted list of a few hundred kilobytes would otherwise run
// them out of stack.
namespace PropertyListNesting {

// Deeper than any real list has. The top value is at depth 0.
inline constexpr int maxDepth = 512;

// Throws PropertyListError when a value lies deeper than `maxDepth`, or a
// binary list holds a value that contains itself. Binary lists are followed
// through their object table; text lists (XML, and the OpenStep form where
// the platform reads it) are judged by their open elements or brackets,
// which bounds the depth just as well. Otherwise malformed bytes pass, for
// the parser to refuse.
void check(std::span<const std::uint8_t> bytes);

}  // namespace PropertyListNesting
}  // namespace wakeloft
