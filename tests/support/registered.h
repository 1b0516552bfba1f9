// The registered library, as a program that is none of its own reaches it.
#pragma once

#include <string>
#include <string_view>

#include "contract.h"

namespace vela::test {

template <class Interface>
ComPtr<Interface> createRegistered() {
    ComPtr<Interface> object;
    check(CoCreateInstance(ClassOf<Interface>::id(), nullptr, CLSCTX_INPROC_SERVER,
                           IID_PPV_ARGS(&object)));
    return object;
}

// What a member without arguments gives.
template <class Result, class Interface>
Result got(const ComPtr<Interface>& object, HRESULT (STDMETHODCALLTYPE Interface::*get)(Result*)) {
    Result result{};
    check((object.Get()->*get)(&result));
    return result;
}
template <class Result, class Interface>
ComPtr<Result> got(const ComPtr<Interface>& object,
                   HRESULT (STDMETHODCALLTYPE Interface::*get)(Result**)) {
    ComPtr<Result> result;
    check((object.Get()->*get)(&result));
    return result;
}

// The apartment's preferences, started with one document for all sections.
inline ComPtr<_UPUtil> startedPreferences(const std::wstring& document,
                                          const wchar_t* application = nullptr,
                                          const wchar_t* user = nullptr) {
    const auto preferences =
        got(createRegistered<_Preferences>(), &_Preferences::get_MyPreferences);
    const auto sources = got(preferences, &_UPUtil::get_ActiveDataSources);
    const Variant name{std::wstring_view(document)};
    check(sources->put_LocalSource(name));
    check(sources->put_SharedSource(name));
    Variant started;
    const auto identity = [](const wchar_t* text) { return Bstr(text ? text : L""); };
    check(preferences->StartUPM(identity(application).get(), identity(user).get(), &started));
    return preferences;
}

}  // namespace vela::test
