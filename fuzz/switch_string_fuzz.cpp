// Input: a switch string, each byte one unit. Put together again, the switches are what the string
// holds from its first slash on, but for the spaces around them.
#include "serialization/core/switch_string.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void require(bool condition) {
    if (!condition) std::abort();
}

// Goes past `expected` at the start of `rest`.
void skip(std::wstring_view& rest, std::wstring_view expected) {
    require(rest.substr(0, expected.size()) == expected);
    rest.remove_prefix(expected.size());
}

void skipSpaces(std::wstring_view& rest) {
    while (!rest.empty() && rest.front() == L' ') rest.remove_prefix(1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring input(data, data + size);
    std::wstring_view rest = input;
    while (!rest.empty() && rest.front() != L'/') rest.remove_prefix(1);
    std::int32_t position = 0;
    vela::SwitchReader reader(input);
    while (const auto found = reader.next()) {
        require(found->position == ++position);
        require(found->text.empty() || (found->text.front() != L' ' && found->text.back() != L' '));
        require(found->text.find(L'/') == found->text.npos);
        require(found->name.find(L'=') == found->name.npos);
        skip(rest, L"/");
        skipSpaces(rest);
        skip(rest, found->name);
        if (found->name.size() < found->text.size()) skip(rest, L"=");
        skip(rest, found->value);
        require(found->text.data() + found->text.size() == rest.data() || found->text.empty());
        skipSpaces(rest);
    }
    require(rest.empty());
    return 0;
}
