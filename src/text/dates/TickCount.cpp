#include "text/dates/TickCount.h"

#include "text/user_locale.h"

namespace vela {

namespace {

// A time of day is the platform's to format; it knows no 25 hours and no 60 seconds.
Bstr byFormat(const ElapsedTime& time, std::wstring_view format) {
    if (isTimeOfDay(time)) return formatted(Variant(plainText(time)), format);
    return Bstr(byPicture(time, format));
}

}  // namespace

HRESULT TickCount::Iniciar() {
    watch_.start(GetTickCount());
    return S_OK;
}

HRESULT TickCount::Parar() {
    watch_.stop(GetTickCount());
    return S_OK;
}

HRESULT TickCount::Milisegundos(LONG* result) {
    return answer(result, [&] { return milliseconds(); });
}

HRESULT TickCount::Segundos(LONG* result) {
    return answer(result, [&] { return elapsed().seconds; });
}

HRESULT TickCount::Minutos(LONG* result) {
    return answer(result, [&] { return elapsed().minutes; });
}

HRESULT TickCount::Horas(LONG* result) {
    return answer(result, [&] { return elapsed().hours; });
}

HRESULT TickCount::Texto(BSTR timeFormat, BSTR* result) {
    return answerQuietly(result, [&] {
        const ElapsedTime time = elapsed();
        const std::wstring_view format = text(timeFormat);
        return format.empty() ? Bstr(inWords(time)) : byFormat(time, format);
    });
}

HRESULT ClassOf<_TickCount>::create(REFIID id, void** result) {
    return createObject<TickCount>(id, result);
}

}  // namespace vela
