// Errors: exceptions inside, HRESULT plus error info outside.
//
// Code below the class boundary raises a run-time error, throws Error, or lets a standard exception
// pass; guard() and answer() are the only places where an exception becomes an HRESULT. Nothing
// escapes through an interface method.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>
#include <string_view>

#include "automation/convert.h"
#include "automation/core/runtime_error.h"

namespace vela {

// The source given with errors that no class has claimed as its own.
inline constexpr wchar_t kLibraryName[] = L"VelaUtil10";

struct Error {
    HRESULT number;  // negative: success codes cannot be errors
    std::wstring source = kLibraryName;
    std::wstring description;
};

// Throws for a member that a class declares and does not offer yet.
[[noreturn]] void raiseNotImplemented();
// Throws when `result` is a failure; gives it back otherwise.
HRESULT check(HRESULT result);

// This thread's error info, which is taken, as an Error; what `failure` stands for by itself when
// there is none.
Error recordedError(HRESULT failure);
// As check(), for calls of automation members: the callee's own source and description live on.
void checkRecorded(HRESULT result);

// Records an error as this thread's error info and gives its number back; null texts are empty.
HRESULT record(HRESULT number, const wchar_t* source, const wchar_t* description) noexcept;
// As above, with the error's usual text.
HRESULT record(RuntimeError error) noexcept;
HRESULT record(HRESULT failure) noexcept;

// For use inside a catch block: records the exception as this thread's error info and returns the
// HRESULT that stands for it.
HRESULT reportCurrentException() noexcept;
// Records and returns E_NOTIMPL.
HRESULT notImplemented() noexcept;

// Fills `info` from this thread's error info, or from `failure` alone when there is none.
void fillException(HRESULT failure, EXCEPINFO* info) noexcept;

// Runs the body of a member that has no result.
template <class Body>
HRESULT guard(Body&& body) noexcept {
    try {
        body();
        return S_OK;
    } catch (...) {
        return reportCurrentException();
    }
}

// Runs the body of a member and stores what it returns into `result`; on failure `result` holds
// the neutral value of its type.
template <class Result, class Body>
HRESULT answer(Result* result, Body&& body) noexcept {
    if (!result) return E_POINTER;
    *result = Result{};
    return guard([&] { store(result, body()); });
}

// As answer(), with every failure suppressed: the neutral value then, and no error info.
template <class Result, class Body>
HRESULT answerQuietly(Result* result, Body&& body) noexcept {
    const HRESULT outcome = answer(result, body);
    if (outcome == E_POINTER && !result) return outcome;
    if (FAILED(outcome)) SetErrorInfo(0, nullptr);
    return S_OK;
}

// Runs `body`; a failure is swallowed and leaves no error info. True when nothing failed.
template <class Body>
bool quietly(Body&& body) noexcept {
    if (SUCCEEDED(guard(body))) return true;
    SetErrorInfo(0, nullptr);
    return false;
}

}  // namespace vela
