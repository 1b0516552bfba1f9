// A socket control, whoever made it, driven by the names of its members and events.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>

#include "automation/adapter.h"
#include "automation/event_listener.h"

namespace vela {

// Every function throws what the control raises.
class AttachedControl {
  public:
    enum class Event { Connect, ConnectionRequest, DataArrival, SendComplete, Error, Close };
    using Handler = std::function<void(Event event, std::span<VARIANT> arguments)>;

    // Hears the control's events from now on. Throws Error 13 for what is no socket control: it
    // lacks one of the members, or one of the events other than Close.
    AttachedControl(ComPtr<IDispatch> control, Handler handler);
    // Leaves the control as it is.
    ~AttachedControl() = default;

    long localPort() const;
    void setLocalPort(long port);
    long remotePort() const;
    void setRemotePort(long port);
    std::wstring remoteHost() const;
    void setRemoteHost(std::wstring_view host);
    std::wstring remoteAddress() const;
    short state() const;  // 0 when closed

    void close();
    void listen();
    void connect();  // to the remote host and port
    void accept(const VARIANT& request);
    void send(std::wstring_view text);
    std::wstring receive();
    // Closes the control, hearing no event any more.
    void end();

  private:
    enum Member {
        LocalPort,
        RemotePort,
        RemoteHost,
        RemoteHostIP,
        State,
        Close,
        Listen,
        Connect,
        Accept,
        SendData,
        GetData,
        kMembers
    };

    Variant get(Member member) const;
    void put(Member member, Variant value);
    void call(Member member, std::span<VARIANT> arguments = {});

    const ComPtr<IDispatch> control_;
    DISPID numbers_[kMembers];
    std::optional<EventListener> events_;
};

}  // namespace vela
