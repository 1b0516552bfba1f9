#include "serialization/Serializer.h"

#include <optional>

#include "serialization/core/property_text.h"
#include "serialization/object_properties.h"
#include "text/dates/core/calendar.h"
#include "xml/xml_document.h"

namespace vela {

namespace {

constexpr DISPID kSerializing = 1;

// A property on its way out. Handlers of the event may change its name, its text and its kind.
struct Outgoing {
    Variant name;
    Variant text;
    SerializeAsTypes kind;
    ReadValue read;
};

// The date that a text stands for under the user's locale; 0 when it is none. Short forms of dates
// leave out centuries: as long as the text is that of a date, the date itself counts.
DATE dateOf(const Outgoing& property, const std::wstring& text) {
    const ReadValue& read = property.read;
    if (read.value.vt == VT_DATE && read.text == text) return read.value.date;
    DATE date = 0;
    auto* source = const_cast<wchar_t*>(text.c_str());
    return SUCCEEDED(VarDateFromStr(source, LOCALE_USER_DEFAULT, 0, &date)) ? date : 0;
}

std::wstring formattedDate(const Outgoing& property) {
    const std::wstring text = textOf(property.text);
    SYSTEMTIME time;
    if (!beginsAboveZero(text)) return {};
    // The zero date has to be looked for: some locales write midnight with a twelve.
    const DATE date = dateOf(property, text);
    if (date == 0 || !VariantTimeToSystemTime(date, &time)) return {};
    return dateText(std::chrono::year{time.wYear} / time.wMonth / time.wDay);
}

// As the property's type is written; throws Error 13 for a Boolean property's text that is none.
std::wstring formatted(const Outgoing& property) {
    if (property.read.type == VT_DATE) return formattedDate(property);
    if (property.read.type != VT_BOOL) return textOf(property.text);
    return textOf(converted(property.text, VT_BOOL));
}

// The element that is being written. It stays outside the document.
class Root {
  public:
    explicit Root(std::wstring_view name)
        : document_(XmlDocument::blank()), element_(document_.createElement(name)) {}

    void setAttribute(std::wstring_view name, std::wstring_view text) {
        vela::setAttribute(element_, Bstr(name), Variant(text));
    }
    void append(std::wstring_view name, std::wstring_view text) {
        document_.appendUnindented(element_, document_.createElement(name, text));
    }
    Bstr xml() const {
        Bstr text;
        check(element_->get_xml(text.put()));
        return text;
    }

  private:
    XmlDocument document_;
    XmlElement element_;
};

// The caller's list; where it is empty, the object's own, which is stored there.
std::wstring listFor(IDispatch* object, BSTR* propertiesList) {
    std::wstring list(propertiesList ? text(*propertiesList) : std::wstring_view());
    if (!list.empty()) return list;
    list = ownPropertyList(object);
    rewrite(propertiesList, list);
    return list;
}

XmlNode findNode(const XmlDocument& document, const ListedProperty& listed) {
    if (listed.kind == PropertyKind::Attribute) return attributeNode(document.root(), listed.name);
    return document.select(L"//" + std::wstring(listed.name));
}

void assign(IDispatch* object, const XmlNode& node) {
    Bstr name;
    Bstr value;
    check(node->get_nodeName(name.put()));
    check(node->get_text(value.put()));
    putProperty(object, name.str().c_str(), Variant(value.view()));
}

// Nothing for a property that cannot be read; throws Error 438 for a name that the object lacks.
std::optional<Outgoing> read(const ObjectProperties& properties, const ListedProperty& listed) {
    const DeclaredProperty property = properties.find(std::wstring(listed.name));
    ReadValue value;
    if (!quietly([&] { value = properties.read(property); })) return std::nullopt;
    return Outgoing{Variant(outputName(property.name, listed.kind)), Variant(value.text),
                    static_cast<SerializeAsTypes>(listed.kind), std::move(value)};
}

void write(Root& root, const Outgoing& property) {
    const std::wstring_view name = text(property.name.bstrVal);
    if (property.kind == SerializeAsAttribute) root.setAttribute(name, formatted(property));
    if (property.kind == SerializeAsTag) root.append(name, formatted(property));
}

}  // namespace

// Handlers may put anything into the references; those to objects are for this event only.
void Serializer::raiseSerializing(ComPtr<IDispatch> object, Variant& name, Variant& text,
                                  SerializeAsTypes& kind) {
    ComPtr<IDispatch> sender(this);
    fire(kSerializing, {byReference(sender), byReference(object), byReference(name.bstrVal),
                        byReference(text.bstrVal), byReference(kind)});
}

HRESULT Serializer::Serialize(IDispatch** thisInstance, BSTR rootTag, BSTR* propertiesList,
                              BSTR* result) {
    return answer(result, [&] {
        const ComPtr<IDispatch> object(thisInstance ? *thisInstance : nullptr);
        Root root(text(rootTag));
        const std::wstring list = listFor(object.Get(), propertiesList);
        if (list.empty()) return root.xml();
        const ObjectProperties properties(object);
        for (const ListedProperty& listed : listedProperties(list)) {
            auto property = read(properties, listed);
            if (!property) continue;
            raiseSerializing(object, property->name, property->text, property->kind);
            write(root, *property);
        }
        return root.xml();
    });
}

HRESULT Serializer::DeSerialize(IDispatch** thisInstance, BSTR* Xml, BSTR* propertiesList,
                                VARIANT_BOOL* result) {
    return answer(result, [&] {
        const ComPtr<IDispatch> object(thisInstance ? *thisInstance : nullptr);
        XmlDocument document = XmlDocument::make();
        document.keepBlanks();
        if (!object || !document.parse(Xml ? text(*Xml) : std::wstring_view())) return false;
        const std::wstring list = listFor(object.Get(), propertiesList);
        if (list.empty()) return false;
        for (const ListedProperty& listed : listedProperties(list)) {
            quietly([&] {
                if (const XmlNode node = findNode(document, listed)) assign(object.Get(), node);
            });
        }
        return false;
    });
}

HRESULT Serializer::ReadSimpleElement(IXMLDOMNode** Node, BSTR elementName, BSTR* result) {
    return answerQuietly(result, [&] {
        Bstr content;
        const XmlNode found = Node && *Node ? selectFrom(*Node, elementName) : nullptr;
        if (found) check(found->get_text(content.put()));
        return content;
    });
}

HRESULT Serializer::CreateSimpleElement(IXMLDOMDocument** xmlObject, BSTR elementName,
                                        VARIANT elementValue, IXMLDOMElement** result) {
    return answer(result, [&] {
        if (!xmlObject || !*xmlObject) raise(RuntimeError::ObjectNotSet);
        const VARTYPE type = dereferenced(elementValue).vt;
        const bool isSet = !isMissing(elementValue) && type != VT_NULL;
        return createElement(*xmlObject, text(elementName),
                             isSet ? textOf(elementValue) : std::wstring());
    });
}

HRESULT ClassOf<_Serializer>::create(REFIID id, void** result) {
    return createObject<Serializer>(id, result);
}

}  // namespace vela
