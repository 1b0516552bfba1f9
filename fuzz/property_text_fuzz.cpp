// Property lists, and what XML can hold of any text.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "serialization/core/property_text.h"
#include "xml/core/xml_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::wstring text;
    for (std::size_t i = 0; i + 1 < size; i += 2) {
        text += static_cast<wchar_t>(data[i] | (data[i + 1] << 8));
    }
    // Every character of a list is a comma, a prefix, or part of a name.
    std::size_t length = 0;
    std::size_t prefixes = 0;
    const auto entries = vela::listedProperties(text);
    for (const vela::ListedProperty& listed : entries) {
        length += listed.name.size();
        prefixes += listed.kind == vela::PropertyKind::Attribute || !listed.name.empty();
        if (vela::outputName(listed.name, listed.kind).size() != listed.name.size()) std::abort();
    }
    const std::size_t least = length + prefixes + entries.size() - 1;
    if (text.size() < least || text.size() > length + 2 * entries.size() - 1) std::abort();

    const std::wstring held = vela::xmlText(text);
    if (!vela::isXmlText(held) || vela::isXmlText(text) != (held == text)) std::abort();
    if (vela::isXmlName(text) && !vela::isXmlText(text)) std::abort();
    vela::beginsAboveZero(text);
    return 0;
}
