// Late-bound calls: finding members, binding and converting arguments, handing results and errors
// back. The class called is made here, over interfaces of the library, and shows what reached it.
#include "automation/dispatch.h"

#include <algorithm>

#include "automation/late_bound.h"
#include "frame/Collection.h"
#include "frame/SysUtil.h"

namespace vela {
namespace {

using test::arg;
using test::arrayOf;
using test::byReference;
using test::Called;

// A value with its type, as in "int16 7", "'text'", "Empty".
std::wstring show(const VARIANT& value) {
    switch (value.vt) {
        case VT_EMPTY: return L"Empty";
        case VT_NULL: return L"Null";
        case VT_I2: return L"int16 " + textOf(value);
        case VT_I4: return L"int32 " + textOf(value);
        case VT_R8: return L"double " + textOf(value);
        case VT_CY: return L"currency " + textOf(value);
        case VT_BSTR: return L"'" + textOf(value) + L"'";
        case VT_ERROR: return isMissing(value) ? L"missing" : L"error";
        case VT_DISPATCH: return value.pdispVal ? L"object" : L"Nothing";
        default: return textOf(value);
    }
}

// "lower: element element ...", with each element's type.
std::wstring show(SAFEARRAY* array) {
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

Variant null() {
    Variant value;
    value.vt = VT_NULL;
    return value;
}

VARIANT reference(VARTYPE type, void* place) {
    VARIANT v{};
    v.vt = static_cast<VARTYPE>(VT_BYREF | type);
    v.byref = place;
    return v;
}

template <class Element>
HRESULT reverse(SAFEARRAY* values) {
    Element* elements = nullptr;
    SafeArrayAccessData(values, reinterpret_cast<void**>(&elements));
    std::reverse(elements, elements + values->rgsabound[0].cElements);
    return SafeArrayUnaccessData(values);
}

class Fake final : public Object<Fake, Unbuilt<_TextUtil>, Unbuilt<_MathUtil>,
                                 Unbuilt<_IUPDataSource>, Unbuilt<_RPManager>> {
  public:
    std::wstring seen;
    std::function<void()> failing;
    ComPtr<Collection> items = make<Collection>();

    HRESULT STDMETHODCALLTYPE ProcuraAbrirFechar(BSTR, BSTR, SHORT* changed, SHORT*,
                                                 SHORT* result) override {
        return answer(result, [&] { return ++*changed; });
    }
    // Shows its arguments, then overwrites one that is by reference.
    HRESULT STDMETHODCALLTYPE StrAlinhar(BSTR value, SHORT size, AlignmentConstant* side,
                                         BSTR* fill, BSTR* result) override {
        return answer(result, [&] {
            const std::wstring numbers = std::to_wstring(size) + L"|" + std::to_wstring(*side);
            *side = RightJustify;
            return std::wstring(text(value)) + L"|" + numbers + L"|" + std::wstring(text(*fill));
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
    // Reverses; makes an array where there is none.
    HRESULT STDMETHODCALLTYPE OrdenarArrayStr(SAFEARRAY** values) override {
        if (!*values) *values = SafeArrayCreateVector(VT_BSTR, 0, 1);
        return reverse<BSTR>(*values);
    }
    HRESULT STDMETHODCALLTYPE OrdenarArrayINT(SAFEARRAY** values) override {
        return reverse<SHORT>(*values);
    }
    HRESULT STDMETHODCALLTYPE UTrim(BSTR, BSTR* result) override {
        return answer(result, [&] { return failing(), std::wstring(); });
    }
    HRESULT STDMETHODCALLTYPE Arredondar(CY value, SHORT, CY* result) override {
        return *result = value, S_OK;
    }
    HRESULT STDMETHODCALLTYPE put_DataSource(VARIANT value) override {
        return seen = L"let " + show(value), S_OK;
    }
    HRESULT STDMETHODCALLTYPE putref_DataSource(VARIANT value) override {
        return seen = L"set " + show(value), S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_Items(_Collection** result) override {
        return answer(result, [&] { return items; });
    }
    HRESULT STDMETHODCALLTYPE AddItem(_RPItem* item) override {
        return seen = item ? L"item" : L"none", S_OK;
    }
};

class AutomationDispatch : public test::NoObjectsLeft {
  protected:
    IDispatch* object() { return static_cast<_TextUtil*>(fake_.Get()); }
    template <class... More>
    Called call(const wchar_t* name, std::vector<VARIANT> arguments, More... more) {
        return test::call(object(), name, std::move(arguments), more...);
    }
    ComPtr<Fake> fake_ = make<Fake>();
};

TEST_F(AutomationDispatch, ConvertsArgumentsAndTellsWhichDoNotFit) {
    const Variant a(L"a");
    const Variant one(1L);
    const Variant large(40000L);
    const Variant missing = Variant::missing();
    SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
    Variant square;
    square.parray = SafeArrayCreate(VT_VARIANT, 2, bounds);
    square.vt = VT_ARRAY | VT_VARIANT;
    const struct {
        const wchar_t* member;
        std::vector<Variant> arguments;
        const wchar_t* result;
        HRESULT outcome = S_OK;
        UINT failed = 99;  // counted from the last argument; 99 where none is to blame
    } cases[] = {
        {L"StrAlinhar", {Variant(12L), Variant(L" 7 ")}, L"'12|7|0|'"},
        {L"StrAlinhar", {Variant(arg(true)), Variant(arg(2.5))}, L"'True|2|0|'"},
        {L"StrAlinhar", {a, one, missing, missing}, L"'a|1|0|'"},
        {L"StrAlinhar", {a, one, missing, Variant(9L)}, L"'a|1|0|9'"},
        {L"StrAlinhar", {a, one, Variant(2L)}, L"'a|1|2|'"},
        {L"StrAlinhar", {null(), one}, L"Empty", DISP_E_TYPEMISMATCH, 1},
        {L"SoNumeros", {a}, L"False"},
        {L"SoNumeros", {a, Variant(L"true")}, L"True"},
        {L"SoNumeros", {a, Variant(L"perhaps")}, L"Empty", DISP_E_TYPEMISMATCH, 0},
        {L"SemAlfa", {null()}, L"'Null'"},
        {L"SemAlfa", {Variant()}, L"'Empty'"},
        {L"Arredondar", {Variant(12L), one}, L"currency 12"},
        {L"Arredondar", {converted(Variant(-5L), VT_CY), one}, L"currency -5"},
        {L"MudaChar", {}, L"Empty", DISP_E_PARAMNOTOPTIONAL},
        {L"MudaChar", {a, missing, a}, L"Empty", DISP_E_PARAMNOTOPTIONAL},
        {L"MudaChar", {a, a, a, a}, L"Empty", DISP_E_BADPARAMCOUNT},
        {L"ProcuraAbrirFechar", {a, a, a, one}, L"Empty", DISP_E_TYPEMISMATCH, 1},
        {L"ProcuraAbrirFechar", {a, a, one, large}, L"Empty", DISP_E_OVERFLOW, 0},
        {L"OrdenarArrayStr", {a}, L"Empty", DISP_E_TYPEMISMATCH, 0},
        {L"OrdenarArrayStr", {square}, L"Empty", DISP_E_TYPEMISMATCH, 0},
        {L"OrdenarArrayINT", {arrayOf({large})}, L"Empty", DISP_E_OVERFLOW, 0},
        {L"UTrims", {a}, L"Empty", DISP_E_UNKNOWNNAME},
        {L"", {}, L"Empty", DISP_E_UNKNOWNNAME},
    };
    for (const auto& [member, arguments, result, outcome, failed] : cases) {
        SCOPED_TRACE(testing::Message() << member << " with " << arguments.size());
        std::vector<Variant> variables = arguments;
        std::vector<VARIANT> references;
        for (Variant& variable : variables) references.push_back(byReference(variable));
        for (const Called& called :
             {call(member, {arguments.begin(), arguments.end()}), call(member, references)}) {
            EXPECT_EQ(called.outcome, outcome);
            EXPECT_EQ(called.failedArgument, failed);
            EXPECT_EQ(show(called.result), result);
        }
        for (std::size_t i = 0; i < variables.size(); ++i) {
            EXPECT_EQ(variables[i].vt, arguments[i].vt);  // a missing one stays missing
        }
    }
}

TEST_F(AutomationDispatch, BindsArgumentsByName) {
    const struct {
        std::vector<const wchar_t*> names;
        std::vector<VARIANT> values;  // those of the names, then the others from the last to first
        const wchar_t* result;
        HRESULT outcome = S_OK;
    } cases[] = {
        {{L"CARACTERPREENCHIMENTO", L"tamanho", L"str"}, {arg(7L), arg(8L), arg(9L)}, L"'9|8|0|7'"},
        {{L"alinhar"}, {arg(2L), arg(3L), arg(1L)}, L"'1|3|2|'"},
        {{L"alinhar"}, {arg(2L), arg(1L)}, L"Empty", DISP_E_PARAMNOTOPTIONAL},
        {{L"str"}, {arg(2L), arg(3L), arg(1L)}, L"Empty", DISP_E_PARAMNOTFOUND},
        {{L"nome"}, {arg(2L)}, L"Empty", DISP_E_UNKNOWNNAME},
    };
    for (auto [names, values, result, outcome] : cases) {
        SCOPED_TRACE(names[0]);
        const auto named = static_cast<UINT>(names.size());
        names.insert(names.begin(), L"StrAlinhar");
        DISPID ids[4];
        Variant returned;
        const HRESULT found = object()->GetIDsOfNames(IID_NULL, const_cast<wchar_t**>(names.data()),
                                                      named + 1, 0, ids);
        DISPPARAMS parameters{values.data(), ids + 1, static_cast<UINT>(values.size()), named};
        EXPECT_EQ(FAILED(found) ? found
                                : object()->Invoke(ids[0], IID_NULL, 0, DISPATCH_METHOD,
                                                   &parameters, &returned, nullptr, nullptr),
                  outcome);
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
    for (const auto& [before, after, untouched] : cases) {
        Variant changed = before;
        Variant kept = before;
        call(L"procuraabrirfechar", {arg(0L), arg(0L), byReference(changed), byReference(kept)});
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
        EXPECT_EQ(call(L"ProcuraAbrirFechar", {arg(0L), arg(0L), place, arg(0L)}).outcome, S_OK);
    }
    EXPECT_EQ(i2, 6);
    EXPECT_EQ(i4, 43);
    EXPECT_EQ(r8, 7);
    EXPECT_EQ(byte, 255);
    EXPECT_EQ(text(string), L"8");

    // A member that wants a variant writes any type into the caller's own.
    Variant variable(3L);
    const ComPtr<_SysUtil> sys = make<SysUtil>();
    IDispatch* held = static_cast<_Collection*>(make<Collection>().Detach());
    EXPECT_EQ(call(L"CopyStr", {arg(12L), reference(VT_BSTR, &string)}).outcome, S_OK);
    EXPECT_EQ(Bstr::owning(string).view(), L"12");
    EXPECT_EQ(call(L"CopyStr", {arg(object()), byReference(variable)}).outcome, S_OK);
    EXPECT_EQ(variable.pdispVal, object());
    test::call(sys.Get(), L"ClearCollection", {reference(VT_DISPATCH, &held), arg(true)});
    EXPECT_EQ(held, nullptr);
}

TEST_F(AutomationDispatch, ConvertsArraysAndCopiesThemBack) {
    const Variant numbers = arrayOf({Variant(2L), Variant(L"1")});
    const struct {
        const wchar_t* member;
        Variant variable;
        const wchar_t* after;
        HRESULT outcome = S_OK;
    } cases[] = {
        {L"OrdenarArrayStr", arrayOf({Variant(L"b"), Variant(1L), Variant(L"a")}, 3),
         L"3: 'a' '1' 'b'"},
        {L"OrdenarArrayStr", Variant(), L"0: ''"},
        {L"OrdenarArrayStr", arrayOf({}), L"0:"},
        {L"OrdenarArrayINT", numbers, L"0: int16 1 int16 2"},
        {L"OrdenarArrayINT", arrayOf({Variant(1L), Variant(L"one")}), L"0: int32 1 'one'",
         DISP_E_TYPEMISMATCH},
    };
    for (auto [member, variable, after, outcome] : cases) {
        EXPECT_EQ(call(member, {byReference(variable)}).outcome, outcome);
        ASSERT_EQ(variable.vt, VT_ARRAY | VT_VARIANT);
        EXPECT_EQ(show(variable.parray), after);
    }
    // By value the caller's array stays as it was.
    EXPECT_EQ(call(L"OrdenarArrayINT", {numbers}).outcome, S_OK);
    EXPECT_EQ(show(numbers.parray), L"0: int32 2 '1'");

    // Typed arrays: the member's own type, and another.
    for (const auto& [type, sorted] :
         {std::pair<VARTYPE, const wchar_t*>(VT_I2, L"1: int16 2 int16 0"),
          std::pair<VARTYPE, const wchar_t*>(VT_I4, L"1: int32 2 int32 0")}) {
        SAFEARRAY* array = SafeArrayCreateVector(type, 1, 2);
        LONG place = 2;
        LONG two = 2;
        SafeArrayPutElement(array, &place, &two);
        call(L"OrdenarArrayINT", {reference(VT_ARRAY | type, &array)});
        EXPECT_EQ(show(array), sorted);
        SafeArrayDestroy(array);
    }
}

TEST_F(AutomationDispatch, TellsAssignmentOfValuesFromThatOfObjects) {
    constexpr WORD kLet = DISPATCH_PROPERTYPUT;
    constexpr WORD kSet = DISPATCH_PROPERTYPUTREF;
    VARIANT value = arg(3L);
    const VARIANT held = arg(object());
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
        EXPECT_EQ(call(L"datasource", {given}, flags).outcome, S_OK);
        EXPECT_EQ(fake_->seen, seen) << flags;
    }
    // Without the mark of a put, the value is the last argument all the same.
    DISPPARAMS plain{&value, nullptr, 1, 0};
    DISPID id = 0;
    fake_->seen.clear();
    EXPECT_EQ(findMember(object(), L"DataSource", &id), S_OK);
    EXPECT_EQ(object()->Invoke(id, IID_NULL, 0, kLet, &plain, nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(fake_->seen, L"let int32 3");
    // A read-only property and a method take none, and reading does not run a method.
    for (const auto& [name, flags] :
         {std::pair(L"SeparadorMilhares", kLet), std::pair(L"ValS", kLet),
          std::pair(L"ValS", WORD{DISPATCH_PROPERTYGET})}) {
        EXPECT_EQ(call(name, {value}, flags).outcome, DISP_E_MEMBERNOTFOUND);
    }
}

TEST_F(AutomationDispatch, KnowsTheNumbersOfItsMembersOnly) {
    Variant result;
    DISPPARAMS none{};
    for (const DISPID unknown : {-1, -3, -5, 99, 0x50000, 0x7FFFFFFF}) {
        EXPECT_EQ(object()->Invoke(unknown, IID_NULL, 0, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                                   &none, &result, nullptr, nullptr),
                  DISP_E_MEMBERNOTFOUND)
            << unknown;
    }
}

TEST_F(AutomationDispatch, PassesErrorsOnWithNumberSourceAndDescription) {
    const struct {
        void (*failing)();
        HRESULT number;
        const wchar_t *source, *description;
    } cases[] = {
        {[] {
             throw Error{-1, L"Notificacoes", L"Tag inválida"};
         },
         -1, L"Notificacoes", L"Tag inválida"},
        {[] { raise(RuntimeError::Overflow); }, static_cast<HRESULT>(0x800A0006), L"VelaUtil10",
         L"Overflow"},
        {[] { throw std::bad_alloc(); }, E_OUTOFMEMORY, L"VelaUtil10", L"Out of memory"},
        {[] { throw 7; }, E_UNEXPECTED, L"VelaUtil10", L"Unexpected failure"},
        {[] {
             throw Error{S_OK, L"", L""};
         },
         E_UNEXPECTED, L"", L""},
    };
    for (const auto& [failing, number, source, description] : cases) {
        fake_->failing = failing;
        const Called called = call(L"UTrim", {arg(0L)});
        EXPECT_EQ(called.outcome, DISP_E_EXCEPTION);
        EXPECT_EQ(called.error, number);
        EXPECT_EQ(called.source, source);
        EXPECT_EQ(called.description, description);
        EXPECT_EQ(show(called.result), L"Empty");
    }
    // The caller need not ask for the details.
    VARIANT any = arg(0L);
    DISPPARAMS parameters{&any, nullptr, 1, 0};
    EXPECT_EQ(
        object()->Invoke(23, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
        DISP_E_EXCEPTION);
}

TEST_F(AutomationDispatch, ReadsTheDefaultMemberOfWhatAPropertyHolds) {
    fake_->items->entries().add(Variant(L"value"));
    EXPECT_EQ(show(call(L"Items", {arg(1L)}).result), L"'value'");
    EXPECT_EQ(call(L"Items", {arg(2L)}).error, static_cast<HRESULT>(0x800A0009));
    fake_->items.Reset();
    EXPECT_EQ(call(L"Items", {arg(1L)}).outcome, DISP_E_BADPARAMCOUNT);
}

TEST_F(AutomationDispatch, TakesObjectsAndNothingButNoOthers) {
    Variant nothing(static_cast<IDispatch*>(nullptr));
    for (const VARIANT& none :
         std::initializer_list<VARIANT>{nothing, byReference(nothing), {}, null()}) {
        fake_->seen.clear();
        EXPECT_EQ(call(L"AddItem", {none}).outcome, S_OK);
        EXPECT_EQ(fake_->seen, L"none");
    }
    fake_->seen.clear();
    for (const Variant& other : {Variant(1L), Variant(object())}) {
        EXPECT_EQ(call(L"AddItem", {other}).outcome, DISP_E_TYPEMISMATCH);
        EXPECT_EQ(fake_->seen, L"");
    }
}

}  // namespace
}  // namespace vela
