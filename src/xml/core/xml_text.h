// What XML 1.0 can hold. Texts are UTF-16, also where wchar_t is wider.
#pragma once

#include <string>
#include <string_view>

namespace vela {

// Whether XML can hold every character: no control characters but tab and line ends, no lone
// surrogates, neither U+FFFE nor U+FFFF.
bool isXmlText(std::wstring_view text);
// The text without the characters that XML cannot hold.
std::wstring xmlText(std::wstring_view text);

// Adds an attribute to the text of a start tag, whatever its value; what XML cannot hold of that is
// left out. `name` must be one that XML allows.
void appendAttribute(std::wstring& tag, std::wstring_view name, std::wstring_view value);

// Whether `name` can be the name of an element or attribute that is in no namespace.
bool isXmlName(std::wstring_view name);

}  // namespace vela
