#include "text/numbers/MathUtil.h"

#include "text/ansi_bytes.h"
#include "text/codecs/md5.h"
#include "text/numbers/core/bits.h"
#include "text/numbers/core/extenso.h"
#include "text/numbers/core/fixed_point.h"
#include "text/numbers/core/number_bases.h"
#include "text/numbers/core/rounding.h"
#include "text/numbers/number_arrays.h"
#include "text/numbers/variant_numbers.h"
#include "text/user_locale.h"

namespace vela {

namespace {

constexpr int kBase36 = 36;

template <class Number>
HRESULT exchange(Number* first, Number* second) {
    if (!first || !second) return E_POINTER;
    std::swap(*first, *second);
    return S_OK;
}

// The digest of the units' bytes, low byte first, as 32 digits with letters in lower case.
template <class Units>
std::wstring md5Text(const Units& units) {
    return hexText(md5(std::as_bytes(std::span(units))), L"0123456789abcdef");
}

}  // namespace

HRESULT MathUtil::ValC(BSTR value, CY* result) {
    return answer(result, [&] { return currencyIn(value).int64; });
}

HRESULT MathUtil::ValD(BSTR value, DOUBLE* result) {
    return answer(result, [&] { return doubleIn(value); });
}

HRESULT MathUtil::ValI(BSTR value, SHORT* result) {
    return answer(result, [&] { return shortIn(value); });
}

HRESULT MathUtil::ValL(BSTR value, LONG* result) {
    return answer(result, [&] { return longIn(value); });
}

HRESULT MathUtil::ValS(BSTR value, FLOAT* result) {
    return answer(result, [&] { return singleIn(value); });
}

HRESULT MathUtil::Extenso(CY number, BSTR currency, BSTR* result) {
    return answer(result, [&] { return inWords(number.int64, text(currency)); });
}

HRESULT MathUtil::Arredondar(CY value, SHORT kind, CY* result) {
    return answer(result, [&] { return rounded(value.int64, kind); });
}

HRESULT MathUtil::SwapInt(SHORT* first, SHORT* second) { return exchange(first, second); }

HRESULT MathUtil::SwapLong(LONG* first, LONG* second) { return exchange(first, second); }

HRESULT MathUtil::OrdenarArrayINT(SAFEARRAY** array) {
    if (!array) return E_POINTER;
    return guard([&] { sortFromOne(*array); });
}

HRESULT MathUtil::DoisExpX(SHORT x, LONG* result) {
    return answer(result, [&] { return powerOfTwo(x); });
}

HRESULT MathUtil::Max(VARIANT first, VARIANT second, VARIANT* result) {
    return answerQuietly(result, [&] { return greater(first, second); });
}

HRESULT MathUtil::Min(VARIANT first, VARIANT second, VARIANT* result) {
    return answerQuietly(result, [&] { return lesser(first, second); });
}

HRESULT MathUtil::CriarMD5(BSTR value, BSTR* result) {
    return answerQuietly(result, [&] { return md5Text(ansiBytes(text(value))); });
}

HRESULT MathUtil::ParteDecimal(DOUBLE value, SHORT decimals, LONG* result) {
    return answerQuietly(result, [&] { return fractionAsWhole(value, decimals); });
}

HRESULT MathUtil::BitTrue(LONG value, SHORT bit, VARIANT_BOOL* result) {
    return answer(result, [&] { return isBitSet(value, bit); });
}

HRESULT MathUtil::get_SeparadorMilhares(BSTR* result) {
    return answerQuietly(result, [] { return thousandsSeparator(); });
}

HRESULT MathUtil::get_SeparadorDecimais(BSTR* result) {
    return answerQuietly(result, [] { return decimalSeparator(); });
}

HRESULT MathUtil::ParteInteira(VARIANT value, LONG* result) {
    return answerQuietly(result, [&] { return integerPart(value); });
}

HRESULT MathUtil::QueConteudoSql(BSTR value, BSTR* result) {
    return answerQuietly(result, [&] { return sqlNumber(value); });
}

HRESULT MathUtil::CriarMD5b(BSTR value, BSTR* result) {
    return answerQuietly(result, [&] { return md5Text(text(value)); });
}

HRESULT MathUtil::BinaryToHex(VARIANT* value, BSTR* result) {
    return answerQuietly(result, [&] { return value ? hexText(bytesIn(*value)) : std::wstring(); });
}

HRESULT MathUtil::HexToBinary(BSTR* value, VARIANT* result) {
    return answerQuietly(result, [&] {
        return byteArray(bytesFromHex(value ? text(*value) : std::wstring_view()));
    });
}

HRESULT MathUtil::HexToLong(BSTR value, LONG* result) {
    return answerQuietly(result, [&] { return longFromHex(text(value)); });
}

HRESULT MathUtil::LongToBase36(LONG value, BSTR* result) {
    return answer(result, [&] { return toBase(value, kBase36); });
}

HRESULT MathUtil::Base36ToLong(BSTR value, LONG* result) {
    return answer(result, [&] { return fromBase(text(value), kBase36); });
}

HRESULT ClassOf<_MathUtil>::create(REFIID id, void** result) {
    return createObject<MathUtil>(id, result);
}

}  // namespace vela
