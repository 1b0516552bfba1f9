// A socket control of a caller's, driven by the names of its members and events.
#pragma once

#include <optional>

#include "automation/event_listener.h"
#include "automation/late_bound.h"
#include "system/tcp/socket_control.h"

namespace vela {

class AttachedControl final : public SocketControl {
  public:
    // Hears the control's events from now on. Throws Error 13 for what is no socket control: it
    // lacks one of the members, or one of the events other than Close.
    AttachedControl(ComPtr<IDispatch> control, SocketEvents& events);

    long localPort() const override;
    void setLocalPort(long port) override;
    long remotePort() const override;
    void setRemotePort(long port) override;
    std::wstring remoteHost() const override;
    void setRemoteHost(std::wstring_view host) override;
    std::wstring remoteAddress() const override;
    short state() const override;

    void close() override;
    void listen() override;
    void connect() override;
    void accept(long request) override;
    void send(std::wstring_view text) override;
    std::wstring receive() override;
    void leave() override;

  private:
    mutable LateBound control_;  // remembers the members' numbers
    std::optional<EventListener> listener_;
};

}  // namespace vela
