#include "preferences/UPDataSources.h"

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
    local_ = Variant(name + kLocalSuffix);
    shared_ = Variant(name + kSharedSuffix);
}

std::wstring UPDataSources::nameIn(const Variant& source) {
    std::wstring name;
    quietly([&] { name = textOf(source); });
    return name;
}

HRESULT UPDataSources::get_LocalSource(VARIANT* result) { return give(result, local_); }
HRESULT UPDataSources::put_LocalSource(VARIANT value) { return take(local_, value); }
HRESULT UPDataSources::putref_LocalSource(VARIANT value) { return take(local_, value); }

HRESULT UPDataSources::get_SharedSource(VARIANT* result) { return give(result, shared_); }
HRESULT UPDataSources::put_SharedSource(VARIANT value) { return take(shared_, value); }
HRESULT UPDataSources::putref_SharedSource(VARIANT value) { return take(shared_, value); }

HRESULT UPDataSources::get_SessionSource(VARIANT* result) { return give(result, session_); }
HRESULT UPDataSources::put_SessionSource(VARIANT value) { return take(session_, value); }
HRESULT UPDataSources::putref_SessionSource(VARIANT value) { return take(session_, value); }

}  // namespace vela
