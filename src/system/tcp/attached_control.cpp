#include "system/tcp/attached_control.h"

namespace vela {

namespace {

constexpr const wchar_t* kMembers[] = {L"LocalPort", L"RemotePort", L"RemoteHost", L"RemoteHostIP",
                                       L"State",     L"Close",      L"Listen",     L"Connect",
                                       L"Accept",    L"SendData",   L"GetData"};

enum Event : std::size_t {
    Connected,
    ConnectionRequest,
    DataArrival,
    SendComplete,
    Failed,
    Closed
};
// In the order of Event.
constexpr const wchar_t* kEventNames[] = {
    L"Connect", L"ConnectionRequest", L"DataArrival", L"SendComplete", L"Error", L"Close"};
constexpr std::size_t kRequiredEvents = std::size(kEventNames) - 1;

// An argument of an event, and what stands for it where it is missing or of another kind.
LONG numberAt(std::span<VARIANT> arguments, std::size_t index) {
    if (index >= arguments.size()) return 0;
    return static_cast<LONG>(static_cast<long long>(numberIn(arguments[index]).value_or(0)));
}
std::wstring textAt(std::span<VARIANT> arguments, std::size_t index) {
    std::wstring found;
    if (index < arguments.size()) quietly([&] { found = textOf(arguments[index]); });
    return found;
}

void tellFailure(SocketEvents& events, std::span<VARIANT> arguments) {
    // It is reported: no message box on top of that.
    if (arguments.size() > 6 && arguments[6].vt == (VT_BYREF | VT_BOOL)) {
        *arguments[6].pboolVal = VARIANT_TRUE;
    }
    events.failed({static_cast<short>(numberAt(arguments, 0)), textAt(arguments, 1),
                   numberAt(arguments, 2), textAt(arguments, 3)});
}

// Each may be the end of the control that is heard, and so may be to look at its arguments.
void tell(SocketEvents& events, std::size_t event, std::span<VARIANT> arguments) {
    const auto held = events.held();
    switch (event) {
        case Connected: return events.connected();
        case ConnectionRequest:
            if (!arguments.empty()) events.requested(numberAt(arguments, 0));
            return;
        case DataArrival: return events.arrived();
        case SendComplete: return events.sent();
        case Failed: return tellFailure(events, arguments);
        case Closed: return events.peerClosed();
    }
}

}  // namespace

AttachedControl::AttachedControl(ComPtr<IDispatch> control, SocketEvents& events)
    : control_(std::move(control)) {
    for (const wchar_t* member : kMembers) {
        if (!control_.has(member)) raise(RuntimeError::TypeMismatch);
    }
    listener_.emplace(control_.object(), kEventNames, kRequiredEvents,
                      [&events](std::size_t event, std::span<VARIANT> arguments) {
                          tell(events, event, arguments);
                      });
}

long AttachedControl::localPort() const {
    return converted(control_.get(L"LocalPort"), VT_I4).lVal;
}
void AttachedControl::setLocalPort(long port) { control_.put(L"LocalPort", Variant(port)); }
long AttachedControl::remotePort() const {
    return converted(control_.get(L"RemotePort"), VT_I4).lVal;
}
void AttachedControl::setRemotePort(long port) { control_.put(L"RemotePort", Variant(port)); }
std::wstring AttachedControl::remoteHost() const { return textOf(control_.get(L"RemoteHost")); }
void AttachedControl::setRemoteHost(std::wstring_view host) {
    control_.put(L"RemoteHost", Variant(host));
}
std::wstring AttachedControl::remoteAddress() const {
    return textOf(control_.get(L"RemoteHostIP"));
}
short AttachedControl::state() const { return converted(control_.get(L"State"), VT_I2).iVal; }

void AttachedControl::close() { control_.run(L"Close"); }
void AttachedControl::listen() { control_.run(L"Listen"); }

void AttachedControl::connect() {
    const Variant host = control_.get(L"RemoteHost");
    const Variant port = control_.get(L"RemotePort");
    VARIANT arguments[] = {host, port};
    control_.run(L"Connect", arguments);
}

void AttachedControl::accept(long request) {
    Variant argument(request);
    control_.run(L"Accept", single(argument));
}

void AttachedControl::send(std::wstring_view text) {
    Variant data(text);
    control_.run(L"SendData", single(data));
}

std::wstring AttachedControl::receive() {
    Variant data;
    VARIANT arguments[2] = {};
    arguments[0].vt = VT_BYREF | VT_VARIANT;
    arguments[0].pvarVal = &data;
    arguments[1].vt = VT_I4;
    arguments[1].lVal = VT_BSTR;  // as a text
    control_.run(L"GetData", arguments);
    return textOf(data);
}

void AttachedControl::leave() { listener_.reset(); }

}  // namespace vela
