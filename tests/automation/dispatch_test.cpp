// Late-bound calls: finding members, binding and converting arguments, handing results and errors
// back.
#include "automation/dispatch.h"

#include "automation/late_objects.h"
#include "serialization/Switches.h"
#include "text/TextUtil.h"
#include "text/numbers/MathUtil.h"

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
        case VT_I2: return L"int16 " + textOf(value);
        case VT_I4: return L"int32 " + textOf(value);
        case VT_CY: return L"currency " + textOf(value);
        case VT_BSTR: return L"'" + textOf(value) + L"'";
        case VT_DISPATCH: return value.pdispVal ? L"object" : L"Nothing";
        default: return textOf(value);
    }
}

// "lower: element element ...", with each element's type.
std::wstring show(SAFEARRAY* variants) {
    const SAFEARRAYBOUND& bound = variants->rgsabound[0];
    std::wstring shown = std::to_wstring(bound.lLbound) + L":";
    for (ULONG i = 0; i < bound.cElements; ++i) {
        shown += L" " + show(static_cast<VARIANT*>(variants->pvData)[i]);
    }
    return shown;
}

VARIANT reference(VARTYPE type, void* place) {
    VARIANT v{};
    v.vt = static_cast<VARTYPE>(VT_BYREF | type);
    v.byref = place;
    return v;
}

// Fails as told, and shows how a property was set.
class Fake final : public Object<Fake, Unbuilt<_TextUtil>, Unbuilt<_IUPDataSource>> {
  public:
    std::wstring seen;
    std::function<void()> failing;

    HRESULT STDMETHODCALLTYPE UTrim(BSTR, BSTR* result) override {
        return answer(result, [&] { return failing(), std::wstring(); });
    }
    HRESULT STDMETHODCALLTYPE put_DataSource(VARIANT value) override {
        return seen = L"let " + show(value), S_OK;
    }
    HRESULT STDMETHODCALLTYPE putref_DataSource(VARIANT value) override {
        return seen = L"set " + show(value), S_OK;
    }
};

class AutomationDispatch : public test::NoObjectsLeft {
  protected:
    // Calls a member of TextUtil or MathUtil.
    Called call(const wchar_t* name, const std::vector<VARIANT>& arguments) {
        const Called called = test::call(text_.Get(), name, arguments);
        if (called.outcome != DISP_E_UNKNOWNNAME) return called;
        return test::call(math_.Get(), name, arguments);
    }
    IDispatch* fake() { return static_cast<_TextUtil*>(fake_.Get()); }

    const ComPtr<_TextUtil> text_ = make<TextUtil>();
    const ComPtr<_MathUtil> math_ = make<MathUtil>();
    const ComPtr<Fake> fake_ = make<Fake>();
};

TEST_F(AutomationDispatch, ConvertsArgumentsAndTellsWhichDoNotFit) {
    const Variant a(L"a");
    const Variant one(1L);
    const Variant large(40000L);
    const Variant missing = Variant::missing();
    Variant null;
    null.vt = VT_NULL;
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
        {L"StrAlinhar", {Variant(12L), Variant(L" 3 ")}, L"'12 '"},
        {L"StrAlinhar", {Variant(arg(true)), Variant(arg(2.5))}, L"'Tr'"},
        {L"StrAlinhar", {a, Variant(3L), missing, Variant(9L)}, L"'a99'"},
        {L"StrAlinhar", {null, one}, L"Empty", DISP_E_TYPEMISMATCH, 1},
        {L"SoNumeros", {Variant(L"-1")}, L"False"},
        {L"SoNumeros", {Variant(L"-1"), Variant(L"true")}, L"True"},
        {L"SoNumeros", {a, Variant(L"perhaps")}, L"Empty", DISP_E_TYPEMISMATCH, 0},
        {L"Arredondar", {Variant(12L), Variant(2L)}, L"currency 12"},
        {L"MudaChar", {}, L"Empty", DISP_E_PARAMNOTOPTIONAL},
        {L"MudaChar", {a, missing, a}, L"Empty", DISP_E_PARAMNOTOPTIONAL},
        {L"MudaChar", {a, a, a, a}, L"Empty", DISP_E_BADPARAMCOUNT},
        {L"ProcuraAbrirFechar", {a, a, a, one}, L"Empty", DISP_E_TYPEMISMATCH, 1},
        {L"ProcuraAbrirFechar", {a, a, one, large}, L"Empty", DISP_E_OVERFLOW, 0},
        {L"OrdenarArrayStr", {a}, L"Empty", DISP_E_TYPEMISMATCH, 0},
        {L"OrdenarArrayStr", {square}, L"Empty", DISP_E_TYPEMISMATCH, 0},
        {L"OrdenarArrayINT", {arrayOf({large})}, L"Empty", DISP_E_OVERFLOW, 0},
        {L"UTrims", {a}, L"Empty", DISP_E_UNKNOWNNAME},
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
    }
}

