#include "text/codecs/core/deflate_block.h"

#include <zlib.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <new>

namespace vela {

namespace {

constexpr wchar_t kCompressing[] = L"ZCompressByteArray >> ZLIB.Compress()";
// The compression routine's name here too: that is how the error is known.
constexpr wchar_t kDecompressing[] = L"ZCompressByteArray >> ZLIB.Uncompress()";

constexpr std::string_view kTrailerStart{"\0\0\0\0\0", 5};
constexpr std::size_t kDigits = 11;
constexpr std::size_t kTrailer = kTrailerStart.size() + kDigits;

// What zlib can count, and the trailer too.
constexpr std::uint64_t kMostBytes =
    std::min<std::uint64_t>((std::numeric_limits<uLong>::max)(), 99'999'999'999);
// The densest code of deflate is two bits for 258 bytes.
constexpr std::uint64_t kMostExpansion = 258 * 8 / 2;
constexpr std::uint64_t kGrowth = 8;

const Bytef* bytesOf(std::string_view text) { return reinterpret_cast<const Bytef*>(text.data()); }
Bytef* bytesOf(std::string& text) { return reinterpret_cast<Bytef*>(text.data()); }

DeflateError zlibError(int code, const wchar_t* source) {
    return {code, source, std::wstring(zlibMessage(code))};
}

// False when there is not so much memory.
bool resized(std::string& bytes, std::uint64_t size) {
    if (size > kMostBytes || size > bytes.max_size()) return false;
    try {
        bytes.clear();
        bytes.resize(static_cast<std::size_t>(size));
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

std::string trailerFor(std::size_t size) {
    std::string trailer = std::string(kTrailerStart) + std::to_string(size);
    trailer.resize(kTrailer);
    return trailer;
}

// The length that the trailer of `block` tells; none where there is no trailer.
std::optional<std::uint64_t> claimedSize(std::string_view block) {
    if (block.size() < kTrailer) return std::nullopt;
    const std::uint64_t most = (block.size() - kTrailer) * kMostExpansion;
    block.remove_prefix(block.size() - kTrailer);
    if (!block.starts_with(kTrailerStart)) return std::nullopt;
    block.remove_prefix(kTrailerStart.size());
    const std::string_view digits = block.substr(0, block.find('\0'));
    std::uint64_t size = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, outcome] = std::from_chars(digits.data(), end, size);
    if (outcome != std::errc() || stop != end || size > most) return std::nullopt;
    return size;
}

// Uncompresses into as much room as has proved necessary, at most `size` bytes.
int uncompressAtMost(std::uint64_t size, std::string_view stream, std::string& bytes) {
    if (stream.size() > kMostBytes) return Z_MEM_ERROR;
    std::uint64_t room = stream.size();
    int code = Z_BUF_ERROR;
    do {
        // One byte at least, so that it shows when a stream is not as empty as is claimed.
        room = std::min(room * kGrowth, std::max<std::uint64_t>(size, 1));
        if (!resized(bytes, room)) return Z_MEM_ERROR;
        auto length = static_cast<uLongf>(room);
        code =
            uncompress(bytesOf(bytes), &length, bytesOf(stream), static_cast<uLong>(stream.size()));
        if (code == Z_OK) bytes.resize(length);
    } while (code == Z_BUF_ERROR && room < size);
    return code == Z_OK && bytes.size() > size ? Z_BUF_ERROR : code;
}

}  // namespace

std::wstring_view zlibMessage(int code) {
    switch (code) {
        case -6:
            return L"The zlib library version is incompatible with the version assumed by the "
                   L"caller";
        case -5: return L"Not enough room in the output buffer";
        case -4: return L"Not enough memory";
        case -3: return L"Input data was corrupted";
        case -2: return L"A function parameter is invalid *OR* The stream state was inconsistent";
        case -1: return L"A file system error has occured";
        case 0: return L"";
        case 1: return L"Data stream reached the end of the stream";
        case 2: return L"A preset dictionary is needed";
        case 99: return L"A processing error occured";
        default: return L"An unknown error occured";
    }
}

int effectiveLevel(int level) { return level >= -1 && level <= 1 ? level : kBestLevel; }

std::uint64_t compressionRoom(std::uint64_t size) {
    constexpr std::uint64_t kHalf = 500;
    const std::uint64_t whole = size + size / 1000 + 15;
    const std::uint64_t rest = size % 1000;
    const bool up = rest > kHalf || (rest == kHalf && whole % 2 != 0);
    return up ? whole + 1 : whole;
}

DeflateError compressBlock(std::string_view source, std::string& block, int level,
                           bool withTrailer) {
    block.clear();
    if (source.empty()) return {};
    const std::uint64_t room = compressionRoom(source.size());
    if (!resized(block, room + kTrailer)) return zlibError(Z_MEM_ERROR, kCompressing);
    auto length = static_cast<uLongf>(room);
    const int code = compress2(bytesOf(block), &length, bytesOf(source),
                               static_cast<uLong>(source.size()), effectiveLevel(level));
    block.resize(code == Z_OK ? length : 0);
    if (code != Z_OK) return zlibError(code, kCompressing);
    if (withTrailer) block += trailerFor(source.size());
    return {};
}

DeflateError decompressBlock(std::string_view& source, std::string& bytes,
                             std::optional<std::uint64_t> size) {
    bytes.clear();
    if (source.empty()) return {};
    if (!size) {
        size = claimedSize(source);
        if (!size) {
            return {kProcessingError, L"ZDecompressByteArray",
                    L"Compressed file appears to be invalid or corrupted"};
        }
        source.remove_suffix(kTrailer);
    }
    const int code = uncompressAtMost(*size, source, bytes);
    if (code == Z_OK) return {};
    bytes.clear();
    return zlibError(code, kDecompressing);
}

}  // namespace vela
