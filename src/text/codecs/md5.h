// MD5 digests (RFC 1321), from the platform's cryptography.
#pragma once

#include <string>
#include <string_view>

namespace vela {

// The digest of the text's bytes as 32 hexadecimal digits, letters in lower case: of its bytes in
// the system code page, where characters that it has not are its default character; or of its
// UTF-16 code units, low byte first.
std::wstring md5OfAnsi(std::wstring_view text);
std::wstring md5OfUtf16(std::wstring_view text);

}  // namespace vela
