#include "system/core/identifier.h"

#include <atomic>

namespace vela {

std::int32_t nextIdentifier() {
    static std::atomic<std::uint32_t> drawn = 0;
    return static_cast<std::int32_t>(drawn++ % 0x7FFFFFFFu) + 1;
}

}  // namespace vela
