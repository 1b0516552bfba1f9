#include "text/user_locale.h"

#include "automation/dispatch.h"
#include "automation/error.h"
#include "text/core/text_normalisation.h"

namespace vela {

namespace {

// False when `text` holds no such number, which is then 0.
template <VARTYPE type>
bool read(BSTR text, LCID locale, typename Field<type>::Type& number) {
    VARIANT source{};
    source.vt = VT_BSTR;
    source.bstrVal = text;
    Variant result;
    number = {};
    if (FAILED(coerce(&result, &source, type, locale))) return false;
    number = Field<type>::in(result);
    return true;
}

template <VARTYPE type>
auto readOrZero(BSTR text, LCID locale) {
    typename Field<type>::Type number;
    read<type>(text, locale, number);
    return number;
}

template <VARTYPE type>
auto readOrClear(BSTR text, LCID locale) {
    typename Field<type>::Type number;
    if (!read<type>(text, locale, number)) SetErrorInfo(0, nullptr);
    return number;
}

std::wstring characterOfSample(std::size_t position, LCID locale) {
    Variant sample;
    sample.vt = VT_R8;
    sample.dblVal = 1234.5;
    const std::wstring text = formatted(sample, L"#,###.#", locale).str();
    return position <= text.size() ? text.substr(position - 1, 1) : std::wstring();
}

std::wstring today(LCID locale) {
    SYSTEMTIME now;
    DATE date = 0;
    Bstr text;
    GetLocalTime(&now);
    now.wHour = now.wMinute = now.wSecond = now.wMilliseconds = 0;
    SystemTimeToVariantTime(&now, &date);
    check(VarBstrFromDate(date, locale, 0, text.put()));
    return text.str();
}

std::optional<Day> readByLocale(const std::wstring& text, LCID locale) {
    DATE date = 0;
    SYSTEMTIME parts;
    Bstr copy(text);
    if (FAILED(VarDateFromStr(copy.get(), locale, 0, &date))) return std::nullopt;
    if (!VariantTimeToSystemTime(date, &parts)) return std::nullopt;
    return dayOf(parts.wYear, parts.wMonth, parts.wDay);
}

}  // namespace

CY currencyIn(BSTR text, LCID locale) { return readOrClear<VT_CY>(text, locale); }
DOUBLE doubleIn(BSTR text, LCID locale) { return readOrClear<VT_R8>(text, locale); }
SHORT shortIn(BSTR text, LCID locale) { return readOrZero<VT_I2>(text, locale); }
LONG longIn(BSTR text, LCID locale) { return readOrZero<VT_I4>(text, locale); }
FLOAT singleIn(BSTR text, LCID locale) { return readOrZero<VT_R4>(text, locale); }

std::wstring sqlNumber(BSTR text, LCID locale) {
    Bstr number;
    check(VarBstrFromR8(doubleIn(text, locale), locale, 0, number.put()));
    return replaceAll(number.view(), L",", L".");
}

std::wstring thousandsSeparator(LCID locale) { return characterOfSample(2, locale); }
std::wstring decimalSeparator(LCID locale) { return characterOfSample(6, locale); }

Bstr formatted(const Variant& value, std::wstring_view picture, LCID locale) {
    BYTE tokens[256];  // what the platform's own calls use
    Bstr format(picture);
    Bstr text;
    HRESULT outcome =
        VarTokenizeFormatString(format.get(), tokens, sizeof tokens, 0, 0, locale, nullptr);
    if (SUCCEEDED(outcome)) {
        outcome = VarFormatFromTokens(const_cast<Variant*>(&value), format.get(), tokens, 0,
                                      text.put(), locale);
    }
    if (outcome == E_OUTOFMEMORY) throw std::bad_alloc();
    if (FAILED(outcome)) raise(RuntimeError::InvalidProcedureCall);
    return text;
}

std::wstring standardDate(std::wstring_view date, LCID locale) {
    return standardDate(date, dateSeparator(today(locale)),
                        [=](const std::wstring& text) { return readByLocale(text, locale); });
}

}  // namespace vela
