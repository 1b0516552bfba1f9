#include "text/codecs/core/base64.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace vela {

namespace {

constexpr char kPadding = '=';
constexpr std::size_t kSymbols = 64;

constexpr std::array<char, kSymbols> makeAlphabet() {
    std::array<char, kSymbols> alphabet{};
    std::size_t count = 0;
    for (char c = 'A'; c <= 'Z'; ++c) alphabet[count++] = c;
    for (char c = 'a'; c <= 'z'; ++c) alphabet[count++] = c;
    for (char c = '0'; c <= '9'; ++c) alphabet[count++] = c;
    alphabet[count++] = '+';
    alphabet[count++] = '/';
    return alphabet;
}
constexpr std::array<char, kSymbols> kAlphabet = makeAlphabet();

// Two symbols for every 12 bits.
using Pair = std::array<char, 2>;
constexpr std::array<Pair, kSymbols * kSymbols> makePairs() {
    std::array<Pair, kSymbols * kSymbols> pairs{};
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        pairs[i] = {kAlphabet[i / kSymbols], kAlphabet[i % kSymbols]};
    }
    return pairs;
}
constexpr std::array<Pair, kSymbols* kSymbols> kPairs = makePairs();

// What a character contributes to the 24 bits of its group, by its place in the group; kForeign
// for characters outside the alphabet.
constexpr std::uint32_t kForeign = 0x01000000;
using Contributions = std::array<std::uint32_t, 256>;
constexpr std::array<Contributions, 4> makeContributions() {
    std::array<Contributions, 4> places{};
    for (std::size_t place = 0; place < places.size(); ++place) {
        places[place].fill(kForeign);
        for (std::uint32_t i = 0; i < kSymbols; ++i) {
            places[place][static_cast<unsigned char>(kAlphabet[i])] = i << (18 - 6 * place);
        }
    }
    return places;
}
constexpr std::array<Contributions, 4> kContributions = makeContributions();

std::uint32_t byteAt(const char* text) { return static_cast<unsigned char>(*text); }

// The four symbols of 24 bits.
void putSymbols(char* target, std::uint32_t bits) {
    std::memcpy(target, kPairs[bits >> 12].data(), 2);
    std::memcpy(target + 2, kPairs[bits & 0xFFF].data(), 2);
}

// The first `count` of the three bytes of 24 bits.
char* putBytes(char* target, std::uint32_t bits, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) *target++ = static_cast<char>(bits >> (16 - 8 * i));
    return target;
}

// Decodes as many groups as stand at `from` with nothing between; returns how far that went.
const char* decodeWholeGroups(const char* from, const char* end, char*& target) {
    for (; end - from >= 4; from += 4) {
        const std::uint32_t bits =
            kContributions[0][byteAt(from)] | kContributions[1][byteAt(from + 1)] |
            kContributions[2][byteAt(from + 2)] | kContributions[3][byteAt(from + 3)];
        if (bits & kForeign) break;
        target = putBytes(target, bits, 3);
    }
    return from;
}

// Decodes one group symbol by symbol; returns where it ends.
const char* decodeOneGroup(const char* from, const char* end, char*& target) {
    std::uint32_t bits = 0;
    std::size_t symbols = 0;
    while (from != end && symbols < 4) {
        const char c = *from++;
        if (c == kPadding) break;
        const std::uint32_t contribution = kContributions[symbols][byteAt(&c)];
        if (contribution & kForeign) continue;
        bits |= contribution;
        ++symbols;
    }
    target = putBytes(target, bits, symbols * 6 / 8);
    return from;
}

}  // namespace

std::string toBase64(std::string_view bytes) {
    const std::size_t groups = bytes.size() / 3 + (bytes.size() % 3 != 0 ? 1 : 0);
    std::string text(groups * 4, kPadding);
    const char* from = bytes.data();
    char* target = text.data();
    for (std::size_t left = bytes.size() / 3; left > 0; --left, from += 3, target += 4) {
        putSymbols(target, byteAt(from) << 16 | byteAt(from + 1) << 8 | byteAt(from + 2));
    }
    if (const std::size_t rest = bytes.size() % 3; rest != 0) {
        char last[4];
        putSymbols(last, byteAt(from) << 16 | (rest == 2 ? byteAt(from + 1) << 8 : 0));
        std::memcpy(target, last, rest + 1);
    }
    return text;
}

std::string fromBase64(std::string_view text) {
    // Never more than three bytes for four characters.
    std::string bytes(text.size() - text.size() / 4, '\0');
    const char* from = text.data();
    const char* const end = from + text.size();
    char* target = bytes.data();
    while (from != end) {
        from = decodeWholeGroups(from, end, target);
        from = decodeOneGroup(from, end, target);
    }
    bytes.resize(static_cast<std::size_t>(target - bytes.data()));
    return bytes;
}

}  // namespace vela
