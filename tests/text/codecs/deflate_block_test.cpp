#include "text/codecs/core/deflate_block.h"

#include <gtest/gtest.h>

#include <random>

namespace vela {
namespace {

constexpr std::string_view kText =
    "Lisboa, Porto, Braga; Lisboa, Porto, Braga; Lisboa, Porto, Braga; "
    "Concei\xE7\xE3o n\xBA 5";

// What another program made of kText, with zlib's level 9.
constexpr std::string_view kBlock(
    "\x78\xda\xf3\xc9\x2c\x4e\xca\x4f\xd4\x51\x08\xc8\x2f\x2a\xc9\xd7\x51\x70\x2a\x4a\x4c"
    "\x4f\xb4\x56\xf0\x21\x41\xd4\x39\x3f\x2f\x39\x35\xf3\xf9\xe3\x7c\x85\xbc\x5d\x0a\xa6"
    "\x00\x43\xa8\x1b\xe2\x00\x00\x00\x00\x00\x38\x30\x00\x00\x00\x00\x00\x00\x00\x00\x00",
    63);
constexpr std::size_t kTrailer = 16;
const std::string kStream(kBlock.substr(0, kBlock.size() - kTrailer));

std::string random(std::size_t size) {
    std::mt19937 generator(7);
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(generator());
    return bytes;
}

std::string compressed(std::string_view bytes, int level, bool withTrailer = true) {
    std::string block;
    EXPECT_FALSE(compressBlock(bytes, block, level, withTrailer));
    return block;
}

// The error that a block gives, which leaves nothing behind.
DeflateError failure(std::string_view block, std::optional<std::uint64_t> size = std::nullopt) {
    std::string bytes = "before";
    DeflateError error = decompressBlock(block, bytes, size);
    EXPECT_TRUE(!error || bytes.empty());
    return error;
}

TEST(TextDeflateBlock, IsTheSameOnEveryPlatform) {
    EXPECT_EQ(compressed(kText, kBestLevel), kBlock);
    EXPECT_EQ(compressed(kText, kBestLevel, false), kStream);
    std::string_view source = kBlock;
    std::string bytes;
    EXPECT_FALSE(decompressBlock(source, bytes));
    EXPECT_EQ(bytes, kText);
    EXPECT_EQ(source, kStream);
}

TEST(TextDeflateBlock, KeepsEverySizeAtEveryLevel) {
    for (const std::size_t size : {0, 1, 15, 16, 17, 499, 500, 70'000, 1'000'000}) {
        for (const int level : {-1, 0, 1, 9}) {
            const std::string bytes = random(size), block = compressed(bytes, level);
            std::string_view source = block;
            std::string back;
            EXPECT_FALSE(decompressBlock(source, back)) << size << " " << level;
            EXPECT_TRUE(back == bytes) << size << " " << level;
        }
    }
}

TEST(TextDeflateBlock, ReadsTheTrailerUpToItsFirstZero) {
    const auto outcome = [](std::string_view digits) {
        std::string block = kStream + std::string(5, '\0');
        block.append(digits).resize(kBlock.size());
        return failure(block).number;
    };
    for (const std::string& digits : {std::string("80"), std::string("00000000080"),
                                      std::string("1000"), std::string("80\0rest", 7)}) {
        EXPECT_EQ(outcome(digits), 0) << digits;
    }
    for (const char* digits : {"", "80x", " 80", "80 ", "-1", "+80", "4294967376"}) {
        EXPECT_EQ(outcome(digits), 99) << digits;
    }
    std::string block(kBlock);
    block[kStream.size() + 4] = '0';  // the five zeros before the digits
    EXPECT_EQ(failure(block).number, 99);
}

TEST(TextDeflateBlock, ReportsWhatIsWrong) {
    std::string damaged = kStream;
    damaged[kStream.size() / 2] ^= 0x20;
    const std::tuple<std::string, std::uint64_t, int> table[] = {
        {kStream, 1'000'000'000'000, 0},
        {kStream, 79, -5},
        {std::string("\x78\xda\x03\0\0\0\0\x01", 8), 0, 0},  // no bytes, compressed
        {damaged, 80, -3},
        {kStream.substr(0, kStream.size() - 1), 81, -3},
        {"no stream", 80, -3},
    };
    for (const auto& [stream, size, number] : table) {
        const DeflateError error = failure(stream, size);
        EXPECT_EQ(error.number, number) << size;
        EXPECT_EQ(error.source, error ? L"ZCompressByteArray >> ZLIB.Uncompress()" : L"");
        EXPECT_EQ(error.description, zlibMessage(number));
    }
    const DeflateError error = failure("too short");
    EXPECT_EQ(error.source, L"ZDecompressByteArray");
    EXPECT_EQ(error.description, L"Compressed file appears to be invalid or corrupted");
}

TEST(TextDeflateBlock, TakesMemoryForWhatThereIs) {
    const std::string stream = compressed(random(1'000), kBestLevel, false);
    std::string_view source = stream;
    std::string bytes;
    EXPECT_FALSE(decompressBlock(source, bytes, 90'000'000'000));
    EXPECT_LE(bytes.capacity(), 8 * stream.size());
}

}  // namespace
}  // namespace vela
