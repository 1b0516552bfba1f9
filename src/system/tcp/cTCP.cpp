#include "system/tcp/cTCP.h"

#include "system/tcp/attached_control.h"

namespace vela {

namespace {

// The events' numbers in the type library.
constexpr DISPID kMensagem = 1;
constexpr DISPID kMsgEnviada = 2;
constexpr DISPID kErro = 3;

void initialise(SocketControl& control, const LONG* localPort, const LONG* remotePort,
                const BSTR* host) {
    control.close();
    control.setLocalPort(localPort ? *localPort : 0);
    control.setRemotePort(remotePort ? *remotePort : 0);
    control.setRemoteHost(host ? text(*host) : std::wstring_view());
    control.close();
}

}  // namespace

cTCP::~cTCP() {
    if (control_) quietly([&] { control_->end(); });
}

HRESULT cTCP::putref_TcpCom(IDispatch* newValue) {
    return guard([&] {
        Control attached;
        SocketEvents& events = *this;
        if (newValue) attached = std::make_shared<AttachedControl>(newValue, events);
        serving_ = false;
        if (const Control left = std::exchange(control_, attached)) left->leave();
    });
}

HRESULT cTCP::get_MsgEnviada(VARIANT_BOOL* result) { return give(result, sent_); }

HRESULT cTCP::get_portaLocal(LONG* result) {
    return answerQuietly(result, [&] { return control()->localPort(); });
}

HRESULT cTCP::get_portaRemota(LONG* result) {
    return answerQuietly(result, [&] { return control()->remotePort(); });
}

HRESULT cTCP::get_Servidor(BSTR* result) {
    return answerQuietly(result, [&] { return control()->remoteHost(); });
}

HRESULT cTCP::put_FiltroDeMensagens(BSTR newValue) { return take(filter_, newValue); }

HRESULT cTCP::get_FiltroDeMensagens(BSTR* result) { return give(result, filter_); }

HRESULT cTCP::get_StatusPorta(SHORT* result) {
    return answerQuietly(result, [&] { return control()->state(); });
}

HRESULT cTCP::Inicializar(LONG* portaLocal, LONG* portaRemota, BSTR* nomeServidor) {
    return guard([&] {
        serving_ = false;
        reporting([&](SocketControl& control) {
            initialise(control, portaLocal, portaRemota, nomeServidor);
        });
    });
}

HRESULT cTCP::IniciarEscuta(VARIANT_BOOL* result) {
    return answer(result, [&] {
        serving_ = false;
        reporting([](SocketControl& control) {
            control.close();
            control.listen();
        });
        return true;
    });
}

HRESULT cTCP::EnviarMsg(BSTR Msg, LONG* portaLocal, LONG* portaRemota, BSTR* nomeServidor,
                        VARIANT_BOOL* result) {
    return answer(result, [&] {
        sent_ = VARIANT_FALSE;
        serving_ = false;
        reporting([&](SocketControl& control) {
            pending_ = filter_ + std::wstring(text(Msg));
            if (control.state() > 0) control.close();
            if (portaLocal && *portaLocal) {
                initialise(control, portaLocal, portaRemota, nomeServidor);
            }
            control.connect();
        });
        return true;
    });
}

// ---- what the socket tells ----------------------------------------------------------------------

void cTCP::connected() {
    reporting([&](SocketControl& control) { control.send(pending_); });
}

void cTCP::requested(long request) {
    reporting([&](SocketControl& control) {
        if (control.state() > 0) control.close();
        serving_ = true;
        const bool accepted = reporting([&](SocketControl&) { control.accept(request); });
        if (!accepted) listenAgain(control);
    });
}

void cTCP::arrived() {
    reporting([&](SocketControl& control) {
        if (receivingFrom_ == &control) return;  // told of already; this is beyond its end
        const SocketControl* const before = std::exchange(receivingFrom_, &control);
        serving_ = false;
        reporting([&](SocketControl&) { tellMessage(control); });
        receivingFrom_ = before;
        listenAgain(control);
    });
}

void cTCP::sent() {
    reporting([&](SocketControl&) {
        sent_ = VARIANT_TRUE;
        fire(kMsgEnviada, {});
    });
}

// Who connects and says nothing must not keep others out.
void cTCP::peerClosed() {
    reporting([&](SocketControl& control) {
        if (serving_) listenAgain(control);
    });
}

void cTCP::failed(const SocketFailure& failure) {
    reporting([&](SocketControl& control) {
        const bool wasServing = std::exchange(serving_, false);
        fireError(failure);
        if (wasServing) listenAgain(control);
    });
}

// ---- the socket ---------------------------------------------------------------------------------

cTCP::Control cTCP::control() {
    SocketEvents& events = *this;
    if (!control_) control_ = std::make_shared<MessageSocket>(events, limits_);
    return control_;
}

// Unless a handler has attached another control meanwhile.
void cTCP::listenAgain(const SocketControl& served) {
    if (control_.get() != &served) return;
    serving_ = false;
    control_->close();
    control_->listen();
}

// ---- events ------------------------------------------------------------------------------------

// Handlers may let go of the control, and of this object. Nothing is thrown.
template <class Body>
bool cTCP::reporting(Body&& body) {
    const ComPtr<_cTCP> alive = this;
    const HRESULT failure = guard([&] {
        const Control held = control();
        body(*held);
    });
    if (SUCCEEDED(failure)) return true;
    quietly([&] { fireError(failureOf(recordedError(failure))); });
    return false;
}

void cTCP::tellMessage(SocketControl& control) {
    const std::wstring data = control.receive();
    if (!data.starts_with(filter_)) return;
    Variant message(std::wstring_view(data).substr(filter_.size()));
    Variant host(control.remoteHost());
    Variant address(control.remoteAddress());
    fire(kMensagem,
         {byReference(message.bstrVal), byReference(host.bstrVal), byReference(address.bstrVal)});
}

void cTCP::fireError(const SocketFailure& failure) {
    Variant description(failure.description);
    const Variant source(failure.source);
    fire(kErro, {byValue(failure.number), byReference(description.bstrVal), Variant(failure.code),
                 source});
}

HRESULT ClassOf<_cTCP>::create(REFIID id, void** result) { return createObject<cTCP>(id, result); }

}  // namespace vela
