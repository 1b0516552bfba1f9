// What the sender and the receiver share: a cTCP with its events, and the message loop.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <functional>
#include <string>
#include <vector>

#include "client.h"

// Hears the events of a cTCP, and must outlive the endpoint.
class TcpEvents : public Callback<__cTCP> {
  public:
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
    Endpoint(TcpEvents& events, const std::wstring& filter)
        : tcp_(create()), connection_(tcp_.Get(), events) {
        check(tcp_->put_FiltroDeMensagens(Text(filter).in()));
    }
    _cTCP* operator->() const { return tcp_.Get(); }

  private:
    static ComPtr<_cTCP> create() {
        ComPtr<_cTCP> tcp;
        check(CoCreateInstance(__uuidof(cTCP), nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&tcp)));
        return tcp;
    }

    ComPtr<_cTCP> tcp_;
    const Connection<__cTCP> connection_;
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
    bool good = false;
    const int exitCode = runInApartment([&] { good = body(arguments); });
    return good ? exitCode : 1;
}
