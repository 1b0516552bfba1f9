// Any bytes as a compressed block, and any bytes compressed and back at any level.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "text/codecs/core/deflate_block.h"

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

void keeps(std::string_view bytes, int level) {
    std::string block;
    std::string back;
    require(!vela::compressBlock(bytes, block, level));
    std::string_view source = block;
    require(!vela::decompressBlock(source, back));
    require(back == bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    std::string_view source = input;
    std::string bytes;
    if (vela::decompressBlock(source, bytes)) {
        require(bytes.empty());
    } else {
        require(size == 0 || source.size() + 16 == size);
        require(bytes.size() <= source.size() * 1032);
        keeps(bytes, -1);
    }
    if (size > 0) keeps(input.substr(1), static_cast<std::int8_t>(data[0]));
    return 0;
}
