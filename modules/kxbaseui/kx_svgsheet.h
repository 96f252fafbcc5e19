// The style sheets within a drawing.
#pragma once

#include <kxbaseui/kx_xml.h>

#include <cstddef>

namespace kx::svg {

// Beyond these a drawing is refused.
struct SheetLimits {
    static constexpr std::size_t Rules = 2'000;      // selectors, each of a group counted
    static constexpr std::size_t Given = 4'000'000;  // characters that the sheets give all elements together
};

// Reads the document's style elements, and writes what they declare for each element into its `style` attribute: before
// what stands there, or behind it where it is important; so that whoever reads the attribute finds the cascade's order.
//
// A selector is made of an element's name or *, classes and ids (rect.wide#top), grouped by commas; the more specific
// goes first, and of equals the later. One of another kind (within another, with an attribute or a state) matches
// nothing; what is between the braces of an @ rule is left out. False beyond a limit.
bool ApplySheets(XmlNode& root);

}  // namespace kx::svg
