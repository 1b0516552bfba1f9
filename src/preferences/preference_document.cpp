#include "preferences/preference_document.h"

#include <cwchar>

#include "automation/error.h"
#include "text/core/upper_case.h"

namespace vela {

namespace {

constexpr wchar_t kRoot[] = L"//UserPreferences";

template <class Content>
std::optional<XmlDocument> parsedFrom(Content content) {
    XmlDocument document = XmlDocument::make();
    if (!document.parse(content)) return std::nullopt;
    return document;
}

// The identity itself. A path has no way to write a quotation mark.
const std::wstring& nameable(const std::wstring& identity) {
    if (identity.find(L'"') == identity.npos) return identity;
    throw Error{E_INVALIDARG, kLibraryName,
                L"A document cannot hold an identity with a quotation mark: " + identity};
}

std::wstring withId(const std::wstring& path, const std::wstring& id) {
    return path + L"[@id=\"" + nameable(id) + L"\"]";
}

}  // namespace

XmlDocument emptyDocument() {
    XmlDocument document = XmlDocument::make();
    const XmlElement root =
        document.addRoot(L"UserPreferences", L"xml", L" version='1.0' encoding='windows-1252'");
    setAttribute(root, Bstr(L"version"), Variant(L"1"));
    return document;
}

std::optional<XmlDocument> parsed(std::span<const std::byte> content) {
    return parsedFrom(content);
}

std::optional<XmlDocument> parsed(std::wstring_view xml) { return parsedFrom(xml); }

XmlNode rootOf(const XmlDocument& document) {
    const XmlNode root = document.select(kRoot);
    if (!root) throw Error{E_FAIL, kLibraryName, L"The document holds no preferences"};
    return root;
}

short versionOf(const XmlDocument& document) {
    std::wstring version;
    const XmlNode root = rootOf(document);
    quietly([&] { version = firstAttribute(root); });
    const long number = std::wcstol(version.c_str(), nullptr, 10);
    return number < -32768 || number > 32767 ? short{0} : static_cast<short>(number);
}

UserPath::UserPath(std::wstring_view applicationId, std::wstring_view userId)
    : applicationId_(upperCase(applicationId)), userId_(upperCase(userId)) {}

std::wstring UserPath::application() const {
    return withId(std::wstring(kRoot) + L"/App", applicationId_);
}

std::wstring UserPath::user() const { return withId(application() + L"/App_User", userId_); }

std::wstring UserPath::section(const std::wstring& id) const {
    return withId(user() + L"/" + id + L"_Section", id);
}

}  // namespace vela
