// What is written of any object, what handlers make of it, and what is read back.
#include "serialization/Serializer.h"

#include <olectl.h>
#include <xml_types.h>

#include "automation/late_bound.h"
#include "automation/late_properties.h"
#include "preferences/DPItem.h"
#include "preferences/KVItem.h"
#include "preferences/PPItem.h"
#include "preferences/RPItem.h"
#include "preferences/UIItem.h"
#include "preferences/preferences_support.h"
#include "serialization/ISerializable.h"
#include "serialization/property_text.h"

namespace vela::test {
namespace {

constexpr HRESULT kNoMember = static_cast<HRESULT>(0x800A01B6);
constexpr HRESULT kNoObject = static_cast<HRESULT>(0x800A005B);
constexpr HRESULT kTypeMismatch = static_cast<HRESULT>(0x800A000D);

using Values = std::vector<std::pair<const wchar_t*, Variant>>;

HRESULT give(VARIANT* result, const Variant& value) {
    *result = Variant(value).release();
    return S_OK;
}
Variant typed(VARTYPE type, double number = 0) {
    Variant value;
    value.dblVal = number;
    value.vt = type == VT_DATE ? VT_DATE : VT_R8;
    return type == VT_DATE || type == VT_R8 ? value : converted(value, type);
}
Variant empty(VARTYPE type) {
    Variant value;
    value.vt = type;
    return value;
}
const Variant kFailing = empty(VT_ERROR);

// An object without type information. Reading or setting a VT_ERROR raises; what is set is logged.
ComPtr<LateObject> objectWith(const Values& values, std::wstring* log = nullptr) {
    auto object = adopted(new LateObject);
    for (const auto& member : values) object->names.push_back(member.first);
    object->invoked = [values, log](DISPID id, WORD flags, DISPPARAMS& call, VARIANT* result,
                                    EXCEPINFO* exception) {
        const auto& [name, value] = values.at(static_cast<std::size_t>(id));
        if (value.vt == VT_ERROR) {
            exception->scode = E_ACCESSDENIED;
            return DISP_E_EXCEPTION;
        }
        if (!(flags & DISPATCH_PROPERTYPUT)) return give(result, value);
        if (log) *log += name + (L"=" + textOf(call.rgvarg[0])) + L"|";
        return S_OK;
    };
    return object;
}

Variant objectIs(const Values& values) { return Variant(objectWith(values).Get()); }

class SerializationSerializer : public NoObjectsLeft {
  protected:
    void TearDown() override {
        serializer_.Reset();
        NoObjectsLeft::TearDown();
    }
    // The XML; the empty text, and outcome_, on failure. Takes over the list and gives it back.
    std::wstring serialize(IDispatch* object, Variant& list, std::wstring_view root = L"Item") {
        Bstr xml;
        outcome_ = serializer_->Serialize(&object, Bstr(root).get(), &list.bstrVal, xml.put());
        return xml.str();
    }
    std::wstring serialize(const ComPtr<LateObject>& object, std::wstring_view list,
                           std::wstring_view root = L"Item") {
        Variant given(list);
        return serialize(object.Get(), given, root);
    }
    void deserialize(IDispatch* object, std::wstring_view xml, Variant& list) {
        Variant source(xml);
        VARIANT_BOOL result = VARIANT_TRUE;
        EXPECT_EQ(serializer_->DeSerialize(&object, &source.bstrVal, &list.bstrVal, &result), S_OK);
        EXPECT_EQ(result, VARIANT_FALSE);
    }
    // Connects a handler that gets the event's arguments in declared order.
    void handle(std::function<HRESULT(const std::vector<VARIANT>&)> handler) {
        const auto sink = adopted(new LateObject);
        sink->invoked = [handler](DISPID id, WORD, DISPPARAMS& call, VARIANT*, EXCEPINFO*) {
            EXPECT_EQ(id, 1);
            return handler({std::reverse_iterator(call.rgvarg + call.cArgs),
                            std::reverse_iterator(call.rgvarg)});
        };
        ComPtr<IConnectionPointContainer> container;
        ComPtr<IConnectionPoint> point;
        DWORD cookie = 0;
        EXPECT_EQ(serializer_.As(&container), S_OK);
        EXPECT_EQ(container->FindConnectionPoint(__uuidof(__Serializer), &point), S_OK);
        EXPECT_EQ(point->Advise(sink.Get(), &cookie), S_OK);
    }
    ComPtr<Serializer> serializer_ = make<Serializer>();
    HRESULT outcome_ = S_OK;
};

// ---- writing -----------------------------------------------------------------------------------

TEST_F(SerializationSerializer, WritesWhatTheListSaysAsTheTypesSay) {
    const Variant nested =
        objectIs({{L"Value", str(L"v")}, {L"fromstring", {}}, {L"ToString", str(L"<n>")}});
    const Variant plain = objectIs({{L"Value", str(L"v")}, {L"ToString", str(L"n")}});
    const auto object = objectWith({{L"Code", Variant(12L)},
                                    {L"Active", typed(VT_BOOL, 1)},
                                    {L"Description", str(L"Paper")},
                                    {L"Created", typed(VT_DATE, 46341.75)},
                                    {L"Zero", typed(VT_DATE)},
                                    {L"Old", typed(VT_DATE, -18000)},
                                    {L"failing", kFailing},
                                    {L"Null", empty(VT_NULL)},
                                    {L"Empty", {}},
                                    {L"Nothing", Variant(static_cast<IDispatch*>(nullptr))},
                                    {L"Array", arrayOf({})},
                                    {L"nested", nested},
                                    {L"Plain", plain},
                                    {L"Mute", objectIs({{L"Value", kFailing}})}});
    const struct {
        const wchar_t *list, *inside;
    } table[] = {
        {L"", L"/>"},
        {L"@Code,@Active,/Description,/Created",
         L" code=\"12\" active=\"True\"><Description>Paper</Description>"
         L"<Created>15-11-2026</Created></Item>"},
        {L"/code,xactive", L"><Code>12</Code><Active>True</Active></Item>"},
        {L"/Code,Code", nullptr},  // asks for "ode"
        {L"/Code,", nullptr},
        {L"/Code ", nullptr},
        {L"/nosuch", nullptr},
        {L"@Zero,/ZERO,@Old", L" zero=\"\" old=\"18-09-1850\"><ZERO/></Item>"},
        {L"/failing,@Null,/Nothing,/Array,/Mute,@Code", L" code=\"12\"/>"},
        {L"@Empty,/empty", L" empty=\"\"><Empty/></Item>"},
        {L"/nested,@Plain", L" plain=\"v\"><Nested>&lt;n&gt;</Nested></Item>"},
        {L"@Code,/code,@Code,/code", L" code=\"12\"><Code>12</Code><Code>12</Code></Item>"},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(testing::Message() << row.list);
        const std::wstring xml = serialize(object, row.list);
        EXPECT_EQ(outcome_, row.inside ? S_OK : kNoMember);
        EXPECT_EQ(xml, row.inside ? L"<Item" + std::wstring(row.inside) : L"");
    }
}

TEST_F(SerializationSerializer, FindsDeclaredNamesAndTypesInForeignTypeInformation) {
    FONTDESC font{sizeof font, const_cast<wchar_t*>(L"Arial"), {}, 700, 0, TRUE, FALSE, FALSE};
    font.cySize.int64 = 120000;
    ComPtr<IDispatch> object;
    ASSERT_EQ(OleCreateFontIndirect(&font, IID_IDispatch,
                                    reinterpret_cast<void**>(object.GetAddressOf())),
              S_OK);
    Variant list(L"@BOLD,/wEIGHT,@italic");
    EXPECT_EQ(serialize(object.Get(), list),
              L"<Item bold=\"True\" italic=\"True\"><Weight>700</Weight></Item>");

    // Derived members, and a Boolean told by its declaration alone.
    const auto document = create(L"Msxml2.DOMDocument.3.0");
    handle([](const std::vector<VARIANT>& event) {
        SysReAllocString(event[3].pbstrVal, L"0");
        return S_OK;
    });
    list = Variant(L"@ASYNC,/NODETYPE,/Nodename");
    EXPECT_EQ(serialize(document.Get(), list),
              L"<Item async=\"False\"><NodeType>0</NodeType><NodeName>0</NodeName></Item>");
}

TEST_F(SerializationSerializer, RefusesWhatIsNoObjectOrNoName) {
    const auto object = objectWith({{L"a b", str(L"x")}, {L"Good", str(L"x")}});
    for (const wchar_t* root : {L"", L"a b", L"1", L"a><b", L"a:b"}) {
        EXPECT_EQ(serialize(object, L"@Good", root), L"");
        EXPECT_EQ(outcome_, E_INVALIDARG);
        ComPtr<IErrorInfo> info;
        EXPECT_EQ(GetErrorInfo(0, &info), S_OK);
    }
    for (const wchar_t* list : {L"@a b", L"/a b"}) {
        EXPECT_EQ(serialize(object, list), L"");
        EXPECT_EQ(outcome_, E_INVALIDARG);
    }
    EXPECT_EQ(serialize(nullptr, L""), L"<Item/>");
    EXPECT_EQ(serialize(nullptr, L"@Good"), L"");
    EXPECT_EQ(outcome_, kNoObject);
    Bstr xml;
    EXPECT_EQ(serializer_->Serialize(nullptr, Bstr(L"R").get(), nullptr, xml.put()), S_OK);
    EXPECT_EQ(xml.view(), L"<R/>");
}

TEST_F(SerializationSerializer, SurvivesObjectsThatLeadInCircles) {
    const auto object = objectWith({{L"Self", {}}});
    int asked = 0;
    object->invoked = [&](DISPID, WORD, DISPPARAMS&, VARIANT* result, EXCEPINFO*) {
        ++asked;
        return give(result, Variant(object.Get()));
    };
    EXPECT_EQ(serialize(object, L"@Self"), L"<Item/>");
    object->names = {L"Self", L"ToString", L"FromString"};
    EXPECT_EQ(serialize(object, L"@Self"), L"<Item/>");
    EXPECT_LT(asked, 100);
    object->invoked = nullptr;
}

// ---- the object's own list ---------------------------------------------------------------------

class Listing final : public ISerializable {
  public:
    HRESULT STDMETHODCALLTYPE get_SerializableProperties(BSTR* result) override {
        *result = SysAllocString(L"@Code");
        return outcome;
    }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        const bool own = id == IID_IUnknown || id == IID_IDispatch || id == IID_ISerializable;
        *result = own ? this : nullptr;
        return own ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* id) override {
        return *id = 7, S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
        *result = Variant(5L).release();
        return S_OK;
    }
    HRESULT outcome = S_OK;
};

TEST_F(SerializationSerializer, AsksTheObjectForItsListAndStoresIt) {
    Listing early;
    Listing broken;
    broken.outcome = E_FAIL;
    const auto late = objectWith({{L"serializableproperties", str(L"/a")}, {L"A", str(L"x")}});
    const auto failing = objectWith({{L"SerializableProperties", kFailing}});
    const struct {
        IDispatch* object;
        const wchar_t *given, *list, *xml;
    } table[] = {{&early, L"", L"@Code", L"<Item code=\"5\"/>"},
                 {&early, L"/X", L"/X", L"<Item><X>5</X></Item>"},
                 {&broken, L"", L"", L"<Item/>"},
                 {late.Get(), L"", L"/a", L"<Item><A>x</A></Item>"},
                 {failing.Get(), L"", L"", L"<Item/>"}};
    for (const auto& row : table) {
        Variant list(row.given);
        EXPECT_EQ(serialize(row.object, list), row.xml);
        EXPECT_EQ(textOf(list), row.list);
        Variant variable{std::wstring_view(row.given)};
        VARIANT object = arg(row.object);
        const Bstr root(L"Item");
        const Called called =
            call(serializer_.Get(), L"Serialize", {object, arg(root), byReference(variable)});
        EXPECT_EQ(textOf(called.result), row.xml);
        EXPECT_EQ(textOf(variable), row.list);
    }
    std::wstring log;
    const auto target =
        objectWith({{L"SerializableProperties", str(L"/a,@b")}, {L"a", {}}, {L"b", {}}}, &log);
    Variant list(L"");
    deserialize(target.Get(), L"<r b='2'><a>1</a></r>", list);
    EXPECT_EQ(log, L"a=1|b=2|");
    EXPECT_EQ(textOf(list), L"/a,@b");
}

// ---- the event ---------------------------------------------------------------------------------

TEST_F(SerializationSerializer, LetsHandlersChangeOnePropertyEach) {
    std::wstring heard;
    const auto object = objectWith({{L"a", str(L"1")},
                                    {L"flag", typed(VT_BOOL)},
                                    {L"when", typed(VT_DATE, 3)},
                                    {L"lost", kFailing},
                                    {L"z", str(L"9")}});
    struct Change {
        const wchar_t *name, *text;
        long kind;
        HRESULT outcome;
    };
    Change change{};
    handle([&](const std::vector<VARIANT>& event) {
        EXPECT_EQ(event.size(), 5u);
        EXPECT_EQ(event[0].vt, VT_BYREF | VT_DISPATCH);
        EXPECT_TRUE(sameObject(*event[0].ppdispVal, asObject(serializer_).Get()));
        EXPECT_TRUE(sameObject(*event[1].ppdispVal, object.Get()));
        heard += std::wstring(text(*event[2].pbstrVal)) + L"=" +
                 std::wstring(text(*event[3].pbstrVal)) + L"@" + std::to_wstring(*event[4].plVal) +
                 L"|";
        const bool last = text(*event[2].pbstrVal) == L"Z";
        if (last) return S_OK;
        rewrite(event[2].pbstrVal, change.name);
        rewrite(event[3].pbstrVal, change.text);
        *event[4].plVal = change.kind;
        (*event[1].ppdispVal)->Release();
        *event[1].ppdispVal = nullptr;
        return change.outcome;
    });
    const struct {
        const wchar_t* property;
        Change change;
        const wchar_t* xml;
        HRESULT outcome = S_OK;
    } table[] = {
        {L"@a", {L"B", L"x", 0, S_OK}, L" B=\"x\"><Z>9</Z></Item>"},
        {L"/a", {L"b", L"x", 0, S_OK}, L" b=\"x\"><Z>9</Z></Item>"},
        {L"@a", {L"b", L"", 1, S_OK}, L"><b/><Z>9</Z></Item>"},
        {L"@a", {L"b", L"x", -1, S_OK}, L"><Z>9</Z></Item>"},
        {L"@a", {L"<", L"x", 2, S_OK}, L"><Z>9</Z></Item>"},
        {L"@a", {L"b", L"x", 0, E_FAIL}, L" b=\"x\"><Z>9</Z></Item>"},
        {L"@flag", {L"b", L"-1", 0, S_OK}, L" b=\"True\"><Z>9</Z></Item>"},
        {L"@flag", {L"b", L"perhaps", 0, S_OK}, nullptr, kTypeMismatch},
        {L"@flag", {L"b", L"perhaps", -1, S_OK}, L"><Z>9</Z></Item>"},
        {L"@when", {L"b", L"2026-11-05 10:30", 0, S_OK}, L" b=\"05-11-2026\"><Z>9</Z></Item>"},
        {L"@when", {L"b", L"5 maybe", 0, S_OK}, L" b=\"\"><Z>9</Z></Item>"},
        {L"@when", {L"b", L"-5/11/2026", 0, S_OK}, L" b=\"\"><Z>9</Z></Item>"},
        {L"@a", {L"", L"x", 0, S_OK}, nullptr, E_INVALIDARG},
        {L"/a", {L"x y", L"x", 1, S_OK}, nullptr, E_INVALIDARG},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(testing::Message() << row.property << row.change.text);
        change = row.change;
        const std::wstring xml = serialize(object, std::wstring(row.property) + L",/lost,/z");
        EXPECT_EQ(xml, row.xml ? L"<Item" + std::wstring(row.xml) : L"");
        EXPECT_EQ(outcome_, row.outcome);
    }
    EXPECT_TRUE(heard.starts_with(L"a=1@0|Z=9@1|A=1@1|Z=9@1|"));
}

TEST_F(SerializationSerializer, SurvivesHandlersThatTakeEverythingAway) {
    handle([](const std::vector<VARIANT>& event) {
        for (const int i : {2, 3}) SysFreeString(std::exchange(*event[i].pbstrVal, nullptr));
        for (const int i : {0, 1}) std::exchange(*event[i].ppdispVal, nullptr)->Release();
        return S_OK;
    });
    EXPECT_EQ(serialize(objectWith({{L"Z", str(L"9")}}), L"@Z"), L"");
}

// ---- reading -----------------------------------------------------------------------------------

TEST_F(SerializationSerializer, ReadsByExactNamesAndIgnoresTheRest) {
    std::wstring deep;
    for (int i = 0; i < 100'000; ++i) deep += L"<a>";
    const struct {
        std::wstring xml;
        const wchar_t *list, *assigned;
    } table[] = {
        {L"<r code='1' Code='2'/>", L"@Code,@code,@CODE", L"Code=2|Code=1|"},
        {L"<r><x><a> 1\n</a></x><a>2</a></r>", L"/a,/A", L"a= 1\n|"},
        {L"<r><a>1</a><b/></r>", L"xa,,/,@,/b,/nosuch", L"a=1|b=|"},
        {L"<r a='1'><b>2</b></r>", L"/failing,@a,/b", L"a=1|b=2|"},
        {L"<a>1<b>2</b></a>", L"/a", L"a=12|"},
        // Names go into a path as they stand.
        {L"<r a='7'><b>2</b></r>", L"/r/@a,/b[", L"a=7|"},
        {L"<r><b>2</b></r>", L"/b'] | //b[',/b or 1,/.,/text(),/namespace::*,@a b,@*", L""},
        {L"", L"/a", L""},
        {L"<r><a>1</a>", L"/a", L""},
        {L"<!DOCTYPE r [<!ENTITY e 'x'>]><r><a>&e;</a></r>", L"/a", L""},
        {L"<!DOCTYPE r SYSTEM 'file:///z:/etc/passwd'><r><a>1</a></r>", L"/a", L""},
        {deep, L"/a", L""},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(testing::Message() << row.list);
        std::wstring log;
        const auto object =
            objectWith({{L"Code", {}}, {L"a", {}}, {L"b", {}}, {L"failing", kFailing}}, &log);
        Variant list(row.list);
        deserialize(object.Get(), row.xml, list);
        EXPECT_EQ(log, row.assigned);
    }
    ComPtr<IErrorInfo> info;
    EXPECT_EQ(GetErrorInfo(0, &info), S_FALSE);
    VARIANT_BOOL result = VARIANT_TRUE;
    EXPECT_EQ(serializer_->DeSerialize(nullptr, nullptr, nullptr, &result), S_OK);
    EXPECT_EQ(result, VARIANT_FALSE);
}

TEST_F(SerializationSerializer, ReadsTenMegabytes) {
    std::wstring xml = L"<r>";
    while (xml.size() < 5'000'000) xml += L"<row name='x'>some text</row>";
    std::wstring log;
    const auto object = objectWith({{L"last", {}}}, &log);
    Variant list(L"/last");
    deserialize(object.Get(), xml + L"<last>1</last></r>", list);
    EXPECT_EQ(log, L"last=1|");
}

// As numbers and texts go through XML, markup, line ends and blanks among them. Every second
// property is an attribute.
template <class Item>
std::pair<std::wstring, std::wstring> filledAndRestored(Serializer& serializer) {
    const auto item = asObject(make<Item>());
    std::wstring list;
    bool attribute = false;
    for (const std::wstring& name : settableProperties(item.Get())) {
        const auto put = [&](std::wstring_view value) {
            return quietly([&] { putProperty(item.Get(), name.c_str(), Variant(value)); });
        };
        EXPECT_TRUE(put(L" <a b=\"c'\">&amp;\t\r\n]]> \u00E9\u4E2D\xD83D\xDE00\n ") || put(L"-12"));
        attribute = !attribute;
        list += (list.empty() ? L"" : L",") + std::wstring(attribute ? L"@" : L"/") +
                outputName(name, attribute ? PropertyKind::Attribute : PropertyKind::Element);
    }
    const auto restored = asObject(make<Item>());
    const Bstr root(L"Item");
    Variant given(list);
    Variant xml(L"");
    VARIANT_BOOL result = VARIANT_TRUE;
    IDispatch* from = item.Get();
    IDispatch* to = restored.Get();
    Bstr written;
    EXPECT_EQ(serializer.Serialize(&from, root.get(), &given.bstrVal, written.put()), S_OK);
    xml = Variant(written.view());
    EXPECT_EQ(serializer.DeSerialize(&to, &xml.bstrVal, &given.bstrVal, &result), S_OK);
    std::pair<std::wstring, std::wstring> values;
    for (const std::wstring& name : settableProperties(item.Get())) {
        values.first += name + L"=" + shown(from, name.c_str()) + L"|";
        values.second += name + L"=" + shown(to, name.c_str()) + L"|";
    }
    return values;
}

TEST_F(SerializationSerializer, BringsEveryItemClassBack) {
    for (const auto& [filled, restored] : {filledAndRestored<UIItem>(*serializer_.Get()),
                                           filledAndRestored<DPItem>(*serializer_.Get()),
                                           filledAndRestored<KVItem>(*serializer_.Get()),
                                           filledAndRestored<PPItem>(*serializer_.Get()),
                                           filledAndRestored<RPItem>(*serializer_.Get())}) {
        EXPECT_EQ(filled, restored);
        EXPECT_NE(filled.find(L"]]>"), filled.npos);
    }
    const auto object = objectWith({{L"a", str(std::wstring_view(L"x\0\1y\xD800z\xFFFE", 7))}});
    EXPECT_EQ(serialize(object, L"@a,/a"), L"<Item a=\"xyz\"><A>xyz</A></Item>");
}

// ---- single elements ---------------------------------------------------------------------------

TEST_F(SerializationSerializer, MakesAndReadsElementsOfAnyVersionOfTheDom) {
    for (const wchar_t* version : {L"Msxml2.DOMDocument.3.0", L"Msxml2.DOMDocument.6.0"}) {
        const auto document = createAs<IXMLDOMDocument>(version);
        const auto create = [&](std::wstring_view name, std::vector<Variant> value) {
            const Bstr text(name);
            std::vector<VARIANT> arguments{arg(document.Get()), arg(text)};
            arguments.insert(arguments.end(), value.begin(), value.end());
            return call(serializer_.Get(), L"CreateSimpleElement", arguments);
        };
        const struct {
            Variant value;
            const wchar_t* xml;
        } table[] = {{str(L"a<b\1"), L"<N>a&lt;b</N>"},
                     {str(L""), L"<N/>"},
                     {Variant::missing(), L"<N/>"},
                     {{}, L"<N/>"},
                     {empty(VT_NULL), L"<N/>"},
                     {Variant(0L), L"<N>0</N>"},
                     {typed(VT_BOOL), L"<N>False</N>"},
                     {objectIs({{L"", str(L"v")}}), L"<N>v</N>"},
                     {arrayOf({}), nullptr}};
        for (const auto& row : table) {
            const Called made = create(L"N", {row.value});
            EXPECT_EQ(made.outcome, row.xml ? S_OK : DISP_E_EXCEPTION);
            if (row.xml) {
                EXPECT_EQ(shown(objectIn(made.result), L"xml"), row.xml);
            }
        }
        EXPECT_EQ(shown(objectIn(create(L"N", {}).result), L"xml"), L"<N/>");
        const Called refused = create(L"a b", {});
        EXPECT_EQ(refused.error, E_INVALIDARG);
        EXPECT_FALSE(refused.description.empty());

        VARIANT_BOOL loaded = VARIANT_FALSE;
        document->loadXML(Bstr(L"<r><a>1<c>2</c></a><a>3</a></r>").get(), &loaded);
        for (const auto& [path, read] :
             {std::pair(L"r/a", L"12"), {L"//c", L"2"}, {L"r/x", L""}, {L"r[", L""}, {L"", L""}}) {
            const Bstr name(path);
            const Called called =
                call(serializer_.Get(), L"ReadSimpleElement", {arg(document.Get()), arg(name)});
            EXPECT_EQ(called.outcome, S_OK);
            EXPECT_EQ(textOf(called.result), read);
        }
    }
    IXMLDOMDocument* none = nullptr;
    IXMLDOMNode* noNode = nullptr;
    ComPtr<IXMLDOMElement> made;
    Bstr read;
    EXPECT_EQ(serializer_->CreateSimpleElement(&none, nullptr, {}, &made), kNoObject);
    EXPECT_EQ(serializer_->CreateSimpleElement(nullptr, nullptr, {}, &made), kNoObject);
    EXPECT_EQ(serializer_->ReadSimpleElement(&noNode, nullptr, read.put()), S_OK);
    EXPECT_EQ(serializer_->ReadSimpleElement(nullptr, nullptr, read.put()), S_OK);
}

}  // namespace
}  // namespace vela::test
