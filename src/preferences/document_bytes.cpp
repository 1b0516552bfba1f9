#include "preferences/document_bytes.h"

#include <windows.h>

#include <span>

#include "preferences/core/windows1252.h"
#include "preferences/preference_document.h"

namespace vela {

namespace {

// The text without the XML declaration, which parsers do not write alike.
std::wstring bodyOf(const XmlDocument& document) {
    std::wstring text = document.xml();
    if (text.starts_with(L"<?xml ")) text.erase(0, text.find(L"?>") + 2);
    return text.erase(0, text.find_first_not_of(L" \r\n"));
}

std::string declaration(const std::string& encoding) {
    return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?>\r\n";
}

std::string utf8(const std::wstring& text) {
    const int size = static_cast<int>(text.size());
    std::string bytes(3 * text.size(), '\0');
    bytes.resize(WideCharToMultiByte(CP_UTF8, 0, text.data(), size, bytes.data(),
                                     static_cast<int>(bytes.size()), nullptr, nullptr));
    return bytes;
}

// The text that the content is read as; empty when it cannot be read.
std::wstring bodyIn(const std::string& content) {
    const auto document = parsed(std::as_bytes(std::span(content)));
    return document ? bodyOf(*document) : std::wstring();
}

}  // namespace

std::string bytesOf(const XmlDocument& document) {
    const std::wstring text = bodyOf(document);
    bool complete = true;
    std::string content = declaration("windows-1252") + toWindows1252(text, complete);
    if (complete) return content;
    // References are right in values, and wrong in names, comments and the like. Reading may drop
    // blanks, which tells nothing of them.
    std::string inUtf8 = declaration("utf-8") + utf8(text);
    const std::wstring body = bodyIn(content);
    return body == text || body == bodyIn(inUtf8) ? content : inUtf8;
}

}  // namespace vela
