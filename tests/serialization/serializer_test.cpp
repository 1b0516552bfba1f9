// What is written of any object, what handlers make of it, and what is read back.
#include "serialization/Serializer.h"

#include <xml_types.h>

#include "automation/late_objects.h"
#include "automation/late_properties.h"
#include "preferences/preferences_support.h"
#include "serialization/core/property_text.h"
#include "serialization/serializable.h"

namespace vela::test {
namespace {

constexpr HRESULT kNoMember = static_cast<HRESULT>(0x800A01B6);
constexpr HRESULT kNoObject = static_cast<HRESULT>(0x800A005B);
constexpr HRESULT kTypeMismatch = static_cast<HRESULT>(0x800A000D);

using Values = std::vector<std::pair<const wchar_t*, Variant>>;

Variant date(double days) { return converted(arg(days), VT_DATE); }
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
        if (!(flags & DISPATCH_PROPERTYPUT)) return *result = Variant(value).release(), S_OK;
        if (log) *log += name + (L"=" + textOf(call.rgvarg[0])) + L"|";
        return S_OK;
    };
    return object;
}

Variant objectIs(const Values& values) { return Variant(objectWith(values).Get()); }

class SerializationSerializer : public NoObjectsLeft {
  protected:
    // The XML; the empty text, and outcome_, on failure.
    std::wstring serialize(const ComPtr<IDispatch>& object, std::wstring_view list,
                           std::wstring_view root = L"Item") {
        Variant given(list);
        Bstr xml;
        outcome_ = serializer_->Serialize(ComPtr(object).GetAddressOf(), Bstr(root).get(),
                                          &given.bstrVal, xml.put());
        return xml.str();
    }
    // Gives the list back as it is afterwards.
    std::wstring deserialize(IDispatch* object, std::wstring_view xml, std::wstring_view list) {
        Variant source(xml);
        Variant given(list);
        EXPECT_FALSE(yes(serializer_.Get(), &_Serializer::DeSerialize, &object, &source.bstrVal,
                         &given.bstrVal));
        return textOf(given);
    }
    // Connects a handler that gets the event's arguments in declared order.
    void handle(std::function<HRESULT(const std::vector<VARIANT>&)> handler) {
        const auto heard = [handler](DISPID id, WORD, DISPPARAMS& call, auto&&...) {
            EXPECT_EQ(id, 1);
            return handler({std::reverse_iterator(call.rgvarg + call.cArgs),
                            std::reverse_iterator(call.rgvarg)});
        };
        listen(asObject(serializer_).Get(), __uuidof(__Serializer), heard);
    }
    ComPtr<Serializer> serializer_ = make<Serializer>();
    HRESULT outcome_ = S_OK;
};

TEST_F(SerializationSerializer, WritesWhatTheListSaysAsTheTypesSay) {
    const auto object = objectWith(
        {{L"Code", Variant(12L)},
         {L"Active", Variant(arg(true))},
         {L"Created", date(46341.75)},
         {L"Zero", date(0)},
         {L"Old", date(-18000)},
         {L"failing", kFailing},
         {L"Null", empty(VT_NULL)},
         {L"Empty", {}},
         {L"Nothing", Variant(static_cast<IDispatch*>(nullptr))},
         {L"Array", arrayOf({})},
         {L"nested",
          objectIs({{L"Value", str(L"v")}, {L"fromstring", {}}, {L"ToString", str(L"<n>")}})},
         {L"Plain", objectIs({{L"Value", str(L"v")}, {L"ToString", str(L"n")}})},
         {L"marks", str(std::wstring_view(L"x\0\1y\xD800z\xFFFE", 7))},
         {L"a b", str(L"x")}});
    const struct {
        const wchar_t *list, *inside;
        HRESULT outcome = S_OK;
    } table[] = {
        {L"", L"/>"},
        {L"@Code,@Active,/Created,/code,xactive",
         L" code=\"12\" active=\"True\"><Created>15-11-2026</Created><Code>12</Code>"
         L"<Active>True</Active></Item>"},
        {L"/Code,Code", nullptr, kNoMember},  // asks for "ode"
        {L"/Code,", nullptr, kNoMember},
        {L"/Code ", nullptr, kNoMember},
        {L"@Zero,/ZERO,@Old", L" zero=\"\" old=\"18-09-1850\"><ZERO/></Item>"},
        {L"/failing,@Null,/Nothing,/Array,@Code", L" code=\"12\"/>"},
        {L"@Empty,/empty", L" empty=\"\"><Empty/></Item>"},
        {L"/nested,@Plain", L" plain=\"v\"><Nested>&lt;n&gt;</Nested></Item>"},
        {L"@Code,/code,@Code,/code", L" code=\"12\"><Code>12</Code><Code>12</Code></Item>"},
        {L"@marks,/marks", L" marks=\"xyz\"><Marks>xyz</Marks></Item>"},
        {L"@a b", nullptr, E_INVALIDARG},
        {L"/a b", nullptr, E_INVALIDARG},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(testing::Message() << row.list);
        const std::wstring xml = serialize(object, row.list);
        EXPECT_EQ(outcome_, row.outcome);
        EXPECT_EQ(xml, row.inside ? L"<Item" + std::wstring(row.inside) : L"");
    }
}

