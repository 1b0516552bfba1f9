// Numbers in bases: what was read is written again, and failures are the two that are told.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "automation/core/runtime_error.h"
#include "text/numbers/core/number_bases.h"

// The first byte is the base, the others are characters.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const int base = data[0] % 40;
    const std::wstring text(data + 1, data + size);
    try {
        const std::int32_t value = vela::fromBase(text, base);
        if (value < 0 || vela::fromBase(vela::toBase(value, base), base) != value) std::abort();
    } catch (const vela::RuntimeFailure& failure) {
        const bool told = failure.error == vela::RuntimeError::InvalidProcedureCall ||
                          (failure.error == vela::RuntimeError::Overflow && text.size() > 5);
        if (!told) std::abort();
    }
    return 0;
}
