// A TCP socket for messages, in the message loop of the thread that uses it.
//
// A connection carries one message in each direction. Sending ends that side of the connection, and
// so the receiver knows that the message is whole. A peer that keeps its side open all the same is
// taken to have said everything after a pause. Who connects while an accepted connection lasts
// waits in the platform's queue. Nothing here blocks, but for the platform's own calls.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "automation/error.h"
#include "runtime/message_window.h"
#include "runtime/winsock.h"

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

// What happens to a socket; called from the message loop. Each may close the socket, use it anew,
// or let go of its owner.
class SocketEvents {
  public:
    virtual void connected() = 0;
    virtual void requested(long request) = 0;
    virtual void arrived(std::size_t bytes) = 0;
    virtual void sent() = 0;
    virtual void peerClosed() = 0;
    virtual void failed(const Error& error) = 0;

  protected:
    ~SocketEvents() = default;
};

// Methods that cannot do their work throw the socket's Error.
class MessageSocket final : private MessageHandler {
  public:
    // `owner` is kept alive while it is told of an event; both outlive the socket.
    MessageSocket(SocketEvents& events, IUnknown& owner, const SocketLimits& limits = {});
    ~MessageSocket();

    // For the next listen() or connect(); ports are 0 to 65535.
    std::wstring remoteHost;
    u_short remotePort = 0;
    u_short localPort = 0;

    SocketState state() const { return state_; }
    // The port that the socket has, or else localPort.
    u_short boundPort() const;
    // Whether the connection was accepted, and thus has a peer of its own.
    bool accepted() const { return accepted_; }
    u_short peerPort() { return ntohs(peer().sin_port); }
    // Dotted; empty without a connection.
    std::wstring peerAddress();

    // Called during an event, it frees the port when the event is over, unless the socket listens
    // again by then.
    void close();
    // At local port 0 the system chooses one, which becomes localPort.
    void listen();
    // Leaves from localPort, unless an earlier connection still occupies it.
    void connect();
    // Only while requested() is told of `request`.
    void accept(long request);
    void send(std::string_view bytes);
    // What has arrived and was not taken yet.
    std::string take() { return std::exchange(received_, {}); }

  private:
    static constexpr UINT kListening = WM_APP;  // the number of the listener's messages

    bool handle(UINT message, WPARAM first, LPARAM second) override;
    void dispatch(UINT message, WPARAM first, LPARAM second);
    void happened(int event, int error);
    void resolved(ULONG address, int error);
    void requested(int error);
    void receive(bool toTheEnd);
    void connected();
    void sendRest();
    void waitForRoom();
    void peerEnded();
    void tick();
    void timedOut();
    void deliver();
    void fail(int code);

    const sockaddr_in& peer();
    bool findPeer();
    void dropUnusedListener();
    void watch(SocketHandle socket, SocketState state, long events);
    int startConnecting(u_short port);
    void connectToPeer();
    void reset(SocketState state);
    void nextMessage();
    void waitFor(DWORD milliseconds);

    SocketEvents& events_;
    IUnknown& owner_;
    const SocketLimits limits_;
    const Winsock winsock_;
    const MessageWindow window_;
    // The number of the messages of what is under way: those of earlier sockets may still come.
    UINT message_ = kListening + 1;
    SocketState state_ = SocketState::Closed;
    SocketHandle socket_;
    // Stays while a connection that it brought lasts, and while an event is handled.
    SocketHandle listener_;
    u_short listenerPort_ = 0;
    bool somebodyWaits_ = false;  // at listener_, and was not told of again
    bool handling_ = false;
    SocketHandle requested_;
    long request_ = 0;
    sockaddr_in peer_{};  // of an accepted connection, found when asked for
    bool accepted_ = false;
    DWORD begun_ = 0;     // the tick count at the first byte
    DWORD deadline_ = 0;  // the tick count at which what is waited for is given up
    bool waiting_ = false;
    bool ticking_ = false;  // The timer runs on between messages: starting it anew takes longer.
    std::string received_;
    std::string outgoing_;
    std::size_t gone_ = 0;  // how much of outgoing_ was sent
    bool sending_ = false;
    bool due_ = false;    // sendRest() is going to be called
    bool ended_ = false;  // this side of the connection
};

}  // namespace vela
