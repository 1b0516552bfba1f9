// The platform's asynchronous selection is what a message loop needs, though newer programs poll.
#define _WINSOCK_DEPRECATED_NO_WARNINGS
#include "system/tcp/message_socket.h"

#include <ws2tcpip.h>

#include <algorithm>
#include <array>
#include <memory>

#include "runtime/type_library.h"

namespace vela {

namespace {

constexpr long kConnectionEvents = FD_READ | FD_CLOSE;
constexpr std::size_t kPiece = 65536;
constexpr UINT_PTR kTimer = 1;
constexpr UINT kTick = 50;  // milliseconds

void require(int result) {
    if (result == SOCKET_ERROR) raiseSocketError(WSAGetLastError());
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

MessageSocket::MessageSocket(SocketEvents& events, IUnknown& owner, const SocketLimits& limits)
    : events_(events), owner_(owner), limits_(limits), window_(*this, L"VelaUtil10.Socket") {}

MessageSocket::~MessageSocket() { close(); }

u_short MessageSocket::boundPort() const {
    sockaddr_in place{};
    int size = sizeof place;
    const SocketHandle& bound = state_ == SocketState::Listening ? listener_ : socket_;
    if (bound) getsockname(bound.get(), reinterpret_cast<sockaddr*>(&place), &size);
    return place.sin_port ? ntohs(place.sin_port) : localPort;
}

bool MessageSocket::findPeer() {
    int size = sizeof peer_;
    return getpeername(socket_.get(), reinterpret_cast<sockaddr*>(&peer_), &size) == 0;
}

const sockaddr_in& MessageSocket::peer() {
    if (accepted_ && !peer_.sin_port) findPeer();
    return peer_;
}

std::wstring MessageSocket::peerAddress() {
    std::array<wchar_t, INET_ADDRSTRLEN> dotted{};
    const IN_ADDR& address = peer().sin_addr;
    if (address.s_addr) InetNtopW(AF_INET, &address, dotted.data(), dotted.size());
    return dotted.data();
}

// ---- what the owner asks for -------------------------------------------------------------------

void MessageSocket::close() {
    reset(SocketState::Closed);
    dropUnusedListener();
}

void MessageSocket::listen() {
    reset(SocketState::Closed);
    const bool kept = listener_ && listenerPort_ == localPort;
    SocketHandle listener = kept ? std::move(listener_) : newListener(localPort);
    if (!kept || somebodyWaits_) {
        require(WSAAsyncSelect(listener.get(), window_.get(), kListening, FD_ACCEPT));
    }
    somebodyWaits_ = false;
    listener_ = std::move(listener);
    state_ = SocketState::Listening;
    if (localPort == 0) localPort = boundPort();
    listenerPort_ = localPort;
}

void MessageSocket::connect() {
    close();
    if (remoteHost.empty()) raiseSocketError(WSAEADDRNOTAVAIL);
    peer_ = endpoint(0, remotePort);
    if (InetPtonW(AF_INET, remoteHost.c_str(), &peer_.sin_addr) == 1) return connectToPeer();
    state_ = SocketState::ResolvingHost;
    startResolving(
        std::unique_ptr<Resolution>(new Resolution{window_.get(), message_, remoteHost}));
}

void MessageSocket::accept(long request) {
    if (!requested_ || request != request_) raise(RuntimeError::InvalidProcedureCall);
    reset(SocketState::Closed);
    watch(std::exchange(requested_, SocketHandle()), SocketState::Connected, kConnectionEvents);
    accepted_ = true;
    waitFor(limits_.silence);
}

void MessageSocket::send(std::string_view bytes) {
    if (state_ != SocketState::Connected && state_ != SocketState::PeerClosing) {
        raiseSocketError(WSAENOTCONN);
    }
    outgoing_.append(bytes);
    sending_ = true;
    if (!std::exchange(due_, true)) {
        PostMessageW(window_.get(), message_, socket_.get(), FD_WRITE);
    }
}

// ---- what the platform tells -------------------------------------------------------------------

bool MessageSocket::handle(UINT message, WPARAM first, LPARAM second) {
    if (message != WM_TIMER && message < WM_APP) return false;
    const ComPtr<IUnknown> alive = &owner_;
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
    } else if (state_ == SocketState::ResolvingHost) {
        resolved(static_cast<ULONG>(first), static_cast<int>(second));
    } else {
        happened(WSAGETSELECTEVENT(second), WSAGETSELECTERROR(second));
    }
}

void MessageSocket::happened(int event, int error) {
    if (error) return fail(error);
    switch (event) {
        case FD_READ: return receive(false);
        case FD_CLOSE: return peerEnded();
        case FD_WRITE: return sendRest();
        case FD_CONNECT: return connected();
        default: return;
    }
}

// What is sent meanwhile goes right afterwards.
void MessageSocket::connected() {
    const UINT current = message_;
    state_ = SocketState::Connected;
    due_ = true;
    events_.connected();
    if (message_ == current) sendRest();
}

void MessageSocket::resolved(ULONG address, int error) {
    if (error) return fail(error);
    state_ = SocketState::HostResolved;
    peer_.sin_addr.s_addr = address;
    try {
        connectToPeer();
    } catch (const Error& failure) {
        events_.failed(failure);
    }
}

void MessageSocket::requested(int error) {
    if (state_ != SocketState::Listening) {
        somebodyWaits_ = true;
        return;
    }
    if (error) return fail(error);
    requested_ = SocketHandle(::accept(listener_.get(), nullptr, nullptr));
    if (!requested_) return;  // who asked has gone again
    events_.requested(++request_);
    requested_.reset();
}

void MessageSocket::receive(bool toTheEnd) {
    if (state_ != SocketState::Connected) return;
    if (received_.empty()) begun_ = GetTickCount();
    std::array<char, kPiece> piece;
    int count = 0;
    do {
        count = recv(socket_.get(), piece.data(), static_cast<int>(piece.size()), 0);
        if (count == SOCKET_ERROR) {
            if (const int code = WSAGetLastError(); code != WSAEWOULDBLOCK) return fail(code);
            break;
        }
        received_.append(piece.data(), static_cast<std::size_t>(count));
        if (received_.size() > limits_.largest) return fail(WSAEMSGSIZE);
    } while (count == static_cast<int>(piece.size()) || (toTheEnd && count > 0));
    if (received_.empty()) return;
    if (GetTickCount() - begun_ > limits_.longest) return fail(WSAETIMEDOUT);
    waitFor(limits_.pause);
}

void MessageSocket::sendRest() {
    due_ = false;
    if (!sending_) return;
    while (gone_ < outgoing_.size()) {
        const int size = static_cast<int>(std::min(outgoing_.size() - gone_, kPiece));
        const int count = ::send(socket_.get(), outgoing_.data() + gone_, size, 0);
        if (count == SOCKET_ERROR) {
            const int code = WSAGetLastError();
            return code == WSAEWOULDBLOCK ? waitForRoom() : fail(code);
        }
        gone_ += static_cast<std::size_t>(count);
    }
    sending_ = false;
    outgoing_ = {};
    gone_ = 0;
    ended_ = true;
    shutdown(socket_.get(), SD_SEND);
    events_.sent();
}

void MessageSocket::waitForRoom() {
    due_ = true;
    WSAAsyncSelect(socket_.get(), window_.get(), message_, kConnectionEvents | FD_WRITE);
}

void MessageSocket::peerEnded() {
    const UINT current = message_;
    u_long left = 0;
    ioctlsocket(socket_.get(), FIONREAD, &left);
    if (left > 0) receive(true);
    if (message_ != current) return;
    // Not every platform tells a reset from an end in good order, after which there still is a
    // peer.
    if (!ended_ && !findPeer()) return fail(WSAECONNRESET);
    state_ = SocketState::PeerClosing;
    deliver();
    if (message_ == current) events_.peerClosed();
}

void MessageSocket::tick() {
    if (!waiting_) {
        KillTimer(window_.get(), kTimer);
        ticking_ = false;
    } else if (static_cast<LONG>(GetTickCount() - deadline_) >= 0) {
        timedOut();
    }
}

void MessageSocket::timedOut() {
    if (received_.empty()) fail(WSAETIMEDOUT);
    else deliver();
}

void MessageSocket::deliver() {
    waiting_ = false;
    if (!received_.empty()) events_.arrived(received_.size());
}

void MessageSocket::fail(int code) {
    reset(SocketState::Error);
    events_.failed(socketError(code));
}

// ---- sockets -----------------------------------------------------------------------------------

void MessageSocket::dropUnusedListener() {
    if (!handling_ && !accepted_ && state_ != SocketState::Listening) listener_.reset();
}

void MessageSocket::watch(SocketHandle socket, SocketState state, long events) {
    nextMessage();
    require(WSAAsyncSelect(socket.get(), window_.get(), message_, events));
    socket_ = std::move(socket);
    state_ = state;
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
    if (::connect(socket_.get(), general(peer_), sizeof peer_) == 0) return 0;
    const int code = WSAGetLastError();
    return code == WSAEWOULDBLOCK ? 0 : code;
}

void MessageSocket::connectToPeer() {
    int code = startConnecting(localPort);
    if (localPort && (code == WSAEADDRINUSE || code == WSAEADDRNOTAVAIL)) code = startConnecting(0);
    if (!code) return;
    reset(SocketState::Error);
    raiseSocketError(code);
}

void MessageSocket::reset(SocketState state) {
    waiting_ = false;
    socket_.reset();
    state_ = state;
    nextMessage();
    peer_ = {};
    accepted_ = false;
    received_.clear();
    outgoing_.clear();
    gone_ = 0;
    sending_ = false;
    due_ = false;
    ended_ = false;
}

void MessageSocket::nextMessage() { message_ = kListening + 1 + (message_ - kListening) % 0x3000; }

void MessageSocket::waitFor(DWORD milliseconds) {
    deadline_ = GetTickCount() + milliseconds;
    waiting_ = true;
    if (!ticking_) ticking_ = SetTimer(window_.get(), kTimer, kTick, nullptr) != 0;
}

}  // namespace vela
