// How the properties of an object are listed, and what they are called and read as in XML.
//
// A property list is entries between commas; nothing is trimmed, nothing escaped, and empty entries
// count. An entry is one prefix character and the property's name. The prefix "@" stands for an
// attribute, any other character for a child element. It is always taken off: an entry without one
// loses its first letter.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vela {

enum class PropertyKind : int { Attribute = 0, Element = 1 };

struct ListedProperty {
    PropertyKind kind;
    std::wstring_view name;  // in the list's own text; empty for an entry below two characters
};

// The entries of `list`, in order; one empty one for the empty list.
std::vector<ListedProperty> listedProperties(std::wstring_view list);

// What a property is called in XML: as declared, with its first character in lower case for an
// attribute and in upper case for anything else.
std::wstring outputName(std::wstring_view declared, PropertyKind kind);

// Whether the number that `text` begins with is above zero. Blanks, tabs and line feeds before and
// within the number count for nothing; a text that begins with no number begins with zero.
bool beginsAboveZero(std::wstring_view text);

}  // namespace vela
