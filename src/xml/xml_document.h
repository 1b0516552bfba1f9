// The platform's XML document model, with what this library needs of it.
//
// Documents are parsed without a DTD, without external entities and without validation: a document
// that declares a DTD counts as unreadable.
#pragma once

#include <windows.h>

#include <xml_types.h>

#include <span>
#include <string>
#include <string_view>

#include "automation/convert.h"

namespace vela {

using XmlNode = ComPtr<IXMLDOMNode>;
using XmlElement = ComPtr<IXMLDOMElement>;

class XmlDocument {
  public:
    // An empty document; throws Error when the platform has no XML parser.
    static XmlDocument make();
    // As make(), for writing only: parse() must not be called, and select() may not know XPath.
    static XmlDocument blank();

    explicit operator bool() const { return document_ != nullptr; }

    // Whether the text could be parsed; the document is empty when not. Throws Error when the
    // parser itself fails.
    bool parse(std::span<const std::byte> content);
    bool parse(std::wstring_view content);

    // Keeps the blanks around texts, and texts of blanks alone, in what is parsed afterwards.
    void keepBlanks() const;

    std::wstring xml() const;
    // Null when the document is empty.
    XmlElement root() const;

    // What an XSLT style sheet makes of this document. Throws Error when it is none, or fails.
    std::wstring transformed(const XmlDocument& styleSheet) const;

    // The first node that an XPath expression selects; null when there is none. Throws Error when
    // the expression is invalid.
    XmlNode select(const std::wstring& path) const;
    // As the function below.
    XmlElement createElement(std::wstring_view name, std::wstring_view content = {}) const;
    // Appends a child; where all children of an element are elements, appended in this way, xml()
    // and the like write no line ends between them, whatever the version of the parser.
    void appendUnindented(const XmlElement& parent, const XmlElement& child) const;
    // Appends a root element with a processing instruction before it.
    XmlElement addRoot(const std::wstring& name, const std::wstring& target,
                       const std::wstring& data) const;

  private:
    bool isReadable(VARIANT_BOOL loaded) const;

    ComPtr<IXMLDOMDocument2> document_;
};

// A new element outside the document's tree. Characters that XML cannot hold are left out of its
// content. Throws Error when XML does not allow the name.
XmlElement createElement(IXMLDOMDocument* document, std::wstring_view name,
                         std::wstring_view content = {});
// The first node that an XPath expression selects from a node of any version of the parser; null
// when there is none. Throws Error when the expression is invalid.
XmlNode selectFrom(IXMLDOMNode* node, BSTR path);
// Sets an attribute to a text. Throws Error when XML does not allow the name. Characters that XML
// cannot hold are left out.
void setAttribute(const XmlElement& element, const Bstr& name, Variant value);
std::wstring attribute(const XmlElement& element, const std::wstring& name);
// The attribute of exactly that name; null when there is none.
XmlNode attributeNode(const XmlElement& element, std::wstring_view name);
// The text of a node and all that it holds.
Bstr xmlOf(const XmlNode& node);
// The value of the first attribute; throws Error when the node has none.
std::wstring firstAttribute(const XmlNode& node);
// Calls `visit(name, value)` for every attribute, in order.
template <class Visit>
void eachAttribute(const XmlNode& node, Visit visit);
// Calls `visit(child)` for every child that is an element, in order.
template <class Visit>
void eachChild(const XmlNode& node, Visit visit);

namespace detail {

ComPtr<IXMLDOMNamedNodeMap> attributesOf(const XmlNode& node);
struct NameAndValue {
    Bstr name;
    Bstr value;
};
// The attribute at a position; false past the last.
bool attributeAt(IXMLDOMNamedNodeMap* attributes, long index, NameAndValue& found);
XmlNode firstChild(const XmlNode& node);
XmlNode nextSibling(const XmlNode& node);
bool isElement(const XmlNode& node);

}  // namespace detail

template <class Visit>
void eachAttribute(const XmlNode& node, Visit visit) {
    const auto attributes = detail::attributesOf(node);
    detail::NameAndValue found;
    for (long i = 0; attributes && detail::attributeAt(attributes.Get(), i, found); ++i) {
        visit(found.name, found.value);
    }
}

template <class Visit>
void eachChild(const XmlNode& node, Visit visit) {
    for (XmlNode child = detail::firstChild(node); child; child = detail::nextSibling(child)) {
        if (detail::isElement(child)) visit(child);
    }
}

}  // namespace vela
