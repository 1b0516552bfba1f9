#include "serialization/core/property_text.h"

#include "text/core/upper_case.h"

namespace vela {

namespace {

ListedProperty entry(std::wstring_view text) {
    const bool attribute = text.starts_with(L'@');
    text.remove_prefix(text.empty() ? 0 : 1);
    return {attribute ? PropertyKind::Attribute : PropertyKind::Element, text};
}

}  // namespace

std::vector<ListedProperty> listedProperties(std::wstring_view list) {
    std::vector<ListedProperty> entries;
    for (;;) {
        const std::size_t comma = list.find(L',');
        entries.push_back(entry(list.substr(0, comma)));
        if (comma == list.npos) return entries;
        list.remove_prefix(comma + 1);
    }
}

std::wstring outputName(std::wstring_view declared, PropertyKind kind) {
    std::wstring name(declared);
    if (name.empty()) return name;
    name[0] = kind == PropertyKind::Attribute ? lowerCase(name[0]) : upperCase(name[0]);
    return name;
}

bool beginsAboveZero(std::wstring_view text) {
    bool signable = true;
    bool fraction = false;
    for (const wchar_t c : text) {
        if (c == L' ' || c == L'\t' || c == L'\n') continue;
        if (c >= L'1' && c <= L'9') return true;
        const bool sign = c == L'+' && signable;
        const bool point = c == L'.' && !fraction;
        if (!sign && !point && c != L'0') return false;
        fraction = fraction || point;
        signable = false;
    }
    return false;
}

}  // namespace vela
