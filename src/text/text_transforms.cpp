#include "text/text_transforms.h"

#include <algorithm>

#include "text/ansi_bytes.h"
#include "text/codecs/core/base64.h"
#include "text/codecs/core/deflate_block.h"
#include "text/codecs/core/key_stream.h"
#include "text/core/upper_case.h"

namespace vela {

namespace {

// The low byte of each unit of the upper-cased key.
std::string keyBytes(std::wstring_view key) {
    std::string bytes(key.size(), '\0');
    std::transform(key.begin(), key.end(), bytes.begin(),
                   [](wchar_t unit) { return static_cast<char>(upperCase(unit)); });
    return bytes;
}

}  // namespace

std::wstring compressedText(std::wstring_view text) {
    std::string block;
    if (compressBlock(ansiBytes(text), block)) return std::wstring(text);
    return ansiText(block);
}

std::wstring decompressedText(std::wstring_view block) {
    const std::string source = ansiBytes(block);
    std::string_view rest = source;
    std::string bytes;
    if (decompressBlock(rest, bytes)) return std::wstring(block);
    return ansiText(bytes);
}

std::wstring cipheredText(std::wstring_view text, std::wstring_view key) {
    return key.empty() ? std::wstring(text) : ansiText(ciphered(ansiBytes(text), keyBytes(key)));
}

std::wstring encryptedText(std::wstring_view text, std::wstring_view key) {
    return cipheredText(compressedText(text), key);
}

std::wstring decryptedText(std::wstring_view text, std::wstring_view key) {
    return decompressedText(cipheredText(text, key));
}

std::wstring base64Text(std::wstring_view text) { return ansiText(toBase64(ansiBytes(text))); }

std::wstring textOfBase64(std::wstring_view text) { return ansiText(fromBase64(ansiBytes(text))); }

}  // namespace vela