// Members have one face only; the parameter for others is reserved.
TEST_F(AutomationDispatch, RefusesOtherInterfaces) {
    const auto object = make<Fake>();
    DISPPARAMS none{};
    Variant result;
    wchar_t name[] = L"UTrim";
    wchar_t* names[] = {name};
    DISPID id = 0;
    EXPECT_EQ(object->GetIDsOfNames(IID_IDispatch, names, 1, 0, &id), DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(
        object->Invoke(0, IID_IDispatch, 0, DISPATCH_PROPERTYGET, &none, &result, nullptr, nullptr),
        DISP_E_UNKNOWNINTERFACE);
}

TEST_F(AutomationDispatch, BindsArgumentsByName) {
    const struct {
        std::vector<const wchar_t*> names;
        std::vector<VARIANT> values;  // those of the names, then the others from the last to first
        const wchar_t* result;
        HRESULT outcome = S_OK;
    } cases[] = {
        {{L"CARACTERPREENCHIMENTO", L"tamanho", L"str"}, {arg(7L), arg(3L), arg(9L)}, L"'977'"},
        {{L"alinhar"}, {arg(1L), arg(3L), arg(9L)}, L"'  9'"},
        {{L"alinhar"}, {arg(1L), arg(9L)}, L"Empty", DISP_E_PARAMNOTOPTIONAL},
        {{L"str"}, {arg(2L), arg(3L), arg(1L)}, L"Empty", DISP_E_PARAMNOTFOUND},
    };
    for (auto [names, values, result, outcome] : cases) {
        SCOPED_TRACE(names[0]);
        const auto named = static_cast<UINT>(names.size());
        names.insert(names.begin(), L"StrAlinhar");
        DISPID ids[4];
        Variant returned;
        text_->GetIDsOfNames(IID_NULL, const_cast<wchar_t**>(names.data()), named + 1, 0, ids);
        DISPPARAMS parameters{values.data(), ids + 1, static_cast<UINT>(values.size()), named};
        EXPECT_EQ(text_->Invoke(ids[0], IID_NULL, 0, DISPATCH_METHOD, &parameters, &returned,
                                nullptr, nullptr),
                  outcome);
        EXPECT_EQ(show(returned), result);
    }
}

TEST_F(AutomationDispatch, WritesBackOnlyWhatChangesIntoVariablesOfAnyType) {
    const std::pair<Variant, const wchar_t*> cases[] = {{Variant(), L"Empty"},
                                                        {Variant(L"41"), L"'41'"},
                                                        {Variant(arg(short{5})), L"int16 5"},
                                                        {Variant(70L), L"int32 70"},
                                                        {Variant(arg(2.0)), L"2"},
                                                        {Variant(arg(true)), L"True"}};
    for (const auto& [before, shown] : cases) {
        Variant changed = before;
        Variant same = before;
        Variant equal = before;
        call(L"swapint", {byReference(changed), arg(9L)});
        EXPECT_EQ(show(changed), L"int16 9");
        call(L"swapint", {byReference(same), byReference(equal)});
        EXPECT_EQ(show(same), shown);
    }
}

TEST_F(AutomationDispatch, WritesBackThroughTypedReferences) {
    SHORT i2 = 5;
    LONG i4 = 41;
    BYTE byte = 255;  // 256 does not fit: it stays
    BSTR string = SysAllocString(L"7");
    VARIANT inner = reference(VT_I4, &i4);
    for (const VARIANT& place : {reference(VT_I2, &i2), byReference(inner),
                                 reference(VT_UI1, &byte), reference(VT_BSTR, &string), arg(1L)}) {
        EXPECT_EQ(call(L"SwapInt", {place, arg(256L)}).outcome, S_OK);
    }
    EXPECT_EQ(i2, 256);
    EXPECT_EQ(i4, 256);
    EXPECT_EQ(byte, 255);
    EXPECT_EQ(text(string), L"256");

    // A member that wants a variant writes any type into the caller's own.
    EXPECT_EQ(call(L"CopyStr", {arg(12L), reference(VT_BSTR, &string)}).outcome, S_OK);
    EXPECT_EQ(Bstr::owning(string).view(), L"12");
    Variant variable(3L);
    EXPECT_EQ(call(L"CopyStr", {arg(text_.Get()), byReference(variable)}).outcome, S_OK);
    EXPECT_EQ(variable.pdispVal, text_.Get());
}

TEST_F(AutomationDispatch, ConvertsArraysAndCopiesThemBack) {
    const Variant numbers = arrayOf({Variant(2L), Variant(L"1")}, 1);
    const struct {
        const wchar_t* member;
        Variant variable;
        const wchar_t* after;
        HRESULT outcome = S_OK;
    } cases[] = {
        {L"OrdenarArrayStr", arrayOf({Variant(L"b"), Variant(1L), Variant(L"a")}, 3),
         L"3: '1' 'a' 'b'"},
        {L"OrdenarArrayStr", arrayOf({}), L"0:"},
        {L"OrdenarArrayINT", numbers, L"1: int16 1 int16 2"},
        {L"OrdenarArrayINT", arrayOf({Variant(2L), Variant(L"one")}, 1), L"1: int32 2 'one'",
         DISP_E_TYPEMISMATCH},
    };
    for (auto [member, variable, after, outcome] : cases) {
        EXPECT_EQ(call(member, {byReference(variable)}).outcome, outcome);
        ASSERT_EQ(variable.vt, VT_ARRAY | VT_VARIANT);
        EXPECT_EQ(show(variable.parray), after);
    }
    // By value the caller's array stays as it was.
    EXPECT_EQ(call(L"OrdenarArrayINT", {numbers}).outcome, S_OK);
    EXPECT_EQ(show(numbers.parray), L"1: int32 2 '1'");

    // Typed arrays: the member's own type, and another.
    SAFEARRAY* own = SafeArrayCreateVector(VT_I2, 1, 2);
    SAFEARRAY* other = SafeArrayCreateVector(VT_I4, 1, 2);
    static_cast<SHORT*>(own->pvData)[0] = 2;
    static_cast<LONG*>(other->pvData)[0] = 2;
    call(L"OrdenarArrayINT", {reference(VT_ARRAY | VT_I2, &own)});
    call(L"OrdenarArrayINT", {reference(VT_ARRAY | VT_I4, &other)});
    EXPECT_EQ(static_cast<SHORT*>(own->pvData)[1], 2);
    EXPECT_EQ(static_cast<LONG*>(other->pvData)[1], 2);
    SafeArrayDestroy(own);
    SafeArrayDestroy(other);
}

TEST_F(AutomationDispatch, TellsAssignmentOfValuesFromThatOfObjects) {
    constexpr WORD kLet = DISPATCH_PROPERTYPUT;
    constexpr WORD kSet = DISPATCH_PROPERTYPUTREF;
    const VARIANT value = arg(3L);
    const VARIANT held = arg(fake());
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
        EXPECT_EQ(test::call(fake(), L"datasource", {given}, flags).outcome, S_OK);
        EXPECT_EQ(fake_->seen, seen) << flags;
    }
    // A read-only property and a method take none, and reading does not run a method.
    for (const auto& [name, flags] :
         {std::pair(L"SeparadorMilhares", kLet), std::pair(L"ValS", kLet),
          std::pair(L"ValS", WORD{DISPATCH_PROPERTYGET})}) {
        EXPECT_EQ(test::call(math_.Get(), name, {value}, flags).outcome, DISP_E_MEMBERNOTFOUND);
    }
}

