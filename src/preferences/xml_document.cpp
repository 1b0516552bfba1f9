#include "preferences/xml_document.h"

#include <cstring>

#include "automation/error.h"
#include "preferences/windows1252.h"

namespace vela {

namespace {

// Characters of XML 1.0; surrogates only in pairs.
bool isXmlCharacter(std::wstring_view text, std::size_t at) {
    const wchar_t c = text[at];
    if (c < 0x20) return c == L'\t' || c == L'\n' || c == L'\r';
    const auto isHigh = [](wchar_t u) { return u >= 0xD800 && u < 0xDC00; };
    const auto isLow = [](wchar_t u) { return u >= 0xDC00 && u < 0xE000; };
    if (isHigh(c)) return at + 1 < text.size() && isLow(text[at + 1]);
    if (isLow(c)) return at > 0 && isHigh(text[at - 1]);
    return c != 0xFFFE && c != 0xFFFF;
}

bool isXmlText(std::wstring_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isXmlCharacter(text, i)) return false;
    }
    return true;
}

std::wstring xmlText(std::wstring_view text) {
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isXmlCharacter(text, i)) result += text[i];
    }
    return result;
}

constexpr CLSID kDomDocument60 = {
    0x88d96a05, 0xf192, 0x11d4, {0xa6, 0x5f, 0x00, 0x40, 0x96, 0x32, 0x51, 0xe5}};
constexpr CLSID kDomDocument30 = {
    0xf5078f32, 0xc551, 0x11d3, {0x89, 0xb9, 0x00, 0x00, 0xf8, 0x1f, 0xe2, 0x21}};

ComPtr<IXMLDOMDocument2> createParser() {
    ComPtr<IXMLDOMDocument2> parser;
    HRESULT outcome =
        CoCreateInstance(kDomDocument60, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&parser));
    if (FAILED(outcome)) {
        outcome =
            CoCreateInstance(kDomDocument30, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&parser));
    }
    check(outcome);
    return parser;
}

void setProperty(IXMLDOMDocument2* parser, const wchar_t* name, Variant value) {
    // Older versions lack some: their behaviour then is the one asked for.
    parser->setProperty(Bstr(name).get(), value);
}

Variant yes() {
    Variant value;
    value.vt = VT_BOOL;
    value.boolVal = VARIANT_TRUE;
    return value;
}

}  // namespace

XmlDocument XmlDocument::make() {
    XmlDocument result;
    result.document_ = createParser();
    IXMLDOMDocument2* parser = result.document_.Get();
    check(parser->put_async(VARIANT_FALSE));
    check(parser->put_validateOnParse(VARIANT_FALSE));
    check(parser->put_resolveExternals(VARIANT_FALSE));
    setProperty(parser, L"SelectionLanguage", Variant(std::wstring_view(L"XPath")));
    setProperty(parser, L"ProhibitDTD", yes());
    return result;
}

bool XmlDocument::isReadable(VARIANT_BOOL loaded) const {
    ComPtr<IXMLDOMDocumentType> type;
    return isTrue(loaded) && document_->get_doctype(&type) != S_OK;
}

bool XmlDocument::parse(std::span<const std::byte> content) {
    // A declared DTD is refused before its entities can unfold.
    Variant source;
    source.parray = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(content.size()));
    if (!source.parray) throw std::bad_alloc();
    source.vt = VT_ARRAY | VT_UI1;
    if (!content.empty()) std::memcpy(source.parray->pvData, content.data(), content.size());
    VARIANT_BOOL loaded = VARIANT_FALSE;
    const HRESULT outcome = document_->load(source, &loaded);
    if (outcome == E_OUTOFMEMORY) throw std::bad_alloc();
    return isReadable(SUCCEEDED(outcome) ? loaded : VARIANT_FALSE);
}

