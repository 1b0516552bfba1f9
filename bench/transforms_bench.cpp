// What text transforms take beside the plain operation that they rest on, or beside OpenSSL's.
#include <openssl/evp.h>
#include <zlib.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "bench/measure.h"
#include "bench/tables.h"
#include "text/codecs/core/base64.h"
#include "text/codecs/core/deflate_block.h"
#include "text/codecs/core/key_stream.h"

namespace {

constexpr std::size_t kMegabyte = std::size_t{1} << 20;

std::string randomBytes(std::size_t size) {
    std::mt19937 random(20'240'611);
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    return bytes;
}

// Words out of a small vocabulary, as business text has them.
std::string words(std::size_t size) {
    std::mt19937 random(20'240'611);
    std::vector<std::string> vocabulary(2'000);
    for (std::string& word : vocabulary) {
        word.resize(2 + random() % 9);
        for (char& letter : word) letter = static_cast<char>('a' + random() % 26);
    }
    std::string text;
    while (text.size() < size) text += vocabulary[random() % vocabulary.size()] + " ";
    return text;
}

unsigned char* writable(std::string& bytes) {
    return reinterpret_cast<unsigned char*>(bytes.data());
}
const unsigned char* readable(const std::string& bytes) {
    return reinterpret_cast<const unsigned char*>(bytes.data());
}

template <class Ours, class Theirs>
bench::Row compared(const char* what, double limit, Ours&& ours, Theirs&& theirs) {
    const auto [first, second] = bench::alternately(ours, theirs, [] {});
    return {what, first, second, limit};
}

bench::Row cipher() {
    std::string text = randomBytes(16 * kMegabyte);
    std::string copy(text.size(), '\0');
    return compared(
        "cipher of 16 MB in place, key of 20 (to memcpy)", 2.0,
        [&] { text = vela::ciphered(std::move(text), "a key of twenty char"); },
        [&] {
            std::memcpy(copy.data(), text.data(), text.size());
            bench::keep(copy[text.size() / 2]);
        });
}

bench::Row encoding() {
    const std::string bytes = randomBytes(kMegabyte);
    std::string text(kMegabyte * 4 / 3 + 4, '\0');
    return compared(
        "base64 of 1 MB (to EVP_EncodeBlock)", 1.0,
        [&] { bench::keep(vela::toBase64(bytes).back()); },
        [&] {
            bench::keep(
                EVP_EncodeBlock(writable(text), readable(bytes), static_cast<int>(kMegabyte)));
        });
}

bench::Row decoding() {
    const std::string text = vela::toBase64(randomBytes(kMegabyte));
    std::string bytes(kMegabyte + 4, '\0');
    return compared(
        "1 MB from base64 (to EVP_DecodeBlock)", 1.0,
        [&] { bench::keep(vela::fromBase64(text).back()); },
        [&] {
            bench::keep(
                EVP_DecodeBlock(writable(bytes), readable(text), static_cast<int>(text.size())));
        });
}

// Short texts are compressed `times` times, which the clock can tell apart.
bench::Row compression(const char* what, const std::string& bytes, int times) {
    std::string stream(compressBound(static_cast<uLong>(bytes.size())), '\0');
    return compared(
        what, 1.10,
        [&] {
            for (int i = 0; i < times; ++i) {
                std::string block;
                vela::compressBlock(bytes, block);
                bench::keep(block.back());
            }
        },
        [&] {
            for (int i = 0; i < times; ++i) {
                auto length = static_cast<uLongf>(stream.size());
                compress2(writable(stream), &length, readable(bytes),
                          static_cast<uLong>(bytes.size()), vela::kBestLevel);
                bench::keep(length);
            }
        });
}

}  // namespace

bool bench::transforms() {
    return report(
        "text transforms",
        {cipher(), encoding(), decoding(),
         compression("1,000 blocks of 100 bytes of text (to compress2)", words(100), 1000),
         compression("block of 1 MB of text (to compress2)", words(kMegabyte), 1),
         compression("block of 1 MB at random (to compress2)", randomBytes(kMegabyte), 1)});
}
