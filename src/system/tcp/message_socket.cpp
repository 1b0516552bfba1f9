// The platform's asynchronous selection is what a message loop needs, though newer programs poll.
#define _WINSOCK_DEPRECATED_NO_WARNINGS
#include "system/tcp/message_socket.h"

#include <ws2tcpip.h>

#include <algorithm>
#include <array>

#include "runtime/type_library.h"
#include "text/ansi_bytes.h"

namespace vela {

namespace {

constexpr long kConnectionEvents = FD_READ | FD_CLOSE;
constexpr std::size_t kPiece = 65536;
constexpr UINT_PTR kTimer = 1;
constexpr UINT kTick = 50;  // milliseconds

void require(int result) {
    if (result == SOCKET_ERROR) raiseSocketError(WSAGetLastError());
}

u_short portIn(long value) {
    if (value < 0 || value > 0xFFFF) raise(RuntimeError::InvalidProcedureCall);
    return static_cast<u_short>(value);
}

sockaddr_in endpoint(ULONG address, u_short port) {
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = address;
    place.sin_port = htons(port);
    return place;
}
const sockaddr* general(const sockaddr_in& place) {
    return reinterpret_cast<const sockaddr*>(&place);
}

SocketHandle newSocket() {
    SocketHandle socket(::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
    if (!socket) raiseSocketError(WSAGetLastError());
    return socket;
}

void bindTo(const SocketHandle& socket, u_short port) {
    const sockaddr_in place = endpoint(INADDR_ANY, port);
    require(bind(socket.get(), general(place), sizeof place));
}

SocketHandle newListener(u_short port) {
    SocketHandle socket = newSocket();
    bindTo(socket, port);
    require(::listen(socket.get(), SOMAXCONN));
    return socket;
}

// A host name on its way to becoming an address, which goes to the window as a message.
struct Resolution {
    HWND window;
    UINT message;
    std::wstring host;

    void run() const {
        ADDRINFOW hints{};
        hints.ai_family = AF_INET;
        hints.ai_socktype = SOCK_STREAM;
        ADDRINFOW* found = nullptr;
        const int error = GetAddrInfoW(host.c_str(), nullptr, &hints, &found);
        ULONG address = 0;
        if (found) address = reinterpret_cast<sockaddr_in*>(found->ai_addr)->sin_addr.s_addr;
        if (found) FreeAddrInfoW(found);
        PostMessageW(window, message, address, error);
    }
};

void CALLBACK resolve(PTP_CALLBACK_INSTANCE, void* context) {
    const std::unique_ptr<Resolution> resolution(static_cast<Resolution*>(context));
    quietly([&] {
        const Winsock winsock;  // the socket may be gone
        resolution->run();
    });
}

// Resolves in a thread of the platform's, which keeps this module loaded meanwhile.
void startResolving(std::unique_ptr<Resolution> resolution) {
    TP_CALLBACK_ENVIRON environment;
    InitializeThreadpoolEnvironment(&environment);
    SetThreadpoolCallbackLibrary(&environment, moduleHandle());
    if (!TrySubmitThreadpoolCallback(resolve, resolution.get(), &environment)) raiseLastError();
    resolution.release();
}

}  // namespace

MessageSocket::MessageSocket(SocketEvents& events, const SocketLimits& limits)
    : events_(&events), limits_(limits), window_(*this, L"VelaUtil10.Socket") {}

// ---- its places ---------------------------------------------------------------------------------

u_short MessageSocket::boundPort() const {
    sockaddr_in place{};
    int size = sizeof place;
    const bool listening = connection_.state == SocketState::Listening;
    const SocketHandle& bound = listening ? listener_ : connection_.socket;
    if (bound) getsockname(bound.get(), reinterpret_cast<sockaddr*>(&place), &size);
    return place.sin_port ? ntohs(place.sin_port) : localPort_;
}

void MessageSocket::setLocalPort(long port) { localPort_ = portIn(port); }

long MessageSocket::remotePort() const {
    return connection_.accepted ? ntohs(peer().sin_port) : remotePort_;
}

void MessageSocket::setRemotePort(long port) { remotePort_ = portIn(port); }

std::wstring MessageSocket::remoteHost() const {
    return connection_.accepted ? remoteAddress() : remoteHost_;
}

std::wstring MessageSocket::remoteAddress() const {
    std::array<wchar_t, INET_ADDRSTRLEN> dotted{};
    const IN_ADDR& address = peer().sin_addr;
    if (address.s_addr) InetNtopW(AF_INET, &address, dotted.data(), dotted.size());
    return dotted.data();
}

bool MessageSocket::findPeer() const {
    int size = sizeof connection_.peer;
    return getpeername(connection_.socket.get(), reinterpret_cast<sockaddr*>(&connection_.peer),
                       &size) == 0;
}

const sockaddr_in& MessageSocket::peer() const {
    if (connection_.accepted && !connection_.peer.sin_port) findPeer();
    return connection_.peer;
}

// ---- what the owner asks for -------------------------------------------------------------------

void MessageSocket::close() {
    reset(SocketState::Closed);
    dropUnusedListener();
}

void MessageSocket::listen() {
    reset(SocketState::Closed);
    const bool kept = listener_ && listenerPort_ == localPort_;
    SocketHandle listener = kept ? std::move(listener_) : newListener(localPort_);
    if (!kept || somebodyWaits_) {
        require(WSAAsyncSelect(listener.get(), window_.get(), kListening, FD_ACCEPT));
    }
    somebodyWaits_ = false;
    listener_ = std::move(listener);
    connection_.state = SocketState::Listening;
    if (localPort_ == 0) localPort_ = boundPort();
    listenerPort_ = localPort_;
}

void MessageSocket::connect() {
    close();
    if (remoteHost_.empty()) raiseSocketError(WSAEADDRNOTAVAIL);
    connection_.peer = endpoint(0, remotePort_);
    IN_ADDR& address = connection_.peer.sin_addr;
    if (InetPtonW(AF_INET, remoteHost_.c_str(), &address) == 1) return connectToPeer();
    connection_.state = SocketState::ResolvingHost;
    startResolving(
        std::unique_ptr<Resolution>(new Resolution{window_.get(), message_, remoteHost_}));
}

void MessageSocket::accept(long request) {
    if (!requested_ || request != request_) raise(RuntimeError::InvalidProcedureCall);
    reset(SocketState::Closed);
    watch(std::exchange(requested_, SocketHandle()), SocketState::Connected, kConnectionEvents);
    connection_.accepted = true;
    waitFor(limits_.silence);
}

void MessageSocket::send(std::wstring_view text) {
    const SocketState state = connection_.state;
    if (state != SocketState::Connected && state != SocketState::PeerClosing) {
        raiseSocketError(WSAENOTCONN);
    }
    connection_.outgoing.append(ansiBytes(text));
    connection_.sending = true;
    if (!std::exchange(connection_.sendQueued, true)) {
        PostMessageW(window_.get(), message_, connection_.socket.get(), FD_WRITE);
    }
}

std::wstring MessageSocket::receive() { return ansiText(std::exchange(connection_.received, {})); }

void MessageSocket::leave() {
    events_ = nullptr;
    close();
    listener_.reset();
}

// ---- what the platform tells -------------------------------------------------------------------

bool MessageSocket::handle(UINT message, WPARAM first, LPARAM second) {
    if (message != WM_TIMER && message < WM_APP) return false;
    const auto alive = shared_from_this();
    const bool nested = std::exchange(handling_, true);
    try {
        dispatch(message, first, second);
    } catch (...) {  // short of memory: a message must not lose a part
        quietly([&] { fail(WSAENOBUFS); });
    }
    handling_ = nested;
    dropUnusedListener();
    return true;
}

void MessageSocket::dispatch(UINT message, WPARAM first, LPARAM second) {
    if (message == WM_TIMER) {
        tick();
    } else if (message == kListening) {
        requested(WSAGETSELECTERROR(second));
    } else if (message != message_) {
        return;
    } else if (connection_.state == SocketState::ResolvingHost) {
        resolved(static_cast<ULONG>(first), static_cast<int>(second));
    } else {
        happened(WSAGETSELECTEVENT(second), WSAGETSELECTERROR(second));
    }
}

void MessageSocket::happened(int event, int error) {
    if (error) return fail(error);
    switch (event) {
        case FD_READ: return gather(false);
        case FD_CLOSE: return peerEnded();
        case FD_WRITE: return sendRest();
        case FD_CONNECT: return connected();
        default: return;
    }
}

// What is sent meanwhile goes right afterwards.
void MessageSocket::connected() {
    const UINT current = message_;
    connection_.state = SocketState::Connected;
    connection_.sendQueued = true;
    tell(&SocketEvents::connected);
    if (message_ == current) sendRest();
}

void MessageSocket::resolved(ULONG address, int error) {
    if (error) return fail(error);
    connection_.state = SocketState::HostResolved;
    connection_.peer.sin_addr.s_addr = address;
    try {
        connectToPeer();
    } catch (const Error& failure) {
        tell(&SocketEvents::failed, failureOf(failure));
    }
}

void MessageSocket::requested(int error) {
    if (connection_.state != SocketState::Listening) {
        somebodyWaits_ = true;
        return;
    }
    if (error) return fail(error);
    requested_ = SocketHandle(::accept(listener_.get(), nullptr, nullptr));
    if (!requested_) return;  // who asked has gone again
    tell(&SocketEvents::requested, ++request_);
    requested_.reset();
}

void MessageSocket::gather(bool toTheEnd) {
    if (connection_.state != SocketState::Connected) return;
    std::string& received = connection_.received;
    if (received.empty()) connection_.begun = GetTickCount();
    std::array<char, kPiece> piece;
    int count = 0;
    do {
        count = recv(connection_.socket.get(), piece.data(), static_cast<int>(piece.size()), 0);
        if (count == SOCKET_ERROR) {
            if (const int code = WSAGetLastError(); code != WSAEWOULDBLOCK) return fail(code);
            break;
        }
        received.append(piece.data(), static_cast<std::size_t>(count));
        if (received.size() > limits_.largest) return fail(WSAEMSGSIZE);
    } while (count == static_cast<int>(piece.size()) || (toTheEnd && count > 0));
    if (received.empty()) return;
    if (GetTickCount() - connection_.begun > limits_.longest) return fail(WSAETIMEDOUT);
    waitFor(limits_.pause);
}

void MessageSocket::sendRest() {
    connection_.sendQueued = false;
    if (!connection_.sending) return;
    const std::string& all = connection_.outgoing;
    std::size_t& sent = connection_.sentBytes;
    while (sent < all.size()) {
        const int size = static_cast<int>(std::min(all.size() - sent, kPiece));
        const int count = ::send(connection_.socket.get(), all.data() + sent, size, 0);
        if (count == SOCKET_ERROR) {
            const int code = WSAGetLastError();
            return code == WSAEWOULDBLOCK ? waitForRoom() : fail(code);
        }
        sent += static_cast<std::size_t>(count);
    }
    connection_.sending = false;
    connection_.outgoing = {};
    sent = 0;
    connection_.ended = true;
    shutdown(connection_.socket.get(), SD_SEND);
    tell(&SocketEvents::sent);
}

void MessageSocket::waitForRoom() {
    connection_.sendQueued = true;
    WSAAsyncSelect(connection_.socket.get(), window_.get(), message_, kConnectionEvents | FD_WRITE);
}

void MessageSocket::peerEnded() {
    const UINT current = message_;
    u_long left = 0;
    ioctlsocket(connection_.socket.get(), FIONREAD, &left);
    if (left > 0) gather(true);
    if (message_ != current) return;
    // Not every platform tells a reset from an end in good order, after which there still is a
    // peer.
    if (!connection_.ended && !findPeer()) return fail(WSAECONNRESET);
    connection_.state = SocketState::PeerClosing;
    deliver();
    if (message_ == current) tell(&SocketEvents::peerClosed);
}

void MessageSocket::tick() {
    if (!connection_.deadline) {
        KillTimer(window_.get(), kTimer);
        ticking_ = false;
    } else if (static_cast<LONG>(GetTickCount() - *connection_.deadline) >= 0) {
        timedOut();
    }
}

void MessageSocket::timedOut() {
    if (connection_.received.empty()) fail(WSAETIMEDOUT);
    else deliver();
}

void MessageSocket::deliver() {
    connection_.deadline.reset();
    if (!connection_.received.empty()) tell(&SocketEvents::arrived);
}

void MessageSocket::fail(int code) {
    reset(SocketState::Error);
    tell(&SocketEvents::failed, failureOf(socketError(code)));
}

template <class Event, class... Arguments>
void MessageSocket::tell(Event event, const Arguments&... arguments) {
    if (events_) (events_->*event)(arguments...);
}

// ---- sockets -----------------------------------------------------------------------------------

void MessageSocket::dropUnusedListener() {
    const bool listening = connection_.state == SocketState::Listening;
    if (!handling_ && !connection_.accepted && !listening) listener_.reset();
}

void MessageSocket::watch(SocketHandle socket, SocketState state, long events) {
    nextMessage();
    require(WSAAsyncSelect(socket.get(), window_.get(), message_, events));
    connection_.socket = std::move(socket);
    connection_.state = state;
}

// 0, or the error code.
int MessageSocket::startConnecting(u_short port) {
    try {
        SocketHandle socket = newSocket();
        if (port) bindTo(socket, port);
        watch(std::move(socket), SocketState::Connecting, FD_CONNECT | kConnectionEvents);
    } catch (const Error& failure) {
        return failure.number & 0xFFFF;
    }
    const sockaddr_in& peer = connection_.peer;
    if (::connect(connection_.socket.get(), general(peer), sizeof peer) == 0) return 0;
    const int code = WSAGetLastError();
    return code == WSAEWOULDBLOCK ? 0 : code;
}

void MessageSocket::connectToPeer() {
    int code = startConnecting(localPort_);
    const bool occupied = code == WSAEADDRINUSE || code == WSAEADDRNOTAVAIL;
    if (localPort_ && occupied) code = startConnecting(0);
    if (!code) return;
    reset(SocketState::Error);
    raiseSocketError(code);
}

void MessageSocket::reset(SocketState state) {
    connection_ = Connection();
    connection_.state = state;
    nextMessage();
}

void MessageSocket::nextMessage() { message_ = kListening + 1 + (message_ - kListening) % 0x3000; }

void MessageSocket::waitFor(DWORD milliseconds) {
    connection_.deadline = GetTickCount() + milliseconds;
    if (!ticking_) ticking_ = SetTimer(window_.get(), kTimer, kTick, nullptr) != 0;
}

}  // namespace vela
