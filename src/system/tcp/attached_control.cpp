#include "system/tcp/attached_control.h"

namespace vela {

namespace {

// In the order of AttachedControl::Member.
constexpr const wchar_t* kMemberNames[] = {
    L"LocalPort", L"RemotePort", L"RemoteHost", L"RemoteHostIP", L"State",  L"Close",
    L"Listen",    L"Connect",    L"Accept",     L"SendData",     L"GetData"};

// In the order of AttachedControl::Event.
constexpr const wchar_t* kEventNames[] = {
    L"Connect", L"ConnectionRequest", L"DataArrival", L"SendComplete", L"Error", L"Close"};
constexpr std::size_t kRequiredEvents = std::size(kEventNames) - 1;

}  // namespace

AttachedControl::AttachedControl(ComPtr<IDispatch> control, Handler handler)
    : control_(std::move(control)) {
    static_assert(std::size(kMemberNames) == kMembers);
    for (int member = 0; member < kMembers; ++member) {
        numbers_[member] = findMember(control_.Get(), kMemberNames[member]);
        if (numbers_[member] == DISPID_UNKNOWN) raise(RuntimeError::TypeMismatch);
    }
    events_.emplace(
        control_.Get(), kEventNames, kRequiredEvents,
        [handler = std::move(handler)](std::size_t event, std::span<VARIANT> arguments) {
            handler(static_cast<Event>(event), arguments);
        });
}

Variant AttachedControl::get(Member member) const {
    Variant result;
    checkRecorded(
        callLateBound(control_.Get(), numbers_[member], DISPATCH_PROPERTYGET, {}, &result));
    return result;
}

void AttachedControl::put(Member member, Variant value) {
    checkRecorded(callLateBound(control_.Get(), numbers_[member], DISPATCH_PROPERTYPUT,
                                single(value), nullptr));
}

void AttachedControl::call(Member member, std::span<VARIANT> arguments) {
    checkRecorded(
        callLateBound(control_.Get(), numbers_[member], DISPATCH_METHOD, arguments, nullptr));
}

long AttachedControl::localPort() const { return converted(get(LocalPort), VT_I4).lVal; }
void AttachedControl::setLocalPort(long port) { put(LocalPort, Variant(port)); }
long AttachedControl::remotePort() const { return converted(get(RemotePort), VT_I4).lVal; }
void AttachedControl::setRemotePort(long port) { put(RemotePort, Variant(port)); }
std::wstring AttachedControl::remoteHost() const { return textOf(get(RemoteHost)); }
void AttachedControl::setRemoteHost(std::wstring_view host) { put(RemoteHost, Variant(host)); }
std::wstring AttachedControl::remoteAddress() const { return textOf(get(RemoteHostIP)); }
short AttachedControl::state() const { return converted(get(State), VT_I2).iVal; }

void AttachedControl::close() { call(Close); }
void AttachedControl::listen() { call(Listen); }

void AttachedControl::connect() {
    const Variant host = get(RemoteHost);
    const Variant port = get(RemotePort);
    VARIANT arguments[] = {host, port};
    call(Connect, arguments);
}

void AttachedControl::accept(const VARIANT& request) {
    VARIANT argument = dereferenced(request);
    call(Accept, single(argument));
}

void AttachedControl::send(std::wstring_view text) {
    Variant data(text);
    call(SendData, single(data));
}

std::wstring AttachedControl::receive() {
    Variant data;
    VARIANT arguments[2] = {};
    arguments[0].vt = VT_BYREF | VT_VARIANT;
    arguments[0].pvarVal = &data;
    arguments[1].vt = VT_I4;
    arguments[1].lVal = VT_BSTR;  // as a text
    call(GetData, arguments);
    return textOf(data);
}

void AttachedControl::end() {
    events_.reset();
    close();
}

}  // namespace vela
