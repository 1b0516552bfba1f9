// What the sender and the receiver share: a cTCP with its events, and the message loop.
#pragma once

#include <windows.h>

#include <VelaUtil10.h>
#include <ocidl.h>
#include <shellapi.h>
#include <wrl/client.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

using Microsoft::WRL::ComPtr;

inline void check(HRESULT result) {
    if (FAILED(result)) throw result;
}

// Owns an automation string.
class Text {
  public:
    explicit Text(const std::wstring& text) : value_(SysAllocString(text.c_str())) {}
    ~Text() { SysFreeString(value_); }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    BSTR in() const { return value_; }
    BSTR* inOut() { return &value_; }

  private:
    BSTR value_;
};

// Hears the events of a cTCP. It lives on the stack, and must outlive the endpoint.
class TcpEvents : public IDispatch {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        const bool known = id == IID_IUnknown || id == IID_IDispatch || id == __uuidof(__cTCP);
        *result = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    // Arguments come last one first.
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* call, VARIANT*,
                                     EXCEPINFO*, UINT*) override {
        const VARIANT* arguments = call->rgvarg;
        if (id == 1) message(*arguments[2].pbstrVal, *arguments[0].pbstrVal);
        if (id == 2) sent();
        if (id == 3) failed(arguments[3].iVal, *arguments[2].pbstrVal);
        return S_OK;
    }

  private:
    virtual void message(const std::wstring&, const std::wstring& /*address*/) {}
    virtual void sent() {}
    virtual void failed(long /*number*/, const std::wstring& /*description*/) {}
};

// A cTCP whose events go to `events`.
class Endpoint {
  public:
    Endpoint(TcpEvents& events, const std::wstring& filter) {
        ComPtr<IConnectionPointContainer> container;
        check(CoCreateInstance(__uuidof(cTCP), nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&tcp_)));
        check(tcp_.As(&container));
        check(container->FindConnectionPoint(__uuidof(__cTCP), &point_));
        check(point_->Advise(&events, &cookie_));
        check(tcp_->put_FiltroDeMensagens(Text(filter).in()));
    }
    Endpoint(const Endpoint&) = delete;
    Endpoint& operator=(const Endpoint&) = delete;
    ~Endpoint() { point_->Unadvise(cookie_); }
    _cTCP* operator->() const { return tcp_.Get(); }

  private:
    ComPtr<_cTCP> tcp_;
    ComPtr<IConnectionPoint> point_;
    DWORD cookie_ = 0;
};

// Runs the message loop until `done`, at most `limit` milliseconds; whether it came to be.
inline bool pumpUntil(const std::function<bool()>& done, DWORD limit) {
    const ULONGLONG end = GetTickCount64() + limit;
    while (!done() && GetTickCount64() < end) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 100, QS_ALLINPUT);
        MSG message;
        while (!done() && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
    }
    return done();
}

// The program around `body`, which gets the arguments and tells whether all went well.
inline int run(const std::function<bool(const std::vector<std::wstring>&)>& body) {
    int count = 0;
    wchar_t** list = CommandLineToArgvW(GetCommandLineW(), &count);
    const std::vector<std::wstring> arguments(list + 1, list + count);
    LocalFree(list);
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
    bool good = false;
    try {
        good = body(arguments);
    } catch (HRESULT failure) {
        std::fprintf(stderr, "Failed with %08lX.\n", static_cast<unsigned long>(failure));
    }
    CoUninitialize();
    return good ? 0 : 1;
}
