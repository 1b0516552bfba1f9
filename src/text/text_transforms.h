// Text compressed, scrambled and in base64, and back. What comes out is a byte string: each
// character stands for one byte of the system's ANSI code page (see ansi_bytes.h).
//
// Failures give the text itself. Everything here throws std::bad_alloc, and nothing else.
#pragma once

#include <string>
#include <string_view>

namespace vela {

// The text as a compressed block (see deflate_block.h).
std::wstring compressedText(std::wstring_view text);
// What the compressed block holds.
std::wstring decompressedText(std::wstring_view block);

// The text combined with the stream of the key (see key_stream.h); doing it again undoes it.
// Without a key the text itself. The key's bytes are the low ones of its units in upper case; units
// above 255 are not meant for keys: others may read them differently.
std::wstring cipheredText(std::wstring_view text, std::wstring_view key);

// Compressed, then ciphered, and back.
std::wstring encryptedText(std::wstring_view text, std::wstring_view key);
std::wstring decryptedText(std::wstring_view text, std::wstring_view key);

// The bytes of the text in base64, and back (see base64.h).
std::wstring base64Text(std::wstring_view text);
std::wstring textOfBase64(std::wstring_view text);

}  // namespace vela
