// Base64 with the standard alphabet (A-Z, a-z, 0-9, "+", "/").
#pragma once

#include <string>
#include <string_view>

namespace vela {

// `bytes` as base64 on one line, padded with "=". Throws std::bad_alloc.
std::string toBase64(std::string_view bytes);

// What `text` encodes. Whatever it holds, it is read to its end:
//   - characters that are neither of the alphabet nor "=", line breaks among them, are passed over;
//   - "=" ends a group of four early, and what follows begins a new one: texts encoded one by one
//     may stand one after the other;
//   - a last group needs no padding;
//   - a symbol that is alone in its group is no whole byte, and is dropped; so are the bits of the
//     last symbol that reach beyond the bytes of its group.
// Throws std::bad_alloc.
std::string fromBase64(std::string_view text);

}  // namespace vela