TEST_F(AutomationDispatch, PassesErrorsOnWithNumberSourceAndDescription) {
    const struct {
        void (*failing)();
        HRESULT number;
        const wchar_t *source, *description;
    } cases[] = {
        {[] { throw Error{-1, L"Notificacoes", L"Tag inválida"}; }, -1, L"Notificacoes",
         L"Tag inválida"},
        {[] { raise(RuntimeError::Overflow); }, static_cast<HRESULT>(0x800A0006), L"VelaUtil10",
         L"Overflow"},
        {[] { throw std::bad_alloc(); }, E_OUTOFMEMORY, L"VelaUtil10", L"Out of memory"},
        {[] { throw 7; }, E_UNEXPECTED, L"VelaUtil10", L"Unexpected failure"},
    };
    for (const auto& [failing, number, source, description] : cases) {
        fake_->failing = failing;
        const Called called = test::call(fake(), L"UTrim", {arg(0L)});
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
        fake()->Invoke(23, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
        DISP_E_EXCEPTION);
}

TEST_F(AutomationDispatch, TakesObjectsAndNothingButNoOthers) {
    const ComPtr<_Switches> switches = make<Switches>();
    Variant nothing(static_cast<IDispatch*>(nullptr));
    for (const VARIANT& none : std::vector<VARIANT>{nothing, byReference(nothing), {}}) {
        EXPECT_EQ(test::call(switches.Get(), L"Add", {none}).outcome, DISP_E_EXCEPTION);
    }
    for (const VARIANT& other : {arg(1L), arg(fake())}) {
        EXPECT_EQ(test::call(switches.Get(), L"Add", {other}).outcome, DISP_E_TYPEMISMATCH);
    }
}

}  // namespace
}  // namespace vela