TEST_F(SerializationSerializer, FindsDeclaredNamesAndTypesInForeignTypeInformation) {
    const auto font = create(L"StdFont");  // declares variables, not functions
    putProperty(font.Get(), L"Bold", Variant(arg(true)));
    EXPECT_EQ(serialize(font, L"@BOLD,/wEIGHT"),
              L"<Item bold=\"True\"><Weight>700</Weight></Item>");

    // Derived members, and a Boolean told by its declaration alone.
    handle([](const std::vector<VARIANT>& event) {
        SysReAllocString(event[3].pbstrVal, L"0");
        return S_OK;
    });
    EXPECT_EQ(serialize(create(L"Msxml2.DOMDocument.3.0"), L"@ASYNC,/NODETYPE"),
              L"<Item async=\"False\"><NodeType>0</NodeType></Item>");
}

TEST_F(SerializationSerializer, RefusesWhatIsNoObjectOrNoName) {
    for (const wchar_t* root : {L"", L"a b", L"a><b", L"a:b"}) {
        EXPECT_EQ(serialize(objectWith({}), L"", root), L"");
        EXPECT_EQ(outcome_, E_INVALIDARG);
    }
    EXPECT_EQ(serialize(nullptr, L""), L"<Item/>");
    EXPECT_EQ(serialize(nullptr, L"@Good"), L"");
    EXPECT_EQ(outcome_, kNoObject);
}

TEST_F(SerializationSerializer, SurvivesObjectsThatLeadInCircles) {
    const auto object = adopted(new LateObject);
    object->invoked = [&](DISPID, WORD, DISPPARAMS&, VARIANT* result, EXCEPINFO*) {
        return *result = Variant(object.Get()).release(), S_OK;
    };
    object->names = {L"Self", L"ToString", L"FromString"};
    EXPECT_EQ(serialize(object, L"@Self"), L"<Item/>");
    object->invoked = nullptr;
}

class Listing final : public LateObjectOf<ISerializable> {
  public:
    Listing() {
        face = IID_ISerializable;
        names = {L"Code"};
        invoked = [](DISPID, WORD, DISPPARAMS&, VARIANT* result, EXCEPINFO*) {
            return *result = Variant(5L).release(), S_OK;
        };
    }
    HRESULT STDMETHODCALLTYPE get_SerializableProperties(BSTR* result) override {
        return give(result, L"@Code");
    }
};

TEST_F(SerializationSerializer, AsksTheObjectForItsListAndStoresIt) {
    const auto early = adopted(new Listing);
    const auto late = objectWith({{L"serializableproperties", str(L"/a")}, {L"A", str(L"x")}});
    const auto failing = objectWith({{L"SerializableProperties", kFailing}});
    const struct {
        IDispatch* object;
        const wchar_t *list, *xml;
    } table[] = {{early.Get(), L"@Code", L"<Item code=\"5\"/>"},
                 {late.Get(), L"/a", L"<Item><A>x</A></Item>"},
                 {failing.Get(), L"", L"<Item/>"}};
    for (const auto& row : table) {
        Variant list{std::wstring_view()};
        const Called called = call(serializer_.Get(), L"Serialize",
                                   {arg(row.object), Variant(L"Item"), byReference(list)});
        EXPECT_EQ(textOf(called.result), row.xml);
        EXPECT_EQ(textOf(list), row.list);
    }
    std::wstring log;
    const auto target =
        objectWith({{L"SerializableProperties", str(L"/a,@b")}, {L"a", {}}, {L"b", {}}}, &log);
    EXPECT_EQ(deserialize(target.Get(), L"<r b='2'><a>1</a></r>", L""), L"/a,@b");
    EXPECT_EQ(log, L"a=1|b=2|");
}

