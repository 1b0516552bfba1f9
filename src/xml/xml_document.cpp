#include "xml/xml_document.h"

#include <cstring>

#include "automation/error.h"
#include "runtime/apartment.h"
#include "xml/core/xml_text.h"

namespace vela {

namespace {

constexpr CLSID kDomDocument60 = {
    0x88d96a05, 0xf192, 0x11d4, {0xa6, 0x5f, 0x00, 0x40, 0x96, 0x32, 0x51, 0xe5}};
constexpr CLSID kDomDocument30 = {
    0xf5078f32, 0xc551, 0x11d3, {0x89, 0xb9, 0x00, 0x00, 0xf8, 0x1f, 0xe2, 0x21}};

// Finding the parser takes longer than most documents do: its factory is kept until the apartment
// ends.
class ParserFactory : public ApartmentCache {
  public:
    ParserFactory() {
        if (FAILED(find(kDomDocument60))) check(find(kDomDocument30));
        check(factory_->LockServer(TRUE));
    }
    ~ParserFactory() { factory_->LockServer(FALSE); }
    ParserFactory(const ParserFactory&) = delete;
    ParserFactory& operator=(const ParserFactory&) = delete;

    IClassFactory* operator->() const { return factory_.Get(); }

  private:
    HRESULT find(const CLSID& id) {
        return CoGetClassObject(id, CLSCTX_INPROC_SERVER, nullptr, IID_PPV_ARGS(&factory_));
    }

    ComPtr<IClassFactory> factory_;
};

ComPtr<IXMLDOMDocument2> createParser() {
    ComPtr<IXMLDOMDocument2> parser;
    check(apartmentLocal<ParserFactory>()->CreateInstance(nullptr, IID_PPV_ARGS(&parser)));
    return parser;
}

constexpr wchar_t kSelectionLanguage[] = L"SelectionLanguage";

void setProperty(IXMLDOMDocument2* parser, const wchar_t* name, Variant value) {
    // Older versions lack some: their behaviour then is the one asked for.
    parser->setProperty(Bstr(name).get(), value);
}

// Not every version of the parser looks at the names that it is given.
std::wstring_view requireXmlName(std::wstring_view name) {
    if (isXmlName(name)) return name;
    throw Error{E_INVALIDARG, kLibraryName, L"Not a name that XML allows: " + std::wstring(name)};
}

Bstr xmlString(std::wstring_view text) {
    return isXmlText(text) ? Bstr(text) : Bstr(xmlText(text));
}

Variant yes() {
    Variant value;
    value.vt = VT_BOOL;
    value.boolVal = VARIANT_TRUE;
    return value;
}

// Older versions read expressions as patterns until told otherwise. The document is left as it was.
class XPathLanguage {
  public:
    explicit XPathLanguage(IXMLDOMNode* node) {
        ComPtr<IXMLDOMDocument> owner;
        if (node->get_ownerDocument(&owner) != S_OK) node->QueryInterface(IID_PPV_ARGS(&owner));
        if (!owner || FAILED(owner.As(&document_))) return;
        if (FAILED(document_->getProperty(name_.get(), &before_))) document_.Reset();
        else setProperty(document_.Get(), name_.get(), Variant(L"XPath"));
    }
    ~XPathLanguage() {
        if (document_) document_->setProperty(name_.get(), before_);
    }
    XPathLanguage(const XPathLanguage&) = delete;
    XPathLanguage& operator=(const XPathLanguage&) = delete;

  private:
    const Bstr name_{kSelectionLanguage};
    ComPtr<IXMLDOMDocument2> document_;
    Variant before_;
};

}  // namespace

XmlDocument XmlDocument::blank() {
    XmlDocument result;
    result.document_ = createParser();
    return result;
}

XmlDocument XmlDocument::make() {
    XmlDocument result = blank();
    IXMLDOMDocument2* parser = result.document_.Get();
    check(parser->put_async(VARIANT_FALSE));
    check(parser->put_validateOnParse(VARIANT_FALSE));
    check(parser->put_resolveExternals(VARIANT_FALSE));
    setProperty(parser, kSelectionLanguage, Variant(L"XPath"));
    setProperty(parser, L"ProhibitDTD", yes());
    return result;
}

void XmlDocument::keepBlanks() const { check(document_->put_preserveWhiteSpace(VARIANT_TRUE)); }

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

std::wstring XmlDocument::xml() const {
    Bstr text;
    check(document_->get_xml(text.put()));
    return text.str();
}

std::wstring XmlDocument::transformed(const XmlDocument& styleSheet) const {
    Bstr result;
    check(document_->transformNode(styleSheet.document_.Get(), result.put()));
    return result.str();
}

XmlNode XmlDocument::select(const std::wstring& path) const {
    XmlNode node;
    check(document_->selectSingleNode(Bstr(path).get(), &node));
    return node;
}

XmlElement XmlDocument::root() const {
    XmlElement element;
    check(document_->get_documentElement(&element));
    return element;
}

XmlElement XmlDocument::createElement(std::wstring_view name, std::wstring_view content) const {
    return vela::createElement(document_.Get(), name, content);
}

void XmlDocument::appendUnindented(const XmlElement& parent, const XmlElement& child) const {
    VARIANT_BOOL hasChildren = VARIANT_FALSE;
    check(parent->hasChildNodes(&hasChildren));
    if (!isTrue(hasChildren)) {
        // Elements beside a text, be it an empty one, are not indented by any version.
        ComPtr<IXMLDOMText> nothing;
        check(document_->createTextNode(Bstr(L"").get(), &nothing));
        check(parent->appendChild(nothing.Get(), nullptr));
    }
    check(parent->appendChild(child.Get(), nullptr));
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

XmlElement createElement(IXMLDOMDocument* document, std::wstring_view name,
                         std::wstring_view content) {
    XmlElement element;
    check(document->createElement(Bstr(requireXmlName(name)).get(), &element));
    if (!content.empty()) check(element->put_text(xmlString(content).get()));
    return element;
}

XmlNode selectFrom(IXMLDOMNode* node, BSTR path) {
    const XPathLanguage language(node);
    XmlNode found;
    check(node->selectSingleNode(path, &found));
    return found;
}

void setAttribute(const XmlElement& element, const Bstr& name, Variant value) {
    requireXmlName(name.view());
    if (!isXmlText(text(value.bstrVal))) value = Variant(xmlText(text(value.bstrVal)));
    check(element->setAttribute(name.get(), value));
}

std::wstring attribute(const XmlElement& element, const std::wstring& name) {
    Variant value;
    if (check(element->getAttribute(Bstr(name).get(), &value)) != S_OK) return {};
    return textOf(value);
}

XmlNode attributeNode(const XmlElement& element, std::wstring_view name) {
    ComPtr<IXMLDOMAttribute> found;
    if (element->getAttributeNode(Bstr(name).get(), &found) != S_OK) return nullptr;
    return found;
}

Bstr xmlOf(const XmlNode& node) {
    Bstr text;
    check(node->get_xml(text.put()));
    return text;
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
    if (check(attributes->get_item(index, &node)) != S_OK || !node) return false;
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
