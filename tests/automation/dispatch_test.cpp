// Late-bound calls: finding members, binding and converting arguments, handing results and errors
// back. The classes called are made here, over interfaces of the library, and show what reached
// them.
#include "automation/dispatch.h"

#include <algorithm>

#include "automation/late_bound.h"
#include "frame/Collection.h"
#include "frame/SysUtil.h"
#include "preferences/KVItem.h"

namespace vela {
namespace {

using test::arg;
using test::arrayOf;
using test::byReference;
using test::call;
using test::Called;
using test::callWith;

// A value with its type, as in "int16 7", "'text'", "Empty".
std::wstring show(const VARIANT& value) {
    switch (value.vt) {
        case VT_EMPTY: return L"Empty";
        case VT_NULL: return L"Null";
        case VT_I2: return L"int16 " + textOf(value);
        case VT_I4: return L"int32 " + textOf(value);
        case VT_R4: return L"single " + textOf(value);
        case VT_R8: return L"double " + textOf(value);
        case VT_CY: return L"currency " + textOf(value);
        case VT_BOOL: return textOf(value);
        case VT_BSTR: return L"'" + textOf(value) + L"'";
        case VT_ERROR: return isMissing(value) ? L"missing" : L"error";
        case VT_DISPATCH: return value.pdispVal ? L"object" : L"Nothing";
        default: return L"type " + std::to_wstring(value.vt);
    }
}

Variant null() {
    Variant value;
    value.vt = VT_NULL;
    return value;
}
Variant currency(long units) { return converted(Variant(units), VT_CY); }

// "lower: element element ...", with each element's type.
std::wstring showArray(SAFEARRAY* array) {
    LONG lower = 0;
    LONG upper = -1;
    VARTYPE type = VT_EMPTY;
    SafeArrayGetLBound(array, 1, &lower);
    SafeArrayGetUBound(array, 1, &upper);
    SafeArrayGetVartype(array, &type);
    std::wstring shown = std::to_wstring(lower) + L":";
    for (LONG i = lower; i <= upper; ++i) {
        Variant element;
        const bool variants = type == VT_VARIANT;
        SafeArrayGetElement(array, &i, variants ? static_cast<void*>(&element) : &element.llVal);
        if (!variants) element.vt = type;
        shown += L" " + show(element);
    }
    return shown;
}

void append(BSTR* target, std::wstring_view value) {
    const Bstr old = Bstr::owning(std::exchange(*target, nullptr));
    *target = allocate(old.str() + std::wstring(value));
}

class FakeText final : public Object<FakeText, Unbuilt<_TextUtil>> {
  public:
    HRESULT STDMETHODCALLTYPE ProcuraAbrirFechar(BSTR, BSTR, SHORT* changed, SHORT*,
                                                 SHORT* result) override {
        return answer(result, [&] { return ++*changed; });
    }
    // Shows its arguments, then overwrites those that are by reference.
    HRESULT STDMETHODCALLTYPE StrAlinhar(BSTR value, SHORT size, AlignmentConstant* side,
                                         BSTR* fill, BSTR* result) override {
        return answer(result, [&] {
            const std::wstring shown = std::wstring(text(value)) + L"|" + std::to_wstring(size) +
                                       L"|" + std::to_wstring(*side) + L"|" +
                                       std::wstring(text(*fill));
            *side = RightJustify;
            append(fill, L"!");
            return shown;
        });
    }
    HRESULT STDMETHODCALLTYPE SoNumeros(BSTR, VARIANT_BOOL negative, VARIANT_BOOL decimal,
                                        VARIANT_BOOL* result) override {
        return answer(result, [&] { return isTrue(negative) && !isTrue(decimal); });
    }
    HRESULT STDMETHODCALLTYPE CopyStr(VARIANT* from, VARIANT* to) override {
        return VariantCopy(to, from);
    }
    HRESULT STDMETHODCALLTYPE SemAlfa(VARIANT value, BSTR* result) override {
        return answer(result, [&] { return show(value); });
    }
    // Sorts; makes an array where there is none.
    HRESULT STDMETHODCALLTYPE OrdenarArrayStr(SAFEARRAY** values) override {
        if (!*values) *values = SafeArrayCreateVector(VT_BSTR, 0, 1);
        BSTR* elements = nullptr;
        SafeArrayAccessData(*values, reinterpret_cast<void**>(&elements));
        std::sort(elements, elements + (*values)->rgsabound[0].cElements,
                  [](BSTR a, BSTR b) { return text(a) < text(b); });
        return SafeArrayUnaccessData(*values);
    }
    HRESULT STDMETHODCALLTYPE PreparaTextoComVars(BSTR, SAFEARRAY** values, BSTR* result) override {
        return answer(result, [&] { return showArray(*values); });
    }
    // Fails in the way that its argument names.
    HRESULT STDMETHODCALLTYPE UTrim(BSTR way, BSTR* result) override {
        return answer(result, [&]() -> std::wstring {
            if (text(way) == L"own") throw Error{-1, L"Notificacoes", L"Tag inválida"};
            if (text(way) == L"run-time") raise(RuntimeError::Overflow);
            if (text(way) == L"memory") throw std::bad_alloc();
            if (text(way) == L"unknown") throw 7;
            if (text(way) == L"success") throw Error{S_OK, L"", L""};
            return {};
        });
    }
};

class FakeMath final : public Object<FakeMath, Unbuilt<_MathUtil>> {
  public:
    HRESULT STDMETHODCALLTYPE ParteDecimal(DOUBLE value, SHORT digits, LONG* result) override {
        return *result = static_cast<LONG>(value * digits), S_OK;
    }
    HRESULT STDMETHODCALLTYPE Arredondar(CY value, SHORT, CY* result) override {
        return *result = value, S_OK;
    }
    HRESULT STDMETHODCALLTYPE ValS(BSTR, FLOAT* result) override { return *result = 3, S_OK; }
    HRESULT STDMETHODCALLTYPE OrdenarArrayINT(SAFEARRAY** values) override {
        SHORT* elements = nullptr;
        SafeArrayAccessData(*values, reinterpret_cast<void**>(&elements));
        std::sort(elements, elements + (*values)->rgsabound[0].cElements);
        return SafeArrayUnaccessData(*values);
    }
};

class FakePulsar final : public Object<FakePulsar, Unbuilt<_Pulsar>> {
  public:
    LONG interval = 0;
    HRESULT STDMETHODCALLTYPE CreatePulsar(LONG value, _Pulsar**) override {
        return interval = value, S_OK;
    }
};

class FakeSource final : public Object<FakeSource, Unbuilt<_IUPDataSource>> {
  public:
    std::wstring seen;
    HRESULT STDMETHODCALLTYPE put_DataSource(VARIANT value) override {
        return seen = L"let " + show(value), S_OK;
    }
    HRESULT STDMETHODCALLTYPE putref_DataSource(VARIANT value) override {
        return seen = L"set " + show(value), S_OK;
    }
};

class FakeManager final : public Object<FakeManager, Unbuilt<_RPManager>> {
  public:
    ComPtr<Collection> items = make<Collection>();
    std::wstring seen;
    HRESULT STDMETHODCALLTYPE get_Items(_Collection** result) override {
        return answer(result, [&] { return items; });
    }
    HRESULT STDMETHODCALLTYPE AddItem(_RPItem* item) override {
        return seen = item ? L"item" : L"none", S_OK;
    }
};

class FakeSections final : public Object<FakeSections, Unbuilt<_UPSections>> {
  public:
    ComPtr<_IUPSection> replacement;
    HRESULT STDMETHODCALLTYPE Add(_IUPSection** section) override {
        adopted(std::exchange(*section, replacement.Detach()));
        return S_OK;
    }
};

class FakeSection final : public Object<FakeSection, Unbuilt<_IUPSection>> {};

VARIANT reference(VARTYPE type, void* place) {
    VARIANT v{};
    v.vt = static_cast<VARTYPE>(VT_BYREF | type);
    v.byref = place;
    return v;
}

class AutomationDispatch : public test::NoObjectsLeft {
  protected:
    void TearDown() override {
        text_.Reset();
        math_.Reset();
        NoObjectsLeft::TearDown();
    }
    ComPtr<FakeText> text_ = make<FakeText>();
    ComPtr<FakeMath> math_ = make<FakeMath>();
    IDispatch* texts() { return static_cast<_TextUtil*>(text_.Get()); }
    IDispatch* maths() { return static_cast<_MathUtil*>(math_.Get()); }
};

TEST_F(AutomationDispatch, RefusesArgumentsThatDoNotFitAndTellsWhich) {
    const Variant a(L"a");
    const Variant one(1L);
    const Variant missing = Variant::missing();
    SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
    Variant square;
    square.parray = SafeArrayCreate(VT_VARIANT, 2, bounds);
    square.vt = VT_ARRAY | VT_VARIANT;
    const struct {
        IDispatch* object;
        const wchar_t* member;
        std::vector<Variant> arguments;
        HRESULT outcome;
        UINT failed;  // counted from the last argument; 99 where none is to blame
    } cases[] = {
        {texts(), L"MudaChar", {}, DISP_E_PARAMNOTOPTIONAL, 99},
        {texts(), L"MudaChar", {a, a}, DISP_E_PARAMNOTOPTIONAL, 99},
        {texts(), L"MudaChar", {a, missing, a}, DISP_E_PARAMNOTOPTIONAL, 99},
        {texts(), L"MudaChar", {a, a, a, a}, DISP_E_BADPARAMCOUNT, 99},
        {texts(), L"ProcuraAbrirFechar", {a, a, a, one}, DISP_E_TYPEMISMATCH, 1},
        {texts(), L"ProcuraAbrirFechar", {a, a, one, Variant(40000L)}, DISP_E_OVERFLOW, 0},
        {texts(), L"StrAlinhar", {null(), one}, DISP_E_TYPEMISMATCH, 1},
        {texts(), L"SoNumeros", {a, Variant(L"perhaps")}, DISP_E_TYPEMISMATCH, 0},
        {texts(), L"OrdenarArrayStr", {a}, DISP_E_TYPEMISMATCH, 0},
        {texts(), L"OrdenarArrayStr", {square}, DISP_E_TYPEMISMATCH, 0},
        {maths(), L"OrdenarArrayINT", {arrayOf({one, a})}, DISP_E_TYPEMISMATCH, 0},
        {maths(), L"OrdenarArrayINT", {arrayOf({Variant(40000L)})}, DISP_E_OVERFLOW, 0},
    };
    for (const auto& [object, member, arguments, outcome, failed] : cases) {
        SCOPED_TRACE(testing::Message() << member << " with " << arguments.size());
        std::vector<Variant> variables = arguments;
        std::vector<VARIANT> passed;
        for (Variant& variable : variables) {
            passed.push_back(isMissing(variable) ? variable : byReference(variable));
        }
        for (const Called& called :
             {callWith(object, member, arguments), call(object, member, passed)}) {
            EXPECT_EQ(called.outcome, outcome);
            EXPECT_EQ(called.failedArgument, failed);
            EXPECT_EQ(show(called.result), L"Empty");
        }
    }
}

TEST_F(AutomationDispatch, ConvertsArgumentsAndResults) {
    const struct {
        IDispatch* object;
        const wchar_t* member;
        std::vector<Variant> arguments;
        const wchar_t* result;
    } cases[] = {
        {texts(), L"StrAlinhar", {Variant(12L), Variant(L" 7 ")}, L"'12|7|0|'"},
        {texts(), L"StrAlinhar", {Variant(arg(true)), Variant(arg(2.5))}, L"'True|2|0|'"},
        {texts(), L"SoNumeros", {Variant(L"")}, L"False"},
        {texts(), L"SoNumeros", {Variant(L""), Variant(L"true")}, L"True"},
        {texts(), L"SemAlfa", {null()}, L"'Null'"},
        {texts(), L"SemAlfa", {Variant()}, L"'Empty'"},
        {maths(), L"ParteDecimal", {Variant(L"3"), Variant(2L)}, L"int32 6"},
        {maths(), L"Arredondar", {Variant(12L), Variant(2L)}, L"currency 12"},
        {maths(), L"Arredondar", {currency(-5), Variant(2L)}, L"currency -5"},
        {maths(), L"ValS", {Variant(L"")}, L"single 3"},
    };
    for (const auto& [object, member, arguments, result] : cases) {
        SCOPED_TRACE(testing::Message() << member << " " << result);
        const Called called = callWith(object, member, arguments);
        EXPECT_EQ(called.outcome, S_OK);
        EXPECT_EQ(show(called.result), result);
    }
}

TEST_F(AutomationDispatch, GivesOmittedOptionalsTheirDefaults) {
    Variant missing = Variant::missing();
    Variant centre(2L);
    const std::pair<std::vector<VARIANT>, const wchar_t*> cases[] = {
        {{}, L"0|4|0|"},
        {{missing, missing}, L"0|4|0|"},
        {{byReference(missing), arg(9L)}, L"0|4|0|9"},
        {{byReference(centre)}, L"0|4|2|"},
    };
    for (const auto& [optional, result] : cases) {
        std::vector<VARIANT> arguments{arg(0L), arg(4L)};
        arguments.insert(arguments.end(), optional.begin(), optional.end());
        EXPECT_EQ(textOf(call(texts(), L"StrAlinhar", arguments).result), result);
    }
    EXPECT_EQ(show(missing), L"missing");
    EXPECT_EQ(show(centre), L"int32 1");

    const auto pulsar = make<FakePulsar>();
    for (const auto& [arguments, interval] : std::vector<std::pair<std::vector<VARIANT>, LONG>>{
             {{}, 60000}, {{missing}, 60000}, {{arg(0L)}, 0}}) {
        call(static_cast<_Pulsar*>(pulsar.Get()), L"CreatePulsar", arguments);
        EXPECT_EQ(pulsar->interval, interval);
    }
}

// Calls with arguments by name, after `positional` ones.
HRESULT callNamed(IDispatch* object, std::vector<const wchar_t*> names, std::vector<VARIANT> values,
                  std::vector<VARIANT> positional, Variant& result) {
    std::vector<DISPID> ids(names.size());
    const HRESULT found = object->GetIDsOfNames(IID_NULL, const_cast<wchar_t**>(names.data()),
                                                static_cast<UINT>(names.size()), 0, ids.data());
    if (FAILED(found)) return found;
    const auto named = static_cast<UINT>(values.size());
    values.insert(values.end(), positional.rbegin(), positional.rend());
    DISPPARAMS parameters{values.data(), ids.data() + 1, static_cast<UINT>(values.size()), named};
    return object->Invoke(ids[0], IID_NULL, 0, DISPATCH_METHOD, &parameters, &(result = Variant()),
                          nullptr, nullptr);
}

TEST_F(AutomationDispatch, BindsArgumentsByName) {
    const struct {
        std::vector<const wchar_t*> names;
        std::vector<VARIANT> values;
        std::vector<VARIANT> positional;
        HRESULT outcome;
        const wchar_t* result;
    } cases[] = {
        {{L"CARACTERPREENCHIMENTO", L"tamanho", L"str"},
         {arg(7L), arg(8L), arg(9L)},
         {},
         S_OK,
         L"'9|8|0|7'"},
        {{L"alinhar"}, {arg(2L)}, {arg(1L), arg(3L)}, S_OK, L"'1|3|2|'"},
        {{L"alinhar"}, {arg(2L)}, {arg(1L)}, DISP_E_PARAMNOTOPTIONAL, L"Empty"},
        {{L"str"}, {arg(2L)}, {arg(1L), arg(3L)}, DISP_E_PARAMNOTFOUND, L"Empty"},
        {{L"nome"}, {arg(2L)}, {arg(1L), arg(3L)}, DISP_E_UNKNOWNNAME, L"Empty"},
    };
    for (auto [names, values, positional, outcome, result] : cases) {
        names.insert(names.begin(), L"StrAlinhar");
        Variant returned;
        EXPECT_EQ(callNamed(texts(), names, values, positional, returned), outcome) << names[1];
        EXPECT_EQ(show(returned), result);
    }
}

TEST_F(AutomationDispatch, WritesBackIntoScriptVariablesOfAnyType) {
    const struct {
        Variant before;
        const wchar_t* after;      // as the argument that the member raises by one
        const wchar_t* untouched;  // as the argument that it leaves alone
    } cases[] = {
        {Variant(), L"int16 1", L"Empty"},
        {Variant(L"41"), L"int16 42", L"'41'"},
        {Variant(arg(short{5})), L"int16 6", L"int16 5"},
        {Variant(70L), L"int16 71", L"int32 70"},
        {Variant(arg(2.5)), L"int16 3", L"double " /* and the locale's 2.5 */},
        {Variant(arg(true)), L"int16 0", L"True"},
    };
    const Variant a(L"a");
    for (const auto& [before, after, untouched] : cases) {
        Variant changed = before;
        Variant kept = before;
        call(texts(), L"procuraabrirfechar", {a, a, byReference(changed), byReference(kept)});
        EXPECT_EQ(show(changed), after);
        EXPECT_EQ(show(kept).rfind(untouched, 0), 0u) << show(kept).c_str();
    }
}

TEST_F(AutomationDispatch, WritesBackThroughTypedReferences) {
    SHORT i2 = 5;
    LONG i4 = 41;
    DOUBLE r8 = 6;
    BYTE byte = 255;  // 256 does not fit: it stays
    BSTR string = SysAllocString(L"7");
    VARIANT inner = reference(VT_I4, &i4);
    for (const VARIANT& place :
         {reference(VT_I2, &i2), inner, byReference(inner), reference(VT_R8, &r8),
          reference(VT_UI1, &byte), reference(VT_BSTR, &string), arg(1L)}) {
        EXPECT_EQ(call(texts(), L"ProcuraAbrirFechar", {arg(0L), arg(0L), place, arg(0L)}).outcome,
                  S_OK);
    }
    EXPECT_EQ(i2, 6);
    EXPECT_EQ(i4, 43);
    EXPECT_EQ(r8, 7);
    EXPECT_EQ(byte, 255);
    EXPECT_EQ(Bstr::owning(string).view(), L"8");
}

TEST_F(AutomationDispatch, HandsVariantsOverAsTheyAre) {
    Variant from(L"text");
    Variant to(3L);
    BSTR string = nullptr;
    EXPECT_EQ(call(texts(), L"CopyStr", {from, byReference(to)}).outcome, S_OK);
    EXPECT_EQ(show(to), L"'text'");
    EXPECT_EQ(call(texts(), L"CopyStr", {arg(12L), reference(VT_BSTR, &string)}).outcome, S_OK);
    EXPECT_EQ(Bstr::owning(string).view(), L"12");
    EXPECT_EQ(call(texts(), L"CopyStr", {arg(texts()), byReference(to)}).outcome, S_OK);
    EXPECT_EQ(to.pdispVal, texts());
}

TEST_F(AutomationDispatch, ConvertsArraysAndCopiesThemBack) {
    const struct {
        IDispatch* object;
        const wchar_t* member;
        Variant before;
        const wchar_t* after;
    } cases[] = {
        {texts(), L"OrdenarArrayStr", arrayOf({Variant(L"b"), Variant(1L), Variant(L"a")}, 3),
         L"3: '1' 'a' 'b'"},
        {texts(), L"OrdenarArrayStr", Variant(), L"0: ''"},
        {texts(), L"OrdenarArrayStr", arrayOf({}), L"0:"},
        {maths(), L"OrdenarArrayINT", arrayOf({Variant(2L), Variant(L"1")}), L"0: int16 1 int16 2"},
    };
    for (const auto& [object, member, before, after] : cases) {
        Variant variable = before;
        EXPECT_EQ(call(object, member, {byReference(variable)}).outcome, S_OK);
        ASSERT_EQ(variable.vt, VT_ARRAY | VT_VARIANT);
        EXPECT_EQ(showArray(variable.parray), after);
    }
    // By value, or refused, the caller's array stays as it was.
    Variant words = arrayOf({Variant(1L), Variant(L"one")});
    EXPECT_EQ(call(maths(), L"OrdenarArrayINT", {byReference(words)}).outcome, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(showArray(words.parray), L"0: int32 1 'one'");
    const Variant numbers = arrayOf({Variant(2L), Variant(L"1")});
    EXPECT_EQ(call(maths(), L"OrdenarArrayINT", {numbers}).outcome, S_OK);
    EXPECT_EQ(show(call(texts(), L"PreparaTextoComVars", {arg(0L), numbers}).result),
              L"'0: int32 2 '1''");

    // Typed arrays: the member's own type, and another.
    for (const VARTYPE type : {VT_I2, VT_I4}) {
        SAFEARRAY* array = SafeArrayCreateVector(type, 1, 2);
        LONG place = 1;
        LONG two = 2;
        SafeArrayPutElement(array, &place, &two);
        EXPECT_EQ(call(maths(), L"OrdenarArrayINT", {reference(VT_ARRAY | type, &array)}).outcome,
                  S_OK);
        EXPECT_EQ(showArray(array), type == VT_I2 ? L"1: int16 0 int16 2" : L"1: int32 0 int32 2");
        SafeArrayDestroy(array);
    }
}

TEST_F(AutomationDispatch, TellsAssignmentOfValuesFromThatOfObjects) {
    constexpr WORD kLet = DISPATCH_PROPERTYPUT;
    constexpr WORD kSet = DISPATCH_PROPERTYPUTREF;
    const auto source = make<FakeSource>();
    IDispatch* object = static_cast<_IUPDataSource*>(source.Get());
    const VARIANT value = arg(3L);
    const VARIANT held = arg(texts());
    const struct {
        WORD flags;
        VARIANT value;
        const wchar_t* seen;
    } cases[] = {
        {kLet, value, L"let int32 3"},
        {kSet, held, L"set object"},
        {kLet, held, L"let object"},
        {kLet | kSet, held, L"set object"},
        {kLet | kSet, value, L"let int32 3"},
        {kSet, arg(static_cast<IDispatch*>(nullptr)), L"set Nothing"},
    };
    for (const auto& [flags, given, seen] : cases) {
        EXPECT_EQ(call(object, L"datasource", {given}, flags).outcome, S_OK);
        EXPECT_EQ(source->seen, seen) << flags;
    }
    // Without the mark of a put, the value is the last argument all the same; a read-only property
    // and a method take none.
    DISPPARAMS plain{const_cast<VARIANT*>(&value), nullptr, 1, 0};
    source->seen.clear();
    EXPECT_EQ(object->Invoke(1, IID_NULL, 0, kLet, &plain, nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(source->seen, L"let int32 3");
    EXPECT_EQ(call(maths(), L"SeparadorMilhares", {value}, kLet).outcome, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(call(maths(), L"ValS", {value}, kLet).outcome, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(call(maths(), L"ValS", {value}, DISPATCH_PROPERTYGET).outcome, DISP_E_MEMBERNOTFOUND);
}

TEST_F(AutomationDispatch, AnswersTheSpecialNumbers) {
    const auto collection = make<Collection>();
    collection->entries().add(Variant(L"first"), L"key");
    Variant one(1L);
    Variant result;
    DISPPARAMS with{&one, nullptr, 1, 0};
    DISPPARAMS without{};
    const auto invoke = [&](DISPID id, DISPPARAMS& parameters, VARIANT* target) {
        return static_cast<_Collection*>(collection.Get())
            ->Invoke(id, IID_NULL, 0, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &parameters, target,
                     nullptr, nullptr);
    };
    EXPECT_EQ(invoke(DISPID_VALUE, with, &result), S_OK);
    EXPECT_EQ(show(result), L"'first'");
    EXPECT_EQ(invoke(DISPID_NEWENUM, without, &(result = Variant())), S_OK);
    EXPECT_EQ(result.vt, VT_UNKNOWN);
    EXPECT_EQ(invoke(DISPID_VALUE, with, nullptr), S_OK);
    for (const DISPID unknown : {-1, -3, -5, 99, 0x10000, 0x7FFFFFFF}) {
        EXPECT_EQ(invoke(unknown, without, nullptr), DISP_E_MEMBERNOTFOUND) << unknown;
    }
}

TEST_F(AutomationDispatch, PassesErrorsOnWithNumberSourceAndDescription) {
    const struct {
        const wchar_t* way;
        HRESULT number;
        const wchar_t* source;
        const wchar_t* description;
    } cases[] = {
        {L"own", -1, L"Notificacoes", L"Tag inválida"},
        {L"run-time", static_cast<HRESULT>(0x800A0006), L"VelaUtil10", L"Overflow"},
        {L"memory", E_OUTOFMEMORY, L"VelaUtil10", L"Out of memory"},
        {L"unknown", E_UNEXPECTED, L"VelaUtil10", L"Unexpected failure"},
        {L"success", E_UNEXPECTED, L"", L""},
    };
    for (const auto& [way, number, source, description] : cases) {
        const Called called = callWith(texts(), L"UTrim", {Variant(way)});
        EXPECT_EQ(called.outcome, DISP_E_EXCEPTION) << way;
        EXPECT_EQ(called.error, number) << way;
        EXPECT_EQ(called.source, source);
        EXPECT_EQ(called.description, description);
        EXPECT_EQ(show(called.result), L"Empty");
    }
    // The caller need not ask for the details.
    Variant way(L"own");
    DISPPARAMS parameters{&way, nullptr, 1, 0};
    EXPECT_EQ(
        texts()->Invoke(23, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
        DISP_E_EXCEPTION);
}

TEST_F(AutomationDispatch, ReadsTheDefaultMemberOfWhatAPropertyHolds) {
    const auto manager = make<FakeManager>();
    const auto item = [&](long place) {
        return callWith(static_cast<_RPManager*>(manager.Get()), L"Items", {Variant(place)});
    };
    manager->items->entries().add(Variant(L"value"));
    EXPECT_EQ(show(item(1).result), L"'value'");
    EXPECT_EQ(item(2).error, static_cast<HRESULT>(0x800A0009));
    manager->items.Reset();
    EXPECT_EQ(item(1).outcome, DISP_E_BADPARAMCOUNT);
}

TEST_F(AutomationDispatch, ShowsTheMembersOfAllInterfacesAtOnce) {
    const auto item = make<KVItem>();
    ComPtr<_IUPItem> identity;
    ASSERT_EQ(item.As(&identity), S_OK);
    const Bstr group(L"ecrã");
    for (IDispatch* face : {static_cast<IDispatch*>(static_cast<_KVItem*>(item.Get())),
                            static_cast<IDispatch*>(identity.Get())}) {
        EXPECT_EQ(call(face, L"KEY", {arg(7L)}, DISPATCH_PROPERTYPUT).outcome, S_OK);
        EXPECT_EQ(call(face, L"group", {arg(group)}, DISPATCH_PROPERTYPUT).outcome, S_OK);
        EXPECT_EQ(show(call(face, L"searchKey").result), L"'7@ECRÃ'");
        EXPECT_EQ(show(call(face, L"iD").result), L"'7'");
        EXPECT_EQ(call(face, L"SearchKeys").outcome, DISP_E_UNKNOWNNAME);
        EXPECT_EQ(call(face, L"").outcome, DISP_E_UNKNOWNNAME);
    }
}

TEST_F(AutomationDispatch, TakesObjectsAndNothingButNoOthers) {
    const auto manager = make<FakeManager>();
    IDispatch* object = static_cast<_RPManager*>(manager.Get());
    Variant nothing(static_cast<IDispatch*>(nullptr));
    const struct {
        VARIANT value;
        HRESULT outcome;
        const wchar_t* seen;
    } cases[] = {
        {nothing, S_OK, L"none"},
        {byReference(nothing), S_OK, L"none"},
        {Variant(), S_OK, L"none"},
        {null(), DISP_E_TYPEMISMATCH, L""},
        {arg(1L), DISP_E_TYPEMISMATCH, L""},
        {arg(texts()), DISP_E_TYPEMISMATCH, L""},
    };
    for (const auto& [value, outcome, seen] : cases) {
        manager->seen.clear();
        EXPECT_EQ(call(object, L"AddItem", {value}).outcome, outcome);
        EXPECT_EQ(manager->seen, seen);
    }
}

TEST_F(AutomationDispatch, SetsTheCallersObjectVariable) {
    const auto sys = make<SysUtil>();
    IDispatch* typed = static_cast<_Collection*>(make<Collection>().Detach());
    EXPECT_EQ(call(static_cast<_SysUtil*>(sys.Get()), L"ClearCollection",
                   {reference(VT_DISPATCH, &typed), arg(true)})
                  .outcome,
              S_OK);
    EXPECT_EQ(typed, nullptr);

    const auto sections = make<FakeSections>();
    const auto replaced = [&](ComPtr<_IUPSection> by) {
        Variant section(static_cast<_IUPSection*>(make<FakeSection>().Get()));
        sections->replacement = by;
        EXPECT_EQ(
            call(static_cast<_UPSections*>(sections.Get()), L"Add", {byReference(section)}).outcome,
            S_OK);
        return section;
    };
    const ComPtr<_IUPSection> other = make<FakeSection>();
    EXPECT_EQ(replaced(other).pdispVal, other.Get());
    // An object in the place of a section comes back as itself, not as what stands in for it.
    ComPtr<_IUPSection> standIn;
    ASSERT_EQ(queryOrAdapt<_IUPSection>(texts(), standIn.GetAddressOf()), S_OK);
    EXPECT_EQ(replaced(standIn).pdispVal, texts());
}

}  // namespace
}  // namespace vela
