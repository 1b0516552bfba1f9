#include "system/tcp/Socket.h"

#include "text/ansi_bytes.h"

namespace vela {

namespace {

// The events' numbers in the type library.
constexpr DISPID kConnect = 1;
constexpr DISPID kConnectionRequest = 2;
constexpr DISPID kDataArrival = 3;
constexpr DISPID kSendComplete = 4;
constexpr DISPID kClose = 5;
constexpr DISPID kError = 6;

u_short portIn(LONG value) {
    if (value < 0 || value > 0xFFFF) raise(RuntimeError::InvalidProcedureCall);
    return static_cast<u_short>(value);
}

}  // namespace

HRESULT Socket::get_LocalPort(LONG* result) { return give(result, LONG{socket_.boundPort()}); }

HRESULT Socket::put_LocalPort(LONG newValue) {
    return guard([&] { socket_.localPort = portIn(newValue); });
}

HRESULT Socket::get_RemotePort(LONG* result) {
    return give(result, LONG{socket_.accepted() ? socket_.peerPort() : socket_.remotePort});
}

HRESULT Socket::put_RemotePort(LONG newValue) {
    return guard([&] { socket_.remotePort = portIn(newValue); });
}

HRESULT Socket::get_RemoteHost(BSTR* result) {
    return socket_.accepted() ? get_RemoteHostIP(result) : give(result, socket_.remoteHost);
}

HRESULT Socket::put_RemoteHost(BSTR newValue) { return take(socket_.remoteHost, newValue); }

HRESULT Socket::get_RemoteHostIP(BSTR* result) {
    return answer(result, [&] { return socket_.peerAddress(); });
}

HRESULT Socket::get_State(SHORT* result) {
    return give(result, static_cast<SHORT>(socket_.state()));
}

HRESULT Socket::Close() {
    return guard([&] { socket_.close(); });
}

HRESULT Socket::Listen() {
    return guard([&] { socket_.listen(); });
}

HRESULT Socket::Connect(VARIANT RemoteHost, VARIANT RemotePort) {
    return guard([&] {
        if (!isMissing(RemoteHost)) socket_.remoteHost = textOf(RemoteHost);
        if (!isMissing(RemotePort)) {
            socket_.remotePort = portIn(converted(RemotePort, VT_I4).lVal);
        }
        socket_.connect();
    });
}

HRESULT Socket::Accept(LONG requestID) {
    return guard([&] { socket_.accept(requestID); });
}

HRESULT Socket::SendData(VARIANT data) {
    return guard([&] { socket_.send(ansiBytes(textOf(data))); });
}

HRESULT Socket::GetData(VARIANT* data, VARIANT type) {
    return guard([&] {
        if (!data) throw Error{E_POINTER, kLibraryName, L""};
        if (!isMissing(type) && converted(type, VT_I4).lVal != VT_BSTR) {
            raise(RuntimeError::TypeMismatch);
        }
        Variant text(ansiText(socket_.take()));
        std::swap(*data, static_cast<VARIANT&>(text));
    });
}

// ---- events ------------------------------------------------------------------------------------

namespace {

VARIANT number(long value) {
    VARIANT argument{};
    argument.vt = VT_I4;
    argument.lVal = value;
    return argument;
}

}  // namespace

void Socket::connected() { fire(kConnect, {}); }

void Socket::requested(long request) { fire(kConnectionRequest, {number(request)}); }

void Socket::arrived(std::size_t bytes) { fire(kDataArrival, {number(static_cast<long>(bytes))}); }

void Socket::sent() { fire(kSendComplete, {}); }

void Socket::peerClosed() { fire(kClose, {}); }

void Socket::failed(const Error& error) {
    Variant description(error.description);
    Variant source(error.source);
    VARIANT_BOOL cancelDisplay = VARIANT_TRUE;
    VARIANT code{};
    code.vt = VT_I2;
    code.iVal = static_cast<SHORT>(error.number & 0xFFFF);
    VARIANT shown{};
    shown.vt = VT_BYREF | VT_BSTR;
    shown.pbstrVal = &description.bstrVal;
    VARIANT noFile{};
    noFile.vt = VT_BSTR;
    VARIANT cancel{};
    cancel.vt = VT_BYREF | VT_BOOL;
    cancel.pboolVal = &cancelDisplay;
    fire(kError, {code, shown, number(error.number), source, noFile, number(0), cancel});
}

}  // namespace vela
