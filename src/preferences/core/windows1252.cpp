#include "preferences/core/windows1252.h"

#include <algorithm>
#include <cstdint>

namespace vela {

namespace {

// The characters of bytes 0x80 to 0x9F; 0 where there is none.
constexpr std::uint16_t kUpper[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

// The byte of a character that is not ASCII, or 0.
unsigned char byteOf(std::uint32_t c) {
    if (c >= 0xA0 && c <= 0xFF) return static_cast<unsigned char>(c);
    for (unsigned i = 0; i < 32; ++i) {
        if (kUpper[i] == c) return static_cast<unsigned char>(0x80 + i);
    }
    return 0;
}

// The character at `at`, which moves behind it; surrogate pairs are one character.
std::uint32_t nextCharacter(std::wstring_view text, std::size_t& at) {
    const auto unit = static_cast<std::uint32_t>(text[at++]);
    if (unit < 0xD800 || unit >= 0xDC00 || at == text.size()) return unit;
    const auto low = static_cast<std::uint32_t>(text[at]);
    if (low < 0xDC00 || low >= 0xE000) return unit;
    ++at;
    return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
}

}  // namespace

std::string toWindows1252(std::wstring_view text, bool& complete) {
    complete = true;
    std::string bytes;
    bytes.reserve(text.size() + text.size() / 16);
    for (std::size_t at = 0; at < text.size();) {
        // Almost everything is plain: take runs of it whole.
        std::size_t end = at;
        while (end < text.size() && static_cast<std::uint32_t>(text[end]) < 0x80) ++end;
        const std::size_t done = bytes.size();
        bytes.resize(done + (end - at));
        std::transform(text.begin() + at, text.begin() + end, bytes.begin() + done,
                       [](wchar_t unit) { return static_cast<char>(unit); });
        at = end;
        if (at == text.size()) break;
        const std::uint32_t c = nextCharacter(text, at);
        if (const unsigned char byte = byteOf(c)) {
            bytes += static_cast<char>(byte);
        } else {
            bytes += "&#" + std::to_string(c) + ";";
            complete = false;
        }
    }
    return bytes;
}

}  // namespace vela
