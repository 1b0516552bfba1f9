// What MathUtil takes from the platform and from its callers' variants.
#include "text/MathUtil.h"

#include "automation/late_bound.h"
#include "text/md5.h"
#include "text/user_locale.h"

namespace vela::test {
namespace {

constexpr LCID kPortugal = 0x0816;
constexpr LCID kAmerica = 0x0409;

class TextMathUtil : public ::testing::Test {
  protected:
    Called late(const wchar_t* name, const std::vector<Variant>& arguments) {
        return callWith(math_.Get(), name, arguments);
    }
    std::wstring text(const wchar_t* name, const std::vector<Variant>& arguments) {
        const Called called = late(name, arguments);
        EXPECT_EQ(called.outcome, S_OK) << name;
        return textOf(called.result);
    }
    const ComPtr<IDispatch> math_ = create(L"VelaUtil10.MathUtil");
};

Variant real(double value) { return Variant(arg(value)); }
Variant none(VARTYPE type) {
    Variant value;
    value.vt = type;
    return value;
}
Variant amount(std::int64_t tenThousandths) {
    Variant value = none(VT_CY);
    value.cyVal.int64 = tenThousandths;
    return value;
}

TEST_F(TextMathUtil, ReadsTextByTheLocaleOrGivesZero) {
    struct {
        const wchar_t* text;
        LCID locale;
        double expected;
        short whole;
    } const table[] = {
        {L" -1,234.5 ", kAmerica, -1234.5, -1234},
        {L"2.5", kAmerica, 2.5, 2},
        {L"12,5", kPortugal, 12.5, 12},
        {L"12.5x", kAmerica, 0, 0},
        {L"", kAmerica, 0, 0},
        {L"40000", kAmerica, 40000, 0},
    };
    for (const auto& row : table) {
        const Bstr text(row.text);
        EXPECT_EQ(doubleIn(text.get(), row.locale), row.expected) << row.expected;
        EXPECT_EQ(singleIn(text.get(), row.locale), static_cast<float>(row.expected));
        EXPECT_EQ(currencyIn(text.get(), row.locale).int64, row.expected * 10'000);
        EXPECT_EQ(shortIn(text.get(), row.locale), row.whole);
    }
    EXPECT_EQ(longIn(Bstr(L"2147483648").get(), kAmerica), 0);
    EXPECT_EQ(doubleIn(nullptr), 0);
    EXPECT_EQ(currencyIn(Bstr(L"1e15").get(), kAmerica).int64, 0);
    EXPECT_EQ(sqlNumber(Bstr(L"1234,5").get(), kPortugal), L"1234.5");
    EXPECT_EQ(sqlNumber(Bstr(L"abc").get(), kAmerica), L"0");
    EXPECT_EQ(thousandsSeparator(kAmerica) + decimalSeparator(kAmerica), L",.");
    EXPECT_EQ(decimalSeparator(kPortugal), L",");
}

TEST_F(TextMathUtil, ClearsThePendingErrorOnlyAfterFailedAmountsAndDoubles) {
    struct {
        const wchar_t *name, *text;
        bool left;
    } const table[] = {
        {L"ValC", L"x", false}, {L"ValD", L"x", false},
        {L"ValI", L"x", true},  {L"ValL", L"x", true},
        {L"ValS", L"x", true},  {L"ValC", L"1", true},
        {L"ValD", L"1", true},  {L"QueConteudoSql", L"x", false},
    };
    for (const auto& row : table) {
        ComPtr<ICreateErrorInfo> creator;
        ComPtr<IErrorInfo> pending, left;
        ASSERT_EQ(CreateErrorInfo(&creator), S_OK);
        ASSERT_EQ(creator.As(&pending), S_OK);
        SetErrorInfo(0, pending.Get());
        EXPECT_EQ(text(row.name, {Variant(row.text)}),
                  row.text == std::wstring(L"1") ? L"1" : L"0");
        GetErrorInfo(0, &left);
        EXPECT_EQ(left.Get() == pending.Get(), row.left) << row.name;
        EXPECT_EQ(left.Get() == nullptr, !row.left) << row.name;
    }
}

TEST_F(TextMathUtil, ComparesValuesOfAnyKind) {
    Variant unsignedMost = none(VT_UI4);
    unsignedMost.ulVal = 0xFFFFFFFF;
    const Variant one(1L);
    struct {
        Variant first, second;
        const wchar_t *greater, *lesser;
    } const table[] = {
        {Variant(10L), real(9.5), L"10", L"9.5"},
        {Variant(L"10"), Variant(L"9"), L"9", L"10"},
        {Variant(10L), Variant(L"9"), L"9", L"10"},
        {Variant(L"5"), Variant(L"5"), L"5", L"5"},
        {unsignedMost, one, L"4294967295", L"1"},
        {amount(25'000), real(2.4), L"2.5", L"2.4"},
        {Variant(-1L), none(VT_EMPTY), L"", L"-1"},
        {none(VT_NULL), one, L"1", L"1"},
        {Variant(static_cast<IDispatch*>(nullptr)), one, L"1", L"1"},
        {arrayOf({one}), one, L"1", L"1"},
    };
    for (const auto& row : table) {
        EXPECT_EQ(text(L"Max", {row.first, row.second}), row.greater) << row.greater;
        EXPECT_EQ(text(L"Min", {row.first, row.second}), row.lesser) << row.lesser;
    }
    EXPECT_EQ(late(L"Max", {one, real(1)}).result.vt, VT_R8);
}

TEST_F(TextMathUtil, TakesTheIntegerPartOfAnyNumber) {
    struct {
        Variant value;
        const wchar_t* expected;
    } const table[] = {
        {real(2.7), L"2"},        {Variant(3L), L"2"},     {Variant(4L), L"4"},
        {amount(-12'000), L"-2"}, {Variant(L"3.2"), L"3"}, {none(VT_EMPTY), L"0"},
        {Variant(L"x"), L"0"},    {none(VT_NULL), L"0"},   {real(3e9), L"0"},
        {arrayOf({}), L"0"},      {real(-1.2), L"-2"},
    };
    for (const auto& row : table) EXPECT_EQ(text(L"ParteInteira", {row.value}), row.expected);
}

TEST_F(TextMathUtil, ReportsWhatMoneyCannotHold) {
    EXPECT_EQ(text(L"Arredondar", {Variant(L"-2.345"), Variant(4L)}), L"-2.35");
    EXPECT_EQ(late(L"Arredondar", {Variant(1L), Variant(-3L)}).error, HRESULT(0x800A000B));
    EXPECT_EQ(late(L"Arredondar", {Variant(1L), Variant(17L)}).error, HRESULT(0x800A0006));
    EXPECT_EQ(late(L"Base36ToLong", {Variant(L"-1")}).error, HRESULT(0x800A0005));
    const Called tooLarge = late(L"Base36ToLong", {Variant(L"zzzzzzz")});
    EXPECT_EQ(tooLarge.error, HRESULT(0x800A0006));
    EXPECT_EQ(tooLarge.source + L": " + tooLarge.description, L"VelaUtil10: Overflow");
    EXPECT_EQ(text(L"HexToLong", {Variant(L"123456789")}), L"0");
    EXPECT_EQ(text(L"ParteDecimal", {real(0.5), Variant(400L)}), L"0");
}

TEST_F(TextMathUtil, WritesArraysOfAnyNumbersAsHexadecimalText) {
    Variant shorts = none(VT_ARRAY | VT_I2);
    shorts.parray = SafeArrayCreateVector(VT_I2, -1, 2);
    for (LONG i : {-1L, 0L}) {
        SHORT value = static_cast<SHORT>(i == 0 ? 0x1234 : -1);
        SafeArrayPutElement(shorts.parray, &i, &value);
    }
    SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
    Variant plane = none(VT_ARRAY | VT_UI1);
    plane.parray = SafeArrayCreate(VT_UI1, 2, bounds);
    Variant bytes = late(L"HexToBinary", {Variant(L"00ff1")}).result;
    struct {
        Variant value;
        const wchar_t* expected;
    } const table[] = {
        {bytes, L"00FF01"},
        {shorts, L"FF34"},
        {arrayOf({Variant(255L), Variant(L"16"), none(VT_EMPTY), real(1.5)}, 3), L"FF100002"},
        {arrayOf({Variant(1L), Variant(L"x")}), L""},
        {plane, L""},
        {none(VT_ARRAY | VT_UI1), L""},
        {Variant(L"text"), L""},
        {late(L"HexToBinary", {Variant(L"")}).result, L""},
    };
    for (const auto& row : table) {
        const std::size_t i = static_cast<std::size_t>(&row - table);
        EXPECT_EQ(text(L"BinaryToHex", {row.value}), row.expected) << i;
        Variant variable(row.value);
        EXPECT_EQ(textOf(call(math_.Get(), L"BinaryToHex", {byReference(variable)}).result),
                  row.expected);
        EXPECT_EQ(variable.vt, row.value.vt);
    }
    VARIANT typed{};
    typed.vt = VT_BYREF | VT_ARRAY | VT_UI1;
    typed.pparray = &bytes.parray;
    SafeArrayLock(bytes.parray);
    EXPECT_EQ(textOf(call(math_.Get(), L"BinaryToHex", {typed}).result), L"00FF01");
    EXPECT_EQ(bytes.parray->cLocks, 1u);
    SafeArrayUnlock(bytes.parray);
    LONG upper = 0;
    EXPECT_EQ(SafeArrayGetUBound(late(L"HexToBinary", {Variant(L"")}).result.parray, 1, &upper),
              S_OK);
    EXPECT_EQ(upper, -1);
}

// The numbers of an array of 16-bit numbers from `lower` on, sorted.
std::vector<short> sorted(std::vector<short> numbers, LONG lower, HRESULT expected = S_OK) {
    const auto math = createAs<_MathUtil>(L"VelaUtil10.MathUtil");
    const ULONG count = static_cast<ULONG>(numbers.size());
    Variant array = none(VT_ARRAY | VT_I2);
    array.parray = SafeArrayCreateVector(VT_I2, lower, count);
    std::copy(numbers.begin(), numbers.end(), static_cast<short*>(array.parray->pvData));
    EXPECT_EQ(math->OrdenarArrayINT(&array.parray), expected);
    const auto* first = static_cast<short*>(array.parray->pvData);
    return {first, first + count};
}

TEST_F(TextMathUtil, SortsFromPositionOneOn) {
    using Numbers = std::vector<short>;
    EXPECT_EQ(sorted({9, 3, -5, 3, 1}, 0), (Numbers{9, -5, 1, 3, 3}));
    EXPECT_EQ(sorted({9, 3, -5}, 1), (Numbers{-5, 3, 9}));
    EXPECT_EQ(sorted({9, 8, 7, 6, 5}, -2), (Numbers{9, 8, 7, 5, 6}));
    EXPECT_EQ(sorted({2, 1}, -5), (Numbers{2, 1}));
    EXPECT_EQ(sorted({}, 0), Numbers());
    EXPECT_EQ(sorted({2, 1}, 2, HRESULT(0x800A0009)), (Numbers{2, 1}));
    SAFEARRAY* undimensioned = nullptr;
    EXPECT_EQ(createAs<_MathUtil>(L"VelaUtil10.MathUtil")->OrdenarArrayINT(&undimensioned), S_OK);
    Variant variable = arrayOf({Variant(7L), Variant(30L), Variant(L"4")});
    EXPECT_EQ(call(math_.Get(), L"OrdenarArrayINT", {byReference(variable)}).outcome, S_OK);
    EXPECT_EQ(variable.vt, VT_ARRAY | VT_VARIANT);
    std::wstring seen;
    for (LONG i = 0; i < 3; ++i) {
        Variant element;
        SafeArrayGetElement(variable.parray, &i, &element);
        seen += textOf(element) + L" ";
    }
    EXPECT_EQ(seen, L"7 4 30 ");
}

TEST_F(TextMathUtil, DigestsTheBytesOfText) {
    EXPECT_EQ(md5OfAnsi(L""), L"d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(md5OfUtf16(L""), L"d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(text(L"CriarMD5", {Variant(L"message digest")}), L"f96b697d7cb7938d525a2f31aaf161d0");
    EXPECT_EQ(text(L"CriarMD5b", {Variant(L"abc")}), L"ce1473cf80c6b3fda8e3dfc006adc315");
    EXPECT_EQ(md5OfAnsi(std::wstring(1, L'\0')), L"93b885adfe0da089cdf634904fd59f71");
}

}  // namespace
}  // namespace vela::test
