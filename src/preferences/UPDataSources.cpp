#include "preferences/UPDataSources.h"

#include "files/full_path.h"
#include "preferences/document_names.h"

namespace vela {

namespace {

HRESULT give(VARIANT* result, const Variant& source) {
    return answer(result, [&] { return source; });
}

HRESULT take(Variant& source, const VARIANT& value) {
    return guard([&] { source = Variant(value); });
}

}  // namespace

UPDataSources::UPDataSources() {
    wchar_t user[512];
    const DWORD length = GetEnvironmentVariableW(L"USERNAME", user, ARRAYSIZE(user));
    const std::wstring name(user, length < ARRAYSIZE(user) ? length : 0);
    local_.value = Variant(name + kLocalSuffix);
    shared_.value = Variant(name + kSharedSuffix);
}

std::wstring UPDataSources::Source::name() const {
    std::wstring name;
    quietly([&] { name = textOf(value); });
    return name;
}

std::wstring UPDataSources::Source::path() const {
    const std::wstring now = name();
    return now == settledName ? settledPath : fullPath(now);
}

void UPDataSources::Source::settle() {
    settledName = name();
    settledPath = fullPath(settledName);
}

void UPDataSources::settle() {
    local_.settle();
    shared_.settle();
}

HRESULT UPDataSources::get_LocalSource(VARIANT* result) { return give(result, local_.value); }
HRESULT UPDataSources::put_LocalSource(VARIANT value) { return take(local_.value, value); }
HRESULT UPDataSources::putref_LocalSource(VARIANT value) { return take(local_.value, value); }

HRESULT UPDataSources::get_SharedSource(VARIANT* result) { return give(result, shared_.value); }
HRESULT UPDataSources::put_SharedSource(VARIANT value) { return take(shared_.value, value); }
HRESULT UPDataSources::putref_SharedSource(VARIANT value) { return take(shared_.value, value); }

HRESULT UPDataSources::get_SessionSource(VARIANT* result) { return give(result, session_); }
HRESULT UPDataSources::put_SessionSource(VARIANT value) { return take(session_, value); }
HRESULT UPDataSources::putref_SessionSource(VARIANT value) { return take(session_, value); }

}  // namespace vela
