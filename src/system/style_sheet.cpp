#include "system/style_sheet.h"

#include <windows.h>

#include <objbase.h>

#include "files/special_folders.h"
#include "files/whole_file.h"
#include "xml/xml_document.h"

namespace vela {

namespace {

// The root of a style sheet, in its full and its short form.
constexpr wchar_t kStyleSheet[] =
    L"/*[namespace-uri()='http://www.w3.org/1999/XSL/Transform' and "
    L"(local-name()='stylesheet' or local-name()='transform')]"
    L"|/*/@*[namespace-uri()='http://www.w3.org/1999/XSL/Transform' and local-name()='version']";

// What would reach beyond the style sheet and its document.
constexpr wchar_t kReachingOut[] =
    L"//*[namespace-uri()='http://www.w3.org/1999/XSL/Transform' and "
    L"(local-name()='import' or local-name()='include' or local-name()='document')]"
    L"|//*[namespace-uri()='urn:schemas-microsoft-com:xslt' and local-name()='script']"
    L"|//@*[local-name()='extension-element-prefixes']"
    L"|//@*[contains(translate(., ' \t\r\n', ''), 'document(')]";

bool isDocument(std::wstring_view source) {
    const auto first = source.find_first_not_of(L"\uFEFF \t\r\n");
    return first != std::wstring_view::npos && source[first] == L'<';
}

bool read(XmlDocument& document, std::wstring_view source) {
    if (isDocument(source)) return document.parse(source.substr(source.find(L'<')));
    Bytes content;
    return readWholeFile(std::wstring(source), content) == ERROR_SUCCESS && document.parse(content);
}

}  // namespace

bool transformToFile(std::wstring_view xml, std::wstring_view styleSheet,
                     const std::wstring& target) {
    XmlDocument document = XmlDocument::make();
    XmlDocument style = XmlDocument::make();
    if (!read(document, xml) || !read(style, styleSheet) || !style.select(kStyleSheet) ||
        style.select(kReachingOut)) {
        return false;
    }
    // Not every version of the platform's reports a style sheet that it cannot run.
    const std::wstring body = document.transformed(style);
    if (body.empty()) return false;
    const std::wstring result = L'\uFEFF' + body;
    FileReplacement file(target);
    return file.commit(result.data(), result.size() * sizeof(wchar_t), FILE_ATTRIBUTE_NORMAL) ==
           ERROR_SUCCESS;
}

std::wstring temporaryHtmlName() {
    const std::wstring folder = temporaryFolder();
    wchar_t name[40];
    GUID unique;
    if (folder.empty() || FAILED(CoCreateGuid(&unique)) ||
        StringFromGUID2(unique, name, ARRAYSIZE(name)) == 0) {
        return {};
    }
    return folder + L'\\' + name + L".html";
}

}  // namespace vela
