// Hexadecimal text: bytes come back as they were written, and no text fails but too long a number.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "automation/core/runtime_error.h"
#include "text/numbers/core/number_bases.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::vector<std::uint8_t> bytes(data, data + size);
    if (vela::bytesFromHex(vela::hexText(bytes)) != bytes) std::abort();

    const std::wstring text(data, data + size);
    const std::vector<std::uint8_t> read = vela::bytesFromHex(text);
    if (read.size() != (text.size() + 1) / 2) std::abort();
    try {
        const std::int32_t value = vela::longFromHex(text);
        if (text.size() <= 4 && value != static_cast<std::int16_t>(value)) std::abort();
    } catch (const vela::RuntimeFailure& failure) {
        if (failure.error != vela::RuntimeError::Overflow || text.size() <= 8) std::abort();
    }
    return 0;
}
