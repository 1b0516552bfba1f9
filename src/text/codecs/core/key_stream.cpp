#include "text/codecs/core/key_stream.h"

#include <algorithm>
#include <cstddef>

namespace vela {

namespace {

// The step is odd: after as many passes over the key as a byte has values, the stream repeats.
constexpr unsigned kStep = 17;
constexpr std::size_t kPasses = 256;

// Whole passes over the key: the stream up to where it repeats, or enough of it for `needed` bytes.
std::string keyStream(std::string_view key, std::size_t needed) {
    std::string stream(key);
    stream.resize(key.size() * std::min(kPasses, needed / key.size() + 1));
    for (std::size_t i = key.size(); i < stream.size(); ++i) {
        const auto last = static_cast<unsigned char>(stream[i - key.size()]);
        stream[i] = static_cast<char>(last + kStep);
    }
    return stream;
}

}  // namespace

std::string ciphered(std::string bytes, std::string_view key) {
    if (key.empty()) return {};
    const std::string stream = keyStream(key, bytes.size());
    for (std::size_t from = 0; from < bytes.size(); from += stream.size()) {
        const std::size_t count = std::min(stream.size(), bytes.size() - from);
        char* target = bytes.data() + from;
        const char* source = stream.data();
        for (std::size_t i = 0; i < count; ++i) {
            target[i] = static_cast<char>(target[i] ^ source[i]);
        }
    }
    return bytes;
}

}  // namespace vela
