#include "text/ansi_bytes.h"

#include <windows.h>

#include <algorithm>
#include <array>

namespace vela {

namespace {

struct CodePage {
    std::array<wchar_t, 256> units;
    std::array<char, 0x10000> bytes;
};

constexpr UINT kSubstitute = 1252;

CodePage readCodePage() {
    UINT number = GetACP();
    CPINFO info{};
    if (!GetCPInfo(number, &info) || info.MaxCharSize != 1) {
        number = kSubstitute;
        GetCPInfo(number, &info);
    }
    CodePage page{};
    page.bytes.fill(static_cast<char>(info.DefaultChar[0]));
    for (std::size_t i = 0; i < page.units.size(); ++i) {
        const char byte = static_cast<char>(i);
        MultiByteToWideChar(number, 0, &byte, 1, &page.units[i], 1);
        page.bytes[page.units[i]] = byte;
    }
    return page;
}

const CodePage& codePage() {
    static const CodePage page = readCodePage();
    return page;
}

}  // namespace

std::string ansiBytes(std::wstring_view text) {
    std::string bytes(text.size(), '\0');
    ansiBytes(text, bytes.data());
    return bytes;
}

void ansiBytes(std::wstring_view text, char* bytes) {
    std::transform(text.begin(), text.end(), bytes,
                   [&page = codePage()](wchar_t unit) { return page.bytes[unit]; });
}

std::wstring ansiText(std::string_view bytes) {
    std::wstring text(bytes.size(), L'\0');
    ansiText(bytes, text.data());
    return text;
}

void ansiText(std::string_view bytes, wchar_t* units) {
    std::transform(bytes.begin(), bytes.end(), units, [&page = codePage()](char byte) {
        return page.units[static_cast<unsigned char>(byte)];
    });
}

}  // namespace vela