bool XmlDocument::parse(std::wstring_view content) {
    VARIANT_BOOL loaded = VARIANT_FALSE;
    const HRESULT outcome = document_->loadXML(Bstr(content).get(), &loaded);
    if (outcome == E_OUTOFMEMORY) throw std::bad_alloc();
    return isReadable(SUCCEEDED(outcome) ? loaded : VARIANT_FALSE);
}

std::string XmlDocument::bytes() const {
    const std::wstring text = body();
    bool complete = true;
    std::string content =
        "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\r\n" + toWindows1252(text, complete);
    // References are right in values, and wrong in names, comments and the like.
    if (!complete) {
        XmlDocument written = make();
        if (!written.parse(std::as_bytes(std::span(content))) || written.body() != text) {
            check(E_FAIL);
        }
    }
    return content;
}

std::wstring XmlDocument::body() const {
    std::wstring text = xml();
    if (text.starts_with(L"<?xml ")) text.erase(0, text.find(L"?>") + 2);
    return text.erase(0, text.find_first_not_of(L" \r\n"));
}

std::wstring XmlDocument::xml() const {
    Bstr text;
    check(document_->get_xml(text.put()));
    return text.str();
}

XmlNode XmlDocument::select(const std::wstring& path) const {
    XmlNode node;
    check(document_->selectSingleNode(Bstr(path).get(), &node));
    return node;
}

XmlElement XmlDocument::createElement(const std::wstring& name) const {
    XmlElement element;
    check(document_->createElement(Bstr(name).get(), &element));
    return element;
}

XmlElement XmlDocument::addRoot(const std::wstring& name, const std::wstring& target,
                                const std::wstring& data) const {
    const XmlElement root = createElement(name);
    ComPtr<IXMLDOMProcessingInstruction> instruction;
    check(document_->appendChild(root.Get(), nullptr));
    check(
        document_->createProcessingInstruction(Bstr(target).get(), Bstr(data).get(), &instruction));
    Variant before(static_cast<IDispatch*>(root.Get()));
    check(document_->insertBefore(instruction.Get(), before, nullptr));
    return root;
}

void setAttribute(const XmlElement& element, const Bstr& name, Variant value) {
    if (!isXmlText(text(value.bstrVal))) value = Variant(xmlText(text(value.bstrVal)));
    check(element->setAttribute(name.get(), value));
}

std::wstring attribute(const XmlElement& element, const std::wstring& name) {
    Variant value;
    if (check(element->getAttribute(Bstr(name).get(), &value)) != S_OK) return {};
    return textOf(value);
}

std::wstring firstAttribute(const XmlNode& node) {
    const auto attributes = detail::attributesOf(node);
    detail::NameAndValue found;
    if (!attributes || !detail::attributeAt(attributes.Get(), 0, found)) check(E_FAIL);
    return found.value.str();
}

namespace detail {

ComPtr<IXMLDOMNamedNodeMap> attributesOf(const XmlNode& node) {
    ComPtr<IXMLDOMNamedNodeMap> attributes;
    check(node->get_attributes(&attributes));
    return attributes;
}

bool attributeAt(IXMLDOMNamedNodeMap* attributes, long index, NameAndValue& found) {
    XmlNode node;
    if (attributes->get_item(index, &node) != S_OK || !node) return false;
    check(node->get_nodeName(found.name.put()));
    // The node's text would come without the blanks around it.
    Variant value;
    check(node->get_nodeValue(&value));
    found.value = value.vt == VT_BSTR ? Bstr::owning(value.release().bstrVal) : Bstr(textOf(value));
    return true;
}

XmlNode firstChild(const XmlNode& node) {
    XmlNode child;
    check(node->get_firstChild(&child));
    return child;
}

XmlNode nextSibling(const XmlNode& node) {
    XmlNode sibling;
    check(node->get_nextSibling(&sibling));
    return sibling;
}

bool isElement(const XmlNode& node) {
    DOMNodeType type = NODE_INVALID;
    check(node->get_nodeType(&type));
    return type == NODE_ELEMENT;
}

}  // namespace detail

}  // namespace vela
