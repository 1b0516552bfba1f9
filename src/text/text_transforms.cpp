#include "text/text_transforms.h"

#include "text/ansi_bytes.h"
#include "text/codecs/core/base64.h"
#include "text/codecs/core/deflate_block.h"
#include "text/codecs/core/key_stream.h"

namespace vela {

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
    return key.empty() ? std::wstring(text) : ansiText(ciphered(ansiBytes(text), key));
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
