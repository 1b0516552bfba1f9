// Compressed blocks: a zlib stream with the uncompressed length behind it.
//
// The trailer is 16 bytes: five zero bytes, then the length in ASCII decimal digits, filled up to
// 11 bytes with zero bytes. Blocks read the same on every platform.
//
// Nothing here throws but std::bad_alloc, for an error's own texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vela {

// Why a routine failed. Texts and numbers are those that programs of the family know.
struct DeflateError {
    int number = 0;  // a code of zlib, kProcessingError, or 0: no error
    std::wstring source;
    std::wstring description;

    explicit operator bool() const { return number != 0; }
};

inline constexpr int kProcessingError = 99;
inline constexpr int kBestLevel = 9;

// What a result code of zlib means; empty for 0.
std::wstring_view zlibMessage(int code);

// The level that is used for `level`: -1 (zlib's default), 0, 1 and 9 as they are, else 9.
int effectiveLevel(int level);

// The room that is given to the compression of `size` bytes: `size` + `size` / 1000 + 15, rounded,
// halves to even.
std::uint64_t compressionRoom(std::uint64_t size);

// Replaces `block` by the compressed `source`, with or without a trailer. Nothing gives nothing,
// without a trailer too. After an error `block` is empty. Lack of memory is zlib's error -4.
DeflateError compressBlock(std::string_view source, std::string& block, int level = kBestLevel,
                           bool withTrailer = true);

// Replaces `bytes` by what `source` holds. Nothing gives nothing; after an error `bytes` is empty.
//
// `size` is the most that is accepted, -5 when the stream holds more; a stream that holds less
// gives what it holds. Without `size` the trailer tells it and is cut off from `source`. Error 99
// when there is no trailer: its digits must be digits alone, one to 11 of them, up to the end or a
// zero byte, and claim no more than a stream of that length can hold. Memory is taken for what the
// stream holds, up to eight times as much, and not for what is claimed.
DeflateError decompressBlock(std::string_view& source, std::string& bytes,
                             std::optional<std::uint64_t> size = std::nullopt);

}  // namespace vela
