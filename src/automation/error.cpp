#include "automation/error.h"

#include <new>
#include <stdexcept>

namespace vela {

namespace {

constexpr HRESULT runtimeNumber(RuntimeError error) {
    return static_cast<HRESULT>(0x800A0000u | static_cast<unsigned>(error));
}

const wchar_t* describe(RuntimeError error) {
    switch (error) {
        case RuntimeError::InvalidProcedureCall: return L"Invalid procedure call or argument";
        case RuntimeError::Overflow: return L"Overflow";
        case RuntimeError::SubscriptOutOfRange: return L"Subscript out of range";
        case RuntimeError::DivisionByZero: return L"Division by zero";
        case RuntimeError::TypeMismatch: return L"Type mismatch";
        case RuntimeError::InvalidPattern: return L"Invalid pattern string";
        case RuntimeError::ObjectNotSet: return L"Object variable not set";
        case RuntimeError::MemberNotSupported:
            return L"Object doesn't support this property or method";
        case RuntimeError::KeyAlreadyPresent:
            return L"This key is already associated with an element of this collection";
    }
    return L"";
}

// The text for a failure, the system's on one line; empty when it has none.
struct SystemText {
    explicit SystemText(HRESULT code) {
        if (code == E_OUTOFMEMORY) return;
        DWORD length =
            FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                           static_cast<DWORD>(code), 0, text, ARRAYSIZE(text), nullptr);
        while (length > 0 && text[length - 1] <= L' ') --length;
        text[length] = L'\0';
    }

    wchar_t text[512] = L"Out of memory";
};

}  // namespace

HRESULT record(HRESULT number, const wchar_t* source, const wchar_t* description) noexcept {
    ComPtr<ICreateErrorInfo> creator;
    ComPtr<IErrorInfo> info;
    SetErrorInfo(0, nullptr);  // should memory end, an earlier one is not this failure's
    if (FAILED(CreateErrorInfo(&creator)) || FAILED(creator.As(&info))) return number;
    creator->SetSource(const_cast<wchar_t*>(source ? source : L""));
    creator->SetDescription(const_cast<wchar_t*>(description ? description : L""));
    SetErrorInfo(0, info.Get());
    return number;
}

HRESULT record(RuntimeError error) noexcept {
    return record(runtimeNumber(error), kLibraryName, describe(error));
}

HRESULT record(HRESULT failure) noexcept {
    return record(failure, kLibraryName, SystemText(failure).text);
}

void raiseNotImplemented() {
    throw Error{E_NOTIMPL, kLibraryName, L"This member is not available in this version"};
}

HRESULT check(HRESULT result) {
    if (result == E_OUTOFMEMORY) throw std::bad_alloc();
    if (FAILED(result)) throw Error{result, kLibraryName, SystemText(result).text};
    return result;
}

HRESULT reportCurrentException() noexcept {
    try {
        throw;
    } catch (const Error& error) {
        const HRESULT number = FAILED(error.number) ? error.number : E_UNEXPECTED;
        return record(number, error.source.c_str(), error.description.c_str());
    } catch (const RuntimeFailure& failure) {
        return record(failure.error);
    } catch (const std::bad_alloc&) {
        return record(E_OUTOFMEMORY);
    } catch (const std::length_error&) {
        return record(E_OUTOFMEMORY);
    } catch (...) {
        return record(E_UNEXPECTED, kLibraryName, L"Unexpected failure");
    }
}

HRESULT notImplemented() noexcept { return guard(raiseNotImplemented); }

void fillException(HRESULT failure, EXCEPINFO* exception) noexcept {
    *exception = {};
    exception->scode = failure;
    ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, &info) != S_OK) return;
    info->GetSource(&exception->bstrSource);
    info->GetDescription(&exception->bstrDescription);
    info->GetHelpFile(&exception->bstrHelpFile);
    info->GetHelpContext(&exception->dwHelpContext);
}

Error recordedError(HRESULT failure) {
    ComPtr<IErrorInfo> info;
    Bstr source;
    Bstr description;
    if (GetErrorInfo(0, &info) == S_OK) {
        info->GetSource(source.put());
        info->GetDescription(description.put());
    }
    if (!description.get()) return {failure, kLibraryName, SystemText(failure).text};
    return {failure, source.str(), description.str()};
}

void checkRecorded(HRESULT result) {
    if (FAILED(result)) throw recordedError(result);
}

}  // namespace vela
