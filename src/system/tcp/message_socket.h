// A TCP socket for messages, in the message loop of the thread that uses it.
//
// A connection carries one message in each direction. Sending ends that side of the connection, and
// so the receiver knows that the message is whole. A peer that keeps its side open all the same is
// taken to have said everything after a pause. Who connects while an accepted connection lasts
// waits in the platform's queue. Nothing here blocks, but for the platform's own calls.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>

#include "runtime/message_window.h"
#include "runtime/winsock.h"
#include "system/tcp/socket_control.h"

namespace vela {

enum class SocketState : short {
    Closed,
    Open,
    Listening,
    ConnectionPending,
    ResolvingHost,
    HostResolved,
    Connecting,
    Connected,
    PeerClosing,
    Error
};

// Limits on what a peer may do to a connection that was accepted or on which data comes.
struct SocketLimits {
    DWORD silence = 10'000;                      // milliseconds from acceptance to the first byte
    DWORD pause = 300;                           // after which what has come is taken as whole
    DWORD longest = 60'000;                      // from the first byte to the last
    std::size_t largest = std::size_t{4} << 20;  // bytes of one message
};

// Events come from the message loop. Methods that cannot do their work throw the socket's Error.
// Made by std::make_shared: it lives on while it tells of an event.
class MessageSocket final : public SocketControl,
                            public std::enable_shared_from_this<MessageSocket>,
                            private MessageHandler {
  public:
    // `events` must live until leave().
    explicit MessageSocket(SocketEvents& events, const SocketLimits& limits = {});

    // The port that the socket has, or else the one that was set.
    long localPort() const override { return boundPort(); }
    // Ports are 0 to 65535, for the next listen() or connect().
    void setLocalPort(long port) override;
    long remotePort() const override;
    void setRemotePort(long port) override;
    std::wstring remoteHost() const override;
    void setRemoteHost(std::wstring_view host) override { remoteHost_ = host; }
    // Dotted; empty without a connection.
    std::wstring remoteAddress() const override;
    short state() const override { return static_cast<short>(connection_.state); }

    // Called during an event, it frees the port when the event is over, unless the socket listens
    // again by then.
    void close() override;
    // At local port 0 the system chooses one, which becomes the local port.
    void listen() override;
    // Leaves from the local port, unless an earlier connection still occupies it.
    void connect() override;
    void accept(long request) override;
    void send(std::wstring_view text) override;
    std::wstring receive() override;
    void leave() override;

  private:
    static constexpr UINT kListening = WM_APP;  // the number of the listener's messages

    struct Connection {
        SocketState state = SocketState::Closed;
        SocketHandle socket;
        bool accepted = false;
        mutable sockaddr_in peer{};  // of an accepted connection, found when asked for
        std::string received;
        DWORD begun = 0;                // the tick count at the first byte
        std::optional<DWORD> deadline;  // the tick count at which what is waited for is given up
        std::string outgoing;
        std::size_t sentBytes = 0;  // of outgoing
        bool sending = false;
        bool sendQueued = false;  // sendRest() is going to be called
        bool ended = false;       // this side of the connection
    };

    bool handle(UINT message, WPARAM first, LPARAM second) override;
    void dispatch(UINT message, WPARAM first, LPARAM second);
    void happened(int event, int error);
    void resolved(ULONG address, int error);
    void requested(int error);
    void gather(bool toTheEnd);
    void connected();
    void sendRest();
    void waitForRoom();
    void peerEnded();
    void tick();
    void timedOut();
    void deliver();
    void fail(int code);
    // Tells nobody once the socket was left.
    template <class Event, class... Arguments>
    void tell(Event event, const Arguments&... arguments);

    u_short boundPort() const;
    const sockaddr_in& peer() const;
    bool findPeer() const;
    void dropUnusedListener();
    void watch(SocketHandle socket, SocketState state, long events);
    int startConnecting(u_short port);
    void connectToPeer();
    void reset(SocketState state);
    void nextMessage();
    void waitFor(DWORD milliseconds);

    SocketEvents* events_;  // null once it was left
    const SocketLimits limits_;
    const Winsock winsock_;
    const MessageWindow window_;
    std::wstring remoteHost_;
    u_short remotePort_ = 0;
    u_short localPort_ = 0;
    // The number of the messages of what is under way: those of earlier sockets may still come.
    UINT message_ = kListening + 1;
    Connection connection_;
    // Stays while a connection that it brought lasts, and while an event is handled.
    SocketHandle listener_;
    u_short listenerPort_ = 0;
    bool somebodyWaits_ = false;  // at listener_, and was not told of again
    bool handling_ = false;
    SocketHandle requested_;
    long request_ = 0;
    bool ticking_ = false;  // The timer runs on between messages: starting it anew takes longer.
};

}  // namespace vela
