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

std::wstring systemText(HRESULT code) {
    wchar_t buffer[512];
    DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                       static_cast<DWORD>(code), 0, buffer, ARRAYSIZE(buffer), nullptr);
    while (length > 0 && buffer[length - 1] <= L' ') --length;
    return std::wstring(buffer, length);
}

HRESULT record(HRESULT number, const wchar_t* source, const wchar_t* description) noexcept {
    ComPtr<ICreateErrorInfo> creator;
    ComPtr<IErrorInfo> info;
    if (FAILED(CreateErrorInfo(&creator)) || FAILED(creator.As(&info))) return number;
    creator->SetSource(const_cast<wchar_t*>(source));
    creator->SetDescription(const_cast<wchar_t*>(description));
    SetErrorInfo(0, info.Get());
    return number;
}

}  // namespace

void raiseNotImplemented() {
    throw Error{E_NOTIMPL, kLibraryName, L"This member is not available in this version"};
}

HRESULT check(HRESULT result) {
    if (result == E_OUTOFMEMORY) throw std::bad_alloc();
    if (FAILED(result)) throw Error{result, kLibraryName, systemText(result)};
    return result;
}

HRESULT reportCurrentException() noexcept {
    try {
        throw;
    } catch (const Error& error) {
        const HRESULT number = FAILED(error.number) ? error.number : E_UNEXPECTED;
        return record(number, error.source.c_str(), error.description.c_str());
    } catch (const RuntimeFailure& failure) {
        return record(runtimeNumber(failure.error), kLibraryName, describe(failure.error));
    } catch (const std::bad_alloc&) {
        return record(E_OUTOFMEMORY, kLibraryName, L"Out of memory");
    } catch (const std::length_error&) {
        return record(E_OUTOFMEMORY, kLibraryName, L"Out of memory");
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
    if (!description.get()) return {failure, kLibraryName, systemText(failure)};
    return {failure, source.str(), description.str()};
}

void checkRecorded(HRESULT result) {
    if (FAILED(result)) throw recordedError(result);
}

}  // namespace vela
