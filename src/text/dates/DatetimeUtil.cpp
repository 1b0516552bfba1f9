#include "text/dates/DatetimeUtil.h"

#include "runtime/shared_instances.h"
#include "text/dates/TickCount.h"
#include "text/dates/core/date_text.h"
#include "text/dates/core/time_text.h"
#include "text/numbers/variant_numbers.h"
#include "text/user_locale.h"

namespace vela {

HRESULT DatetimeUtil::DataMaisDias(BSTR start, SHORT days, BSTR* result) {
    return answer(result, [&] { return datePlus(text(start), days); });
}

HRESULT DatetimeUtil::QueAno(BSTR date, SHORT* result) {
    return answer(result, [&] { return yearIn(text(date)); });
}

HRESULT DatetimeUtil::QueDia(BSTR date, SHORT* result) {
    return answer(result, [&] { return dayIn(text(date)); });
}

HRESULT DatetimeUtil::QueMes(BSTR date, SHORT* result) {
    return answer(result, [&] { return monthIn(text(date)); });
}

HRESULT DatetimeUtil::DiasEntreDatas(BSTR first, BSTR second, SHORT* result) {
    return answer(result, [&] { return daysBetween(text(first), text(second)); });
}

HRESULT DatetimeUtil::UltimoDiaDoMes(SHORT month, SHORT year, SHORT* result) {
    return DiasDoMes(year, month, result);
}

HRESULT DatetimeUtil::ComparaDatas(BSTR first, BSTR second, SHORT* result) {
    return answer(result, [&] { return compareDates(text(first), text(second)); });
}

HRESULT DatetimeUtil::DataEntre(BSTR date, BSTR first, BSTR second, VARIANT_BOOL* result) {
    return answer(result, [&] { return isDateWithin(text(date), text(first), text(second)); });
}

HRESULT DatetimeUtil::DiaDaSemana(VARIANT year, VARIANT month, SHORT day, SHORT* result) {
    return answerQuietly(result, [&] { return weekday(year, month, day); });
}

HRESULT DatetimeUtil::DiasDoMes(SHORT year, SHORT month, SHORT* result) {
    return answer(result, [&] { return static_cast<SHORT>(monthLength(year, month)); });
}

HRESULT DatetimeUtil::StandardStrData(BSTR date, BSTR* result) {
    return answerQuietly(result, [&] { return standardDate(text(date)); });
}

HRESULT DatetimeUtil::HHMM(BSTR time, SHORT* result) {
    return answer(result, [&] { return readTime(text(time)); });
}

HRESULT DatetimeUtil::StrHora(BSTR time, BSTR* result) {
    return answer(result, [&] { return timeText(readTime(text(time))); });
}

HRESULT DatetimeUtil::get_FmtData(BSTR* result) {
    return answer(result, [] { return L"dd-mm-yyyy"; });
}

HRESULT DatetimeUtil::VerificaData(BSTR date, SHORT* result) {
    return answer(result, [&] { return dateFault(text(date)); });
}

HRESULT DatetimeUtil::get_Contador(_TickCount** result) {
    return answer(result,
                  [] { return sharedInstance<_TickCount>([] { return make<TickCount>(); }); });
}

HRESULT ClassOf<_DatetimeUtil>::create(REFIID id, void** result) {
    return createObject<DatetimeUtil>(id, result);
}

}  // namespace vela
