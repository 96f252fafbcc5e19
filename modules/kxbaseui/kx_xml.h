// A small reader of XML: the whole text becomes a tree of elements, or it is refused.
//
// Checked: UTF-8 and the characters that XML allows; tags that match; one root; attributes that are quoted, have a name
// and come once; references to characters, to the five entities that every document has, and to those that it declares
// itself, as long as they are text. Names are not checked against the table
// of letters: every character beyond ASCII may be in one. Free of windows, so that it can be built and fuzzed natively.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kx::svg {

// An element, or a piece of text, which has no name.
struct XmlNode {
    std::string name;
    std::string text;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<XmlNode> children;

    // Null when there is no such attribute.
    const std::string* Find(std::string_view attribute) const;
};

// A document larger than this in any respect is refused.
struct XmlLimits {
    static constexpr std::size_t Bytes = 1 << 20;
    static constexpr int Nodes = 20'000;
    static constexpr int Depth = 64;
    static constexpr std::size_t Attributes = 64;
    static constexpr std::size_t Entities = 256, EntityName = 64;
    // Of one of the document's own entities; what all references give together is bound by Bytes.
    static constexpr std::size_t EntityBytes = 64 << 10;
};

// The root element; nothing when the text is not well-formed or beyond a limit.
std::optional<XmlNode> ReadXml(std::string_view text);

}  // namespace kx::svg
