#include "text/codecs/core/key_stream.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

// The cipher as it was first written down: one state per place of the key, one step per byte.
std::string stepByStep(std::string bytes, std::string_view key) {
    std::vector<unsigned char> state(key.begin(), key.end());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        unsigned char& place = state[i % state.size()];
        bytes[i] = static_cast<char>(static_cast<unsigned char>(bytes[i]) ^ place);
        place = static_cast<unsigned char>((place + 17) % 256);
    }
    return bytes;
}

TEST(TextKeyStream, BeginsWithTheKeyAndAddsSeventeenEachPass) {
    const std::string zeros(8, '\0');
    EXPECT_EQ(ciphered(zeros, "AB"), "\x41\x42\x52\x53\x63\x64\x74\x75");
    EXPECT_EQ(ciphered(std::string(2, '\0'), "\xFF"), "\xFF\x10");
    EXPECT_EQ(ciphered("text", ""), "");
    EXPECT_EQ(ciphered("", "key"), "");
}

// Around the places where the stream repeats, and over keys of any length.
TEST(TextKeyStream, IsTheSameAsStepByStep) {
    for (const std::size_t length : {1, 2, 255, 256, 257}) {
        std::string key;
        for (std::size_t i = 0; i < length; ++i) key += static_cast<char>('0' + i * 7 % 11);
        for (const std::size_t size : {length - 1, length + 1, 256 * length, 520 * length + 3}) {
            std::string bytes(size, '\0');
            for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * i);
            EXPECT_TRUE(ciphered(bytes, key) == stepByStep(bytes, key)) << length << " " << size;
        }
    }
}

}  // namespace
}  // namespace vela
