// What the tests of messages share: a cTCP with a log of its events, and the message loop.
#pragma once

#include "automation/late_bound.h"
#include "system/Socket.h"
#include "system/cTCP.h"

namespace vela::test {

// A cTCP that logs its events, each as "name:argument:argument ".
class Endpoint {
  public:
    explicit Endpoint(const wchar_t* filter = L"") {
        ComPtr<IConnectionPointContainer> container;
        const auto sink = adopted(new LateObject);
        sink->invoked = [this](DISPID id, WORD, DISPPARAMS& call, VARIANT*, EXCEPINFO*) {
            hear(id, call);
            return S_OK;
        };
        EXPECT_EQ(tcp.As(&container), S_OK);
        EXPECT_EQ(container->FindConnectionPoint(__uuidof(__cTCP), &point_), S_OK);
        EXPECT_EQ(point_->Advise(sink.Get(), &cookie_), S_OK);
        EXPECT_EQ(tcp->put_FiltroDeMensagens(Bstr(filter).get()), S_OK);
    }
    ~Endpoint() { point_->Unadvise(cookie_); }

    void attach(IDispatch* control) { EXPECT_EQ(tcp->putref_TcpCom(control), S_OK); }
    void initialise(LONG localPort, LONG remotePort = 0, const wchar_t* host = L"") {
        Bstr name(host);
        BSTR given = name.get();
        EXPECT_EQ(tcp->Inicializar(&localPort, &remotePort, &given), S_OK);
    }
    // The port that it listens on.
    LONG listen() {
        VARIANT_BOOL result = VARIANT_FALSE;
        LONG port = 0;
        EXPECT_EQ(tcp->IniciarEscuta(&result), S_OK);
        EXPECT_EQ(result, VARIANT_TRUE);
        EXPECT_EQ(tcp->get_portaLocal(&port), S_OK);
        return port;
    }
    void send(std::wstring_view message) {
        VARIANT_BOOL result = VARIANT_FALSE;
        EXPECT_EQ(tcp->EnviarMsg(Bstr(message).get(), nullptr, nullptr, nullptr, &result), S_OK);
        EXPECT_EQ(result, VARIANT_TRUE);
    }
    bool sent() const {
        VARIANT_BOOL result = VARIANT_FALSE;
        EXPECT_EQ(tcp->get_MsgEnviada(&result), S_OK);
        return isTrue(result);
    }
    SHORT state() const {
        SHORT result = -1;
        EXPECT_EQ(tcp->get_StatusPorta(&result), S_OK);
        return result;
    }
    std::wstring log() { return std::exchange(log_, {}); }
    bool heard() const { return !log_.empty(); }

    const ComPtr<cTCP> tcp = make<cTCP>();
    std::function<void()> onEvent = [] {};

  private:
    void hear(DISPID id, DISPPARAMS& call) {
        log_ += id == 1 ? L"Mensagem" : id == 2 ? L"MsgEnviada" : L"Erro";
        for (UINT i = call.cArgs; i > 0; --i) log_ += L":" + textOf(call.rgvarg[i - 1]);
        log_ += L' ';
        onEvent();
    }

    ComPtr<IConnectionPoint> point_;
    DWORD cookie_ = 0;
    std::wstring log_;
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