TEST_F(SerializationSerializer, LetsHandlersChangeOnePropertyEach) {
    const auto object = objectWith({{L"a", str(L"1")},
                                    {L"flag", Variant(arg(false))},
                                    {L"when", date(3)},
                                    {L"lost", kFailing},
                                    {L"z", str(L"9")}});
    const struct {
        const wchar_t *property, *heard, *name, *text;
        long kind;
        const wchar_t* xml;  // before the last property
        HRESULT outcome = S_OK;
    } table[] = {
        {L"@a", L"a=1@0", L"B", L"x", 0, L" B=\"x\">"},
        {L"/a", L"A=1@1", L"b", L"x", 0, L" b=\"x\">"},
        {L"@a", L"a=1@0", L"b", L"", 1, L"><b/>"},
        {L"@a", L"a=1@0", L"b", L"x", -1, L">"},
        {L"@a", L"a=1@0", L"<", L"x", 2, L">"},
        {L"@a", L"a=1@0", L"", L"x", 0, nullptr, E_INVALIDARG},
        {L"@flag", L"flag=False@0", L"b", L"-1", 0, L" b=\"True\">"},
        {L"@flag", L"flag=False@0", L"b", L"perhaps", 0, nullptr, kTypeMismatch},
        {L"@when", L"when=", L"b", L"2026-11-05 10:30", 0, L" b=\"05-11-2026\">"},
        {L"@when", L"when=", L"b", L"5 maybe", 0, L" b=\"\">"},
    };
    const auto* row = table;
    handle([&](const std::vector<VARIANT>& event) {
        EXPECT_EQ(event.size(), 5u);
        EXPECT_TRUE(test::sameObject(*event[0].ppdispVal, asObject(serializer_).Get()));
        EXPECT_TRUE(test::sameObject(*event[1].ppdispVal, object.Get()));
        const std::wstring name(text(*event[2].pbstrVal));
        const std::wstring heard = name + L"=" + std::wstring(text(*event[3].pbstrVal)) + L"@" +
                                   std::to_wstring(*event[4].plVal);
        EXPECT_TRUE(heard.starts_with(name == L"Z" ? L"Z=9@1" : row->heard));
        if (name == L"Z") return S_OK;
        rewrite(event[2].pbstrVal, row->name);
        rewrite(event[3].pbstrVal, row->text);
        *event[4].plVal = row->kind;
        std::exchange(*event[1].ppdispVal, nullptr)->Release();
        return E_FAIL;  // ignored
    });
    for (; row != std::end(table); ++row) {
        SCOPED_TRACE(testing::Message() << row->property << row->text);
        const std::wstring xml = serialize(object, std::wstring(row->property) + L",/lost,/z");
        EXPECT_EQ(xml, row->xml ? L"<Item" + std::wstring(row->xml) + L"<Z>9</Z></Item>" : L"");
        EXPECT_EQ(outcome_, row->outcome);
    }
}

TEST_F(SerializationSerializer, ReadsByExactNamesAndIgnoresTheRest) {
    std::wstring deep;
    for (int i = 0; i < 100'000; ++i) deep += L"<a>";
    std::wstring tenMegabytes = L"<r>";
    while (tenMegabytes.size() < 5'000'000) tenMegabytes += L"<row name='x'>some text</row>";
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
        {L"", L"/a", L""},
        {L"<r><a>1</a>", L"/a", L""},
        {L"<!DOCTYPE r SYSTEM 'file:///z:/etc/passwd'><r><a>1</a></r>", L"/a", L""},
        {deep, L"/a", L""},
        {tenMegabytes + L"<a>1</a></r>", L"/a", L"a=1|"},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(testing::Message() << row.list);
        std::wstring log;
        const auto object =
            objectWith({{L"Code", {}}, {L"a", {}}, {L"b", {}}, {L"failing", kFailing}}, &log);
        deserialize(object.Get(), row.xml, row.list);
        EXPECT_EQ(log, row.assigned);
    }
    deserialize(nullptr, L"<r/>", L"/a");
}

