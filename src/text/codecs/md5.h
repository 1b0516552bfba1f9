// MD5 digests (RFC 1321), from the platform's cryptography.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace vela {

// Of fewer than 4 GB. Throws Error where the platform has no MD5 to give.
std::array<std::uint8_t, 16> md5(std::span<const std::byte> bytes);

}  // namespace vela
