// Short text messages over TCP, one per connection, through a socket control.
#pragma once

#include "contract.h"
#include "system/tcp/message_socket.h"

namespace vela {

class cTCP final : public Object<cTCP, _cTCP>, private SocketEvents {
  public:
    // The limits are those of a socket of its own.
    explicit cTCP(const SocketLimits& limits = {}) : limits_(limits) {}
    ~cTCP() override;

    HRESULT STDMETHODCALLTYPE putref_TcpCom(IDispatch* newValue) override;
    HRESULT STDMETHODCALLTYPE get_MsgEnviada(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE get_portaLocal(LONG* result) override;
    HRESULT STDMETHODCALLTYPE get_portaRemota(LONG* result) override;
    HRESULT STDMETHODCALLTYPE get_Servidor(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE put_FiltroDeMensagens(BSTR newValue) override;
    HRESULT STDMETHODCALLTYPE get_FiltroDeMensagens(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_StatusPorta(SHORT* result) override;
    HRESULT STDMETHODCALLTYPE Inicializar(LONG* portaLocal, LONG* portaRemota,
                                          BSTR* nomeServidor) override;
    HRESULT STDMETHODCALLTYPE IniciarEscuta(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE EnviarMsg(BSTR Msg, LONG* portaLocal, LONG* portaRemota,
                                        BSTR* nomeServidor, VARIANT_BOOL* result) override;

  private:
    using Control = std::shared_ptr<SocketControl>;

    ComPtr<IUnknown> held() override { return static_cast<_cTCP*>(this); }
    void connected() override;
    void requested(long request) override;
    void arrived() override;
    void sent() override;
    void peerClosed() override;
    void failed(const SocketFailure& failure) override;

    // The attached control, or else a socket of the library's own, made on the first need.
    Control control();
    void tellMessage(SocketControl& control);
    void listenAgain(const SocketControl& served);
    // Runs `body(control)`; what it throws becomes the event Erro. True when nothing failed.
    template <class Body>
    bool reporting(Body&& body);
    void fireError(const SocketFailure& failure);

    const SocketLimits limits_;
    Control control_;
    std::wstring filter_;
    std::wstring pending_;
    VARIANT_BOOL sent_ = VARIANT_FALSE;
    const SocketControl* receivingFrom_ = nullptr;  // Mensagem is being told
    bool serving_ = false;  // a connection was accepted, and no message came on it yet
};

}  // namespace vela
