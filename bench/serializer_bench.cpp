// Serializing against a program that has the values in hand and makes the same calls of the DOM,
// each time on a document of its own.
#include <xml_types.h>

#include <vector>

#include "bench/client.h"
#include "bench/tables.h"

namespace bench {

namespace {

constexpr int kProperties = 20;

void setText(VARIANT& value, const std::wstring& text) {
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocString(text.c_str());
}

// An object of 20 properties, Field0 to Field19, reached by name alone: texts, and with them
// numbers, Booleans and a date.
class Record final : public IDispatch {
  public:
    Record() {
        for (int i = 0; i < kProperties; ++i) {
            VARIANT& value = values_[i];
            if (i == 19) {
                value.vt = VT_DATE;
                value.date = 46341;
            } else if (i % 5 == 3) {
                value.vt = VT_I4;
                value.lVal = 1000 * i;
            } else if (i % 5 == 4) {
                value.vt = VT_BOOL;
                value.boolVal = VARIANT_TRUE;
            } else {
                setText(value, L"the text of field " + std::to_wstring(i));
            }
        }
    }
    ~Record() {
        for (VARIANT& value : values_) VariantClear(&value);
    }
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        const bool known = id == IID_IUnknown || id == IID_IDispatch;
        *result = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                            DISPID* id) override {
        *id = DISPID_UNKNOWN;
        if (std::wstring_view(names[0]).starts_with(L"Field")) *id = _wtoi(names[0] + 5);
        return *id >= 0 && *id < kProperties ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
        return VariantCopy(result, &values_[id]);
    }

  private:
    VARIANT values_[kProperties] = {};
};

// A field as it stands in the XML.
struct Field {
    std::wstring name;
    std::wstring text;
    bool attribute;
};

std::wstring listOf(const std::vector<Field>& fields) {
    std::wstring list;
    for (const Field& field : fields) {
        list += (list.empty() ? L"" : L",") + std::wstring(field.attribute ? L"@" : L"/");
        list += static_cast<wchar_t>(std::toupper(field.name[0])) + field.name.substr(1);
    }
    return list;
}

// The record's fields, every second one an attribute.
std::vector<Field> recordFields() {
    std::vector<Field> fields;
    for (int i = 0; i < kProperties; ++i) {
        const bool attribute = i % 2 == 0;
        std::wstring text = L"the text of field " + std::to_wstring(i);
        if (i % 5 == 3) text = std::to_wstring(1000 * i);
        if (i % 5 == 4) text = L"True";
        if (i == 19) text = L"15-11-2026";
        fields.push_back({(attribute ? L"field" : L"Field") + std::to_wstring(i), text, attribute});
    }
    return fields;
}

// Twenty fields of a window's item; some are there as attribute and as element.
std::vector<Field> itemFields(_UIItem* item) {
    item->put_ScreenWxH(Text(L"1024x768"));
    item->put_Tag(Text(L"some text"));
    item->put_Id(Text(L"INVOICE"));
    item->put_Group(Text(L"SALES"));
    item->put_Width(5000);
    const std::vector<Field> attributes = {{L"screenWxH", L"1024x768", true},
                                           {L"width", L"5000", true},
                                           {L"height", L"0", true},
                                           {L"left", L"0", true},
                                           {L"top", L"0", true},
                                           {L"windowState", L"0", true},
                                           {L"tag", L"some text", true},
                                           {L"group", L"SALES", true},
                                           {L"id", L"INVOICE", true}};
    std::vector<Field> fields = attributes;
    for (const Field& field : attributes) {
        fields.push_back({static_cast<wchar_t>(std::toupper(field.name[0])) + field.name.substr(1),
                          field.text, false});
    }
    fields.push_back(fields[9]);
    fields.push_back(fields[15]);
    return fields;
}

std::wstring ours(_Serializer* serializer, IDispatch* object, BSTR list) {
    BSTR xml = nullptr;
    require(serializer->Serialize(&object, Text(L"Record"), &list, &xml), "serializing");
    const std::wstring text(xml);
    SysFreeString(xml);
    return text;
}

std::wstring theirs(const CLSID& parser, const std::vector<Field>& fields) {
    ComPtr<IXMLDOMDocument> document;
    ComPtr<IXMLDOMElement> root;
    require(CoCreateInstance(parser, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&document)),
            "creating a document");
    require(document->createElement(Text(L"Record"), &root), "creating an element");
    for (const Field& field : fields) {
        const Text name(field.name);
        const Text text(field.text);
        if (field.attribute) {
            VARIANT value{};
            value.vt = VT_BSTR;
            value.bstrVal = text;
            require(root->setAttribute(name, value), "setting an attribute");
        } else {
            ComPtr<IXMLDOMElement> element;
            require(document->createElement(name, &element), "creating an element");
            require(element->put_text(text), "setting a text");
            require(root->appendChild(element.Get(), nullptr), "appending");
        }
    }
    BSTR xml = nullptr;
    require(root->get_xml(&xml), "writing");
    const std::wstring text(xml);
    SysFreeString(xml);
    return text;
}

// Parsers differ in the blanks between elements.
std::wstring withoutBlanksBetween(const std::wstring& xml) {
    std::wstring result;
    for (const wchar_t c : xml) {
        if (c != L'\r' && c != L'\n' && c != L'\t') result += c;
    }
    return result;
}

Row serialize(const char* what, IDispatch* object, const std::vector<Field>& fields) {
    constexpr int kTimes = 500;
    const auto serializer = create<_Serializer>(L"VelaUtil10.Serializer");
    const Text list(listOf(fields));
    CLSID parser;
    require(CLSIDFromProgID(L"Msxml2.DOMDocument.6.0", &parser), "finding the XML parser");
    if (ours(serializer.Get(), object, list) != withoutBlanksBetween(theirs(parser, fields))) {
        require(E_FAIL, "writing the same as a plain program");
    }
    const auto [our, their] = alternately(
        [&] {
            for (int i = 0; i < kTimes; ++i) keep(ours(serializer.Get(), object, list).size());
        },
        [&] {
            for (int i = 0; i < kTimes; ++i) keep(theirs(parser, fields).size());
        },
        [] {});
    return {what, our / kTimes, their / kTimes, 1.5};
}

}  // namespace

bool serializer() {
    Record record;
    const auto item = create<_UIItem>(L"VelaUtil10.UIItem");
    return report("Serialize (ours) to the same DOM calls with the values in hand",
                  {serialize("20 properties of a late-bound object", &record, recordFields()),
                   serialize("20 entries for a UIItem", item.Get(), itemFields(item.Get()))});
}

}  // namespace bench
