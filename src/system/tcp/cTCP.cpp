#include "system/tcp/cTCP.h"

#include "system/tcp/Socket.h"

namespace vela {

namespace {

// The events' numbers in the type library.
constexpr DISPID kMensagem = 1;
constexpr DISPID kMsgEnviada = 2;
constexpr DISPID kErro = 3;

void initialise(AttachedControl& control, const LONG* localPort, const LONG* remotePort,
                const BSTR* host) {
    control.close();
    control.setLocalPort(localPort ? *localPort : 0);
    control.setRemotePort(remotePort ? *remotePort : 0);
    control.setRemoteHost(host ? text(*host) : std::wstring_view());
    control.close();
}

VARIANT byReference(BSTR& value) {
    VARIANT argument{};
    argument.vt = VT_BYREF | VT_BSTR;
    argument.pbstrVal = &value;
    return argument;
}

// An argument of an event, and what stands for it where it is missing or of another kind.
LONG numberAt(std::span<VARIANT> arguments, std::size_t index) {
    if (index >= arguments.size()) return 0;
    return static_cast<LONG>(static_cast<long long>(numberIn(arguments[index]).value_or(0)));
}
std::wstring textAt(std::span<VARIANT> arguments, std::size_t index) {
    return index < arguments.size() ? textOf(arguments[index]) : std::wstring();
}

}  // namespace

cTCP::~cTCP() {
    if (control_) quietly([&] { control_->end(); });
}

HRESULT cTCP::putref_TcpCom(IDispatch* newValue) {
    return guard([&] {
        control_ = newValue ? attach(newValue) : nullptr;
        serving_ = false;
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
        reporting([&](AttachedControl& control) {
            initialise(control, portaLocal, portaRemota, nomeServidor);
        });
    });
}

HRESULT cTCP::IniciarEscuta(VARIANT_BOOL* result) {
    return answer(result, [&] {
        serving_ = false;
        reporting([](AttachedControl& control) {
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
        reporting([&](AttachedControl& control) {
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

// ---- the control -------------------------------------------------------------------------------

cTCP::Control cTCP::attach(ComPtr<IDispatch> object) {
    return std::make_shared<AttachedControl>(
        std::move(object), [this](AttachedControl::Event event, std::span<VARIANT> arguments) {
            heard(event, arguments);
        });
}

cTCP::Control cTCP::control() {
    if (!control_) control_ = attach(make<Socket>());
    return control_;
}

void cTCP::heard(AttachedControl::Event event, std::span<VARIANT> arguments) {
    using Event = AttachedControl::Event;
    const ComPtr<_cTCP> alive = this;
    reporting([&](AttachedControl& control) {
        switch (event) {
            case Event::Connect: return control.send(pending_);
            case Event::ConnectionRequest: return accept(control, arguments);
            case Event::DataArrival: return receive(control);
            case Event::SendComplete: sent_ = VARIANT_TRUE; return fire(kMsgEnviada, {});
            case Event::Error: return failed(control, arguments);
            case Event::Close:
                // Who connects and says nothing must not keep others out.
                if (serving_) listenAgain(control);
                return;
        }
    });
}

void cTCP::accept(AttachedControl& control, std::span<VARIANT> arguments) {
    if (arguments.empty()) return;
    if (control.state() > 0) control.close();
    serving_ = true;
    if (!reporting([&](AttachedControl&) { control.accept(arguments[0]); })) listenAgain(control);
}

void cTCP::receive(AttachedControl& control) {
    if (std::exchange(receiving_, true)) return;  // the message was told of; this is beyond its end
    serving_ = false;
    reporting([&](AttachedControl&) {
        const std::wstring data = control.receive();
        if (!data.starts_with(filter_)) return;
        fireMessage(std::wstring_view(data).substr(filter_.size()), control.remoteHost(),
                    control.remoteAddress());
    });
    receiving_ = false;
    listenAgain(control);
}

void cTCP::failed(AttachedControl& control, std::span<VARIANT> arguments) {
    // Erro reports it: no message box on top of that.
    if (arguments.size() > 6 && arguments[6].vt == (VT_BYREF | VT_BOOL)) {
        *arguments[6].pboolVal = VARIANT_TRUE;
    }
    const bool wasServing = std::exchange(serving_, false);
    fireError(static_cast<SHORT>(numberAt(arguments, 0)), textAt(arguments, 1),
              numberAt(arguments, 2), textAt(arguments, 3));
    if (wasServing) listenAgain(control);
}

// Unless a handler has attached another control meanwhile.
void cTCP::listenAgain(const AttachedControl& served) {
    if (control_.get() != &served) return;
    serving_ = false;
    control_->close();
    control_->listen();
}

// ---- events ------------------------------------------------------------------------------------

template <class Body>
bool cTCP::reporting(Body&& body) {
    const HRESULT failure = guard([&] {
        const Control held = control();
        body(*held);
    });
    if (SUCCEEDED(failure)) return true;
    EXCEPINFO error;
    fillException(failure, &error);
    const Bstr source = Bstr::owning(error.bstrSource);
    const Bstr description = Bstr::owning(error.bstrDescription);
    SysFreeString(error.bstrHelpFile);
    fireError(static_cast<SHORT>(failure & 0xFFFF), description.view(), failure, source.view());
    return false;
}

void cTCP::fireMessage(std::wstring_view message, std::wstring_view host,
                       std::wstring_view address) {
    Variant values[] = {Variant(message), Variant(host), Variant(address)};
    fire(kMensagem, {byReference(values[0].bstrVal), byReference(values[1].bstrVal),
                     byReference(values[2].bstrVal)});
}

void cTCP::fireError(SHORT number, std::wstring_view description, LONG code,
                     std::wstring_view source) {
    Variant described(description);
    Variant from(source);
    VARIANT numbered{};
    numbered.vt = VT_I2;
    numbered.iVal = number;
    const Variant coded(code);
    fire(kErro, {numbered, byReference(described.bstrVal), coded, from});
}

HRESULT ClassOf<_cTCP>::create(REFIID id, void** result) { return createObject<cTCP>(id, result); }

}  // namespace vela