// Numbers and texts go through XML, markup, line ends and blanks among them.
TEST_F(SerializationSerializer, BringsEveryItemClassBack) {
    const auto text = L" <a b=\"c'\">&amp;\t\r\n]]> \u00E9\u4E2D\xD83D\xDE00\n ";
    for (const wchar_t* progId : {L"VelaUtil10.UIItem", L"VelaUtil10.DPItem", L"VelaUtil10.KVItem",
                                  L"VelaUtil10.PPItem", L"VelaUtil10.RPItem"}) {
        const auto item = create(progId);
        const auto byAttribute = create(progId);
        const auto byElement = create(progId);
        const auto names = settableProperties(typeInformationOf(item.Get()).Get());
        for (const DeclaredProperty& property : names) {
            const std::wstring& name = property.name;
            const auto put = [&](const wchar_t* value) {
                return quietly([&] { putProperty(item.Get(), name.c_str(), Variant(value)); });
            };
            EXPECT_TRUE(put(text) || put(L"-12"));
            const std::wstring attribute = L"@" + outputName(name, PropertyKind::Attribute);
            const std::wstring element = L"/" + outputName(name, PropertyKind::Element);
            deserialize(byAttribute.Get(), serialize(item, attribute), attribute);
            deserialize(byElement.Get(), serialize(item, element), element);
        }
        for (const DeclaredProperty& property : names) {
            const std::wstring& name = property.name;
            const std::wstring wanted = shown(item.Get(), name.c_str());
            EXPECT_EQ(shown(byAttribute.Get(), name.c_str()), wanted);
            EXPECT_EQ(shown(byElement.Get(), name.c_str()), wanted);
        }
    }
}

TEST_F(SerializationSerializer, MakesAndReadsElementsOfAnyVersionOfTheDom) {
    for (const wchar_t* version : {L"Msxml2.DOMDocument.3.0", L"Msxml2.DOMDocument.6.0"}) {
        const auto document = createAs<IXMLDOMDocument>(version);
        const std::tuple<const wchar_t*, Variant, const wchar_t*> table[] = {
            {L"N", str(L"a<b\1"), L"<N>a&lt;b</N>"},
            {L"N", Variant::missing(), L"<N/>"},
            {L"N", empty(VT_NULL), L"<N/>"},
            {L"N", Variant(arg(false)), L"<N>False</N>"},
            {L"N", arrayOf({}), L""},
            {L"a b", {}, L""}};
        for (const auto& [name, value, xml] : table) {
            const Called made = call(serializer_.Get(), L"CreateSimpleElement",
                                     {arg(document.Get()), str(name), value});
            EXPECT_EQ(made.outcome, *xml ? S_OK : DISP_E_EXCEPTION);
            EXPECT_EQ(*xml ? shown(objectIn(made.result), L"xml") : L"", xml);
        }
        VARIANT_BOOL loaded = VARIANT_FALSE;
        document->loadXML(Bstr(L"<r><a>1<c>2</c></a><a>3</a></r>").get(), &loaded);
        for (const auto& [path, read] :
             {std::pair(L"r/a", L"12"), {L"//c", L"2"}, {L"r/x", L""}, {L"r[", L""}, {L"", L""}}) {
            const Called called =
                call(serializer_.Get(), L"ReadSimpleElement", {arg(document.Get()), str(path)});
            EXPECT_EQ(called.outcome, S_OK);
            EXPECT_EQ(textOf(called.result), read);
        }
    }
    IXMLDOMDocument* none = nullptr;
    ComPtr<IXMLDOMElement> made;
    Bstr read;
    EXPECT_EQ(serializer_->CreateSimpleElement(&none, nullptr, {}, &made), kNoObject);
    EXPECT_EQ(serializer_->ReadSimpleElement(nullptr, nullptr, read.put()), S_OK);
}

}  // namespace
}  // namespace vela::test
