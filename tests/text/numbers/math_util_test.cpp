// What MathUtil takes from the platform and from its callers' variants.
#include "text/numbers/MathUtil.h"

#include "automation/late_objects.h"
#include "text/user_locale.h"

namespace vela::test {
namespace {

constexpr LCID kPortugal = 0x0816;
constexpr LCID kAmerica = 0x0409;

Called late(const wchar_t* name, const std::vector<Variant>& arguments) {
    return callWith(create(L"VelaUtil10.MathUtil").Get(), name, arguments);
}
std::wstring text(const wchar_t* name, const std::vector<Variant>& arguments) {
    const Called called = late(name, arguments);
    EXPECT_EQ(called.outcome, S_OK) << name;
    return textOf(called.result);
}

Variant real(double value) { return Variant(arg(value)); }
Variant none(VARTYPE type) {
    Variant value;
    value.vt = type;
    return value;
}

// An array of 16-bit numbers from `lower` on.
Variant shortsOf(const std::vector<short>& numbers, LONG lower) {
    Variant array = none(VT_ARRAY | VT_I2);
    array.parray = SafeArrayCreateVector(VT_I2, lower, static_cast<ULONG>(numbers.size()));
    std::copy(numbers.begin(), numbers.end(), static_cast<short*>(array.parray->pvData));
    return array;
}

TEST(TextMathUtil, ReadsTextByTheLocaleOrGivesZero) {
    const std::tuple<const wchar_t*, LCID, double, short> table[] = {
        {L" -1,234.5 ", kAmerica, -1234.5, -1234},
        {L"2.5", kAmerica, 2.5, 2},
        {L"12,5", kPortugal, 12.5, 12},
        {L"12.5x", kAmerica, 0, 0},
        {L"", kAmerica, 0, 0},
        {L"40000", kAmerica, 40000, 0},
    };
    for (const auto& [text, locale, number, whole] : table) {
        const Bstr copy(text);
        EXPECT_EQ(doubleIn(copy.get(), locale), number) << text;
        EXPECT_EQ(singleIn(copy.get(), locale), static_cast<float>(number)) << text;
        EXPECT_EQ(currencyIn(copy.get(), locale).int64, number * 10'000) << text;
        EXPECT_EQ(shortIn(copy.get(), locale), whole) << text;
    }
    EXPECT_EQ(longIn(Bstr(L"2147483648").get(), kAmerica), 0);
    EXPECT_EQ(doubleIn(nullptr), 0);
    EXPECT_EQ(currencyIn(Bstr(L"1e15").get(), kAmerica).int64, 0);
    EXPECT_EQ(sqlNumber(Bstr(L"1234,5").get(), kPortugal), L"1234.5");
    EXPECT_EQ(thousandsSeparator(kAmerica) + decimalSeparator(kAmerica), L",.");
    EXPECT_EQ(decimalSeparator(kPortugal), L",");
}

TEST(TextMathUtil, ClearsThePendingErrorOnlyAfterFailedAmountsAndDoubles) {
    const std::tuple<const wchar_t*, const wchar_t*, bool> table[] = {
        {L"ValC", L"x", false}, {L"ValD", L"x", false}, {L"ValI", L"x", true},
        {L"ValC", L"0", true},  {L"ValD", L"0", true},
    };
    for (const auto& [name, given, stays] : table) {
        ComPtr<ICreateErrorInfo> creator;
        ComPtr<IErrorInfo> pending, left;
        ASSERT_EQ(CreateErrorInfo(&creator), S_OK);
        ASSERT_EQ(creator.As(&pending), S_OK);
        SetErrorInfo(0, pending.Get());
        EXPECT_EQ(text(name, {Variant(given)}), L"0");
        GetErrorInfo(0, &left);
        EXPECT_EQ(left.Get(), stays ? pending.Get() : nullptr) << name;
    }
}

TEST(TextMathUtil, ComparesValuesOfAnyKind) {
    const Variant one(1L);
    const std::tuple<Variant, Variant, const wchar_t*, const wchar_t*> table[] = {
        {Variant(10L), real(9.5), L"10", L"9.5"},
        {Variant(L"10"), Variant(L"9"), L"9", L"10"},
        {Variant(10L), Variant(L"9"), L"9", L"10"},
        {converted(real(2.5), VT_CY), real(2.4), L"2.5", L"2.4"},
        {Variant(-1L), none(VT_EMPTY), L"", L"-1"},
        {none(VT_NULL), one, L"1", L"1"},
        {arrayOf({one}), one, L"1", L"1"},
    };
    for (const auto& [first, second, greater, lesser] : table) {
        EXPECT_EQ(text(L"Max", {first, second}), greater);
        EXPECT_EQ(text(L"Min", {first, second}), lesser);
    }
}

TEST(TextMathUtil, TakesValuesOfAnyKindAsNumbers) {
    EXPECT_EQ(text(L"ParteInteira", {converted(real(-1.2), VT_CY)}), L"-2");
    EXPECT_EQ(text(L"ParteInteira", {Variant(L"3.2")}), L"3");
    for (const Variant& other : {none(VT_NULL), real(3e9), arrayOf({})}) {
        EXPECT_EQ(text(L"ParteInteira", {other}), L"0");
    }
    EXPECT_EQ(text(L"ParteDecimal", {real(0.5), Variant(400L)}), L"0");
    EXPECT_EQ(text(L"Arredondar", {Variant(L"-2.345"), Variant(4L)}), L"-2.35");
    EXPECT_EQ(text(L"HexToLong", {Variant(L"123456789")}), L"0");
    const Called tooLarge = late(L"Base36ToLong", {Variant(L"zzzzzzz")});
    EXPECT_EQ(tooLarge.error, HRESULT(0x800A0006));
    EXPECT_EQ(tooLarge.source + L": " + tooLarge.description, L"VelaUtil10: Overflow");
}

TEST(TextMathUtil, WritesArraysOfAnyNumbersAsHexadecimalText) {
    SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
    Variant plane = none(VT_ARRAY | VT_UI1);
    plane.parray = SafeArrayCreate(VT_UI1, 2, bounds);
    const Variant bytes = late(L"HexToBinary", {Variant(L"00ff1")}).result;
    const Variant noBytes = late(L"HexToBinary", {Variant(L"")}).result;
    std::pair<Variant, const wchar_t*> table[] = {
        {bytes, L"00FF01"},
        {noBytes, L""},
        {shortsOf({-1, 0x1234}, -1), L"FF34"},
        {arrayOf({Variant(255L), Variant(L"16"), none(VT_EMPTY), real(1.5)}, 3), L"FF100002"},
        {arrayOf({Variant(1L), Variant(L"x")}), L""},
        {plane, L""},
        {Variant(L"text"), L""},
    };
    for (auto& [value, digits] : table) {
        const VARTYPE type = value.vt;
        EXPECT_EQ(text(L"BinaryToHex", {Variant(byReference(value))}), digits);
        EXPECT_EQ(value.vt, type) << digits;
    }
    // As compiled programs pass arrays.
    const auto math = create(L"VelaUtil10.MathUtil");
    VARIANT typed{};
    typed.vt = VT_BYREF | VT_ARRAY | VT_UI1;
    typed.pparray = const_cast<SAFEARRAY**>(&bytes.parray);
    EXPECT_EQ(textOf(call(math.Get(), L"BinaryToHex", {typed}).result), L"00FF01");
    EXPECT_EQ(noBytes.parray->rgsabound[0].cElements, 0u);
}

TEST(TextMathUtil, SortsFromPositionOneOn) {
    using Numbers = std::vector<short>;
    const std::tuple<Numbers, LONG, Numbers, HRESULT> table[] = {
        {{9, 3, -5, 3, 1}, 0, {9, -5, 1, 3, 3}, S_OK}, {{9, 3, -5}, 1, {-5, 3, 9}, S_OK},
        {{9, 8, 7, 6, 5}, -2, {9, 8, 7, 5, 6}, S_OK},  {{}, 0, {}, S_OK},
        {{2, 1}, 2, {2, 1}, HRESULT(0x800A0009)},
    };
    const auto math = createAs<_MathUtil>(L"VelaUtil10.MathUtil");
    for (const auto& [numbers, lower, sorted, outcome] : table) {
        Variant array = shortsOf(numbers, lower);
        EXPECT_EQ(math->OrdenarArrayINT(&array.parray), outcome) << lower;
        const auto* first = static_cast<short*>(array.parray->pvData);
        EXPECT_EQ(Numbers(first, first + numbers.size()), sorted) << lower;
    }
    SAFEARRAY* undimensioned = nullptr;
    EXPECT_EQ(math->OrdenarArrayINT(&undimensioned), S_OK);
}

}  // namespace
}  // namespace vela::test
