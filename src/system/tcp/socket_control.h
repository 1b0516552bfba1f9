// What cTCP asks of a socket, and what a socket tells it: a control of a caller's, or the library's
// own socket.
#pragma once

#include <string>
#include <string_view>

#include "automation/error.h"

namespace vela {

// A failure as the event Erro tells of it.
struct SocketFailure {
    short number;
    std::wstring description;
    long code;
    std::wstring source;
};
inline SocketFailure failureOf(const Error& error) {
    return {static_cast<short>(error.number & 0xFFFF), error.description, error.number,
            error.source};
}

// What happens to a socket. Each may close the socket, use it anew, or let go of it.
class SocketEvents {
  public:
    // Keeps whoever hears alive.
    virtual ComPtr<IUnknown> held() = 0;

    virtual void connected() = 0;
    virtual void requested(long request) = 0;
    virtual void arrived() = 0;
    virtual void sent() = 0;
    virtual void peerClosed() = 0;
    virtual void failed(const SocketFailure& failure) = 0;

  protected:
    ~SocketEvents() = default;
};

// Every function throws what the socket raises.
class SocketControl {
  public:
    virtual ~SocketControl() = default;

    // The remote place is the peer's while an accepted connection lasts.
    virtual long localPort() const = 0;
    virtual void setLocalPort(long port) = 0;
    virtual long remotePort() const = 0;
    virtual void setRemotePort(long port) = 0;
    virtual std::wstring remoteHost() const = 0;
    virtual void setRemoteHost(std::wstring_view host) = 0;
    virtual std::wstring remoteAddress() const = 0;
    virtual short state() const = 0;  // 0 when closed

    virtual void close() = 0;
    virtual void listen() = 0;
    virtual void connect() = 0;  // to the remote host and port
    // Only while requested() is told of `request`.
    virtual void accept(long request) = 0;
    virtual void send(std::wstring_view text) = 0;
    // What has arrived and was not received yet.
    virtual std::wstring receive() = 0;

    // Nothing is told from now on. A caller's control stays as it is; a socket of the library's own
    // closes.
    virtual void leave() = 0;
    // The same, and every socket closes.
    void end() {
        leave();
        close();
    }
};

}  // namespace vela
