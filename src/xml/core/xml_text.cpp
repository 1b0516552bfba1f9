#include "xml/core/xml_text.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace vela {

namespace {

bool isHigh(wchar_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLow(wchar_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

bool isXmlCharacter(std::wstring_view text, std::size_t at) {
    const wchar_t c = text[at];
    if (c < 0x20) return c == L'\t' || c == L'\n' || c == L'\r';
    if (isHigh(c)) return at + 1 < text.size() && isLow(text[at + 1]);
    if (isLow(c)) return at > 0 && isHigh(text[at - 1]);
    return c != 0xFFFE && c != 0xFFFF;
}

// For the characters that would end an attribute, or that parsers read as blanks.
const wchar_t* referenceFor(wchar_t c) {
    switch (c) {
        case L'&': return L"&amp;";
        case L'<': return L"&lt;";
        case L'>': return L"&gt;";
        case L'"': return L"&quot;";
        case L'\t': return L"&#9;";
        case L'\n': return L"&#10;";
        case L'\r': return L"&#13;";
        default: return nullptr;
    }
}

struct Range {
    std::uint32_t first, last;
};

template <std::size_t size>
bool isIn(const Range (&ranges)[size], std::uint32_t unit) {
    return std::any_of(std::begin(ranges), std::end(ranges), [unit](const Range& range) {
        return unit >= range.first && unit <= range.last;
    });
}

// Of the characters in two units, names may have those up to U+EFFFF.
constexpr Range kNameStart[] = {
    {'A', 'Z'},       {'_', '_'},       {'a', 'z'},       {0xC0, 0xD6},     {0xD8, 0xF6},
    {0xF8, 0x2FF},    {0x370, 0x37D},   {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F},
    {0x2C00, 0x2FEF}, {0x3001, 0xD7FF}, {0xD800, 0xDB7F}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}};
constexpr Range kNameRest[] = {{'-', '.'},     {'0', '9'},       {0xB7, 0xB7},
                               {0x300, 0x36F}, {0x203F, 0x2040}, {0xDC00, 0xDFFF}};

}  // namespace

bool isXmlText(std::wstring_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isXmlCharacter(text, i)) return false;
    }
    return true;
}

std::wstring xmlText(std::wstring_view text) {
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isXmlCharacter(text, i)) result += text[i];
    }
    return result;
}

void appendAttribute(std::wstring& tag, std::wstring_view name, std::wstring_view value) {
    tag.append(L" ").append(name).append(L"=\"");
    for (std::size_t i = 0; i < value.size(); ++i) {
        const wchar_t c = value[i];
        if (!isXmlCharacter(value, i)) continue;
        if (const wchar_t* reference = referenceFor(c)) tag += reference;
        else tag += c;
    }
    tag += L'"';
}

bool isXmlName(std::wstring_view name) {
    const auto starts = [](wchar_t c) { return isIn(kNameStart, static_cast<std::uint32_t>(c)); };
    const auto continues = [&](wchar_t c) {
        return starts(c) || isIn(kNameRest, static_cast<std::uint32_t>(c));
    };
    return !name.empty() && starts(name[0]) && isXmlText(name) &&
           std::all_of(name.begin() + 1, name.end(), continues);
}

}  // namespace vela
