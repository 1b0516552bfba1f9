// What the tests of messages share: a cTCP with a log of its events, and the message loop.
#pragma once

#include "automation/late_objects.h"
#include "system/tcp/cTCP.h"

namespace vela::test {

// A cTCP that logs its events, each as "name:argument:argument ".
class Endpoint {
    std::wstring log_;

  public:
    explicit Endpoint(const wchar_t* filter = L"", const SocketLimits& limits = {})
        : tcp(make<cTCP>(limits)) {
        test::listen(static_cast<_cTCP*>(tcp.Get()), __uuidof(__cTCP),
                     [this](DISPID id, WORD, DISPPARAMS& call, auto&&...) {
                         log_ += id == 1 ? L"Mensagem" : id == 2 ? L"MsgEnviada" : L"Erro";
                         for (UINT i = call.cArgs; i > 0; --i) {
                             log_ += L":" + textOf(call.rgvarg[i - 1]);
                         }
                         log_ += L' ';
                         onEvent();
                         return S_OK;
                     });
        EXPECT_EQ(tcp->put_FiltroDeMensagens(Bstr(filter).get()), S_OK);
    }

    void attach(IDispatch* control) { EXPECT_EQ(tcp->putref_TcpCom(control), S_OK); }
    void initialise(LONG localPort, LONG remotePort = 0, const wchar_t* host = L"") {
        Bstr name(host);
        BSTR given = name.get();
        EXPECT_EQ(tcp->Inicializar(&localPort, &remotePort, &given), S_OK);
    }
    // The port that it listens on.
    LONG listen() {
        EXPECT_TRUE(yes(tcp.Get(), &_cTCP::IniciarEscuta));
        return got<LONG>(tcp.Get(), &_cTCP::get_portaLocal);
    }
    // With a local port, the remote place is set, too.
    void send(std::wstring_view message, LONG localPort = 0, LONG remotePort = 0,
              const wchar_t* host = L"") {
        Bstr name(host);
        BSTR given = name.get();
        EXPECT_TRUE(yes(tcp.Get(), &_cTCP::EnviarMsg, Bstr(message).get(), &localPort, &remotePort,
                        &given));
    }
    bool sent() const { return yes(tcp.Get(), &_cTCP::get_MsgEnviada); }
    SHORT state() const { return got<SHORT>(tcp.Get(), &_cTCP::get_StatusPorta); }
    std::wstring log() { return std::exchange(log_, {}); }
    bool heard() const { return !log_.empty(); }

    std::function<void()> onEvent = [] {};
    ComPtr<cTCP> tcp;
};

// Runs the message loop until `done`, at most `limit` milliseconds; whether it came to be.
inline bool pump(const std::function<bool()>& done, DWORD limit = 20'000) {
    const DWORD start = GetTickCount();
    MSG message;
    while (!done() && GetTickCount() - start < limit) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
    return done();
}

}  // namespace vela::test
