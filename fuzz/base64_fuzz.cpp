// Any bytes as base64 text, and any bytes as base64 and back, whatever stands between the symbols.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "text/codecs/core/base64.h"

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

std::string withLineBreaks(const std::string& text, std::size_t length) {
    std::string lines;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i % length == 0) lines += "\r\n";
        lines += text[i];
    }
    return lines;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::string bytes = vela::fromBase64(input);
    require(bytes.size() <= size / 4 * 3 + 2);
    const std::string text = vela::toBase64(input);
    require(text.size() == (size + 2) / 3 * 4);
    require(vela::fromBase64(text) == input);
    require(vela::fromBase64(text.substr(0, text.find('='))) == input);
    require(vela::fromBase64(withLineBreaks(text, size == 0 ? 1 : data[0] % 80 + 1)) == input);
    require(vela::fromBase64(text + vela::toBase64(bytes)) == input + bytes);
    return 0;
}
