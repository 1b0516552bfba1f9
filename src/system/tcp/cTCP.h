// Short text messages over TCP, one per connection, through a socket control.
#pragma once

#include <memory>

#include "contract.h"
#include "system/tcp/attached_control.h"

namespace vela {

class cTCP final : public Object<cTCP, _cTCP> {
  public:
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
    using Control = std::shared_ptr<AttachedControl>;

    Control attach(ComPtr<IDispatch> object);
    // The attached control, or else one of the library's own, made on the first need.
    Control control();
    void heard(AttachedControl::Event event, std::span<VARIANT> arguments);
    void accept(AttachedControl& control, std::span<VARIANT> arguments);
    void receive(AttachedControl& control);
    void failed(AttachedControl& control, std::span<VARIANT> arguments);
    void listenAgain(const AttachedControl& served);

    // Runs `body(control)`; what it throws becomes the event Erro. True when nothing failed.
    template <class Body>
    bool reporting(Body&& body);
    void fireMessage(std::wstring_view message, std::wstring_view host, std::wstring_view address);
    void fireError(SHORT number, std::wstring_view description, LONG code,
                   std::wstring_view source);

    Control control_;
    std::wstring filter_;
    std::wstring pending_;
    VARIANT_BOOL sent_ = VARIANT_FALSE;
    bool receiving_ = false;  // Mensagem is being told
    bool serving_ = false;    // a connection was accepted, and no message came on it yet
};

}  // namespace vela
