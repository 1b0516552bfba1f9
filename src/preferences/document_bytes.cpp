#include "preferences/document_bytes.h"

#include <span>

#include "automation/error.h"
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

}  // namespace

std::string bytesOf(const XmlDocument& document) {
    const std::wstring text = bodyOf(document);
    bool complete = true;
    std::string content =
        "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\r\n" + toWindows1252(text, complete);
    // References are right in values, and wrong in names, comments and the like.
    if (!complete) {
        const auto written = parsed(std::as_bytes(std::span(content)));
        if (!written || bodyOf(*written) != text) {
            throw Error{E_FAIL, kLibraryName,
                        L"A name or comment holds characters that windows-1252 lacks"};
        }
    }
    return content;
}

}  // namespace vela
