// The platform's asynchronous selection is what a message loop needs, though newer programs poll.
#define _WINSOCK_DEPRECATED_NO_WARNINGS
#include "system/message_socket.h"

#include <ws2tcpip.h>

#include <algorithm>
#include <array>
#include <memory>

#include "automation/type_library.h"

namespace vela {

namespace {

constexpr long kConnectionEvents = FD_READ | FD_CLOSE;
constexpr std::size_t kPiece = 65536;

const wchar_t* describe(int code) {
    switch (code) {
        case WSAEACCES: return L"Permission denied";
        case WSAEMSGSIZE: return L"The message is too long";
        case WSAEADDRINUSE: return L"Address in use";
        case WSAEADDRNOTAVAIL: return L"Address is not available";
        case WSAENETDOWN: return L"The network is down";
        case WSAENETUNREACH: return L"The network cannot be reached";
        case WSAECONNABORTED: return L"The connection was aborted";
        case WSAECONNRESET: return L"The connection was reset by the remote side";
        case WSAENOTCONN: return L"The socket is not connected";
        case WSAESHUTDOWN: return L"The message was sent already";
        case WSAETIMEDOUT: return L"The connection timed out";
        case WSAECONNREFUSED: return L"The connection was refused";
        case WSAEHOSTUNREACH: return L"The host cannot be reached";
        case WSAHOST_NOT_FOUND: return L"The host was not found";
        case WSATRY_AGAIN: return L"The host was not found; it may be later";
        case WSANO_DATA: return L"The host has no address";
        default: return L"Socket error";
    }
}

[[noreturn]] void raiseSocketError(int code) { throw socketError(code); }
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

Error socketError(int code) {
    return {static_cast<HRESULT>(0x800A0000u | static_cast<unsigned>(code)), kLibraryName,
            describe(code)};
}

Winsock::Winsock() {
    WSADATA data;
    if (const int code = WSAStartup(MAKEWORD(2, 2), &data)) raiseSocketError(code);
}

MessageSocket::MessageSocket(SocketEvents& events, IUnknown& owner, const SocketLimits& limits)
    : events_(events), owner_(owner), limits_(limits), window_(*this, L"VelaUtil10.Socket") {}

MessageSocket::~MessageSocket() { close(); }

u_short MessageSocket::boundPort() const {
    sockaddr_in place{};
    int size = sizeof place;
    if (socket_) getsockname(socket_.get(), reinterpret_cast<sockaddr*>(&place), &size);
    return place.sin_port ? ntohs(place.sin_port) : localPort;
}

std::wstring MessageSocket::peerAddress() const {
    std::array<wchar_t, INET_ADDRSTRLEN> dotted{};
    const IN_ADDR& address = peer_.sin_addr;
    if (address.s_addr) InetNtopW(AF_INET, &address, dotted.data(), dotted.size());
    return dotted.data();
}

// ---- what the owner asks for -------------------------------------------------------------------

void MessageSocket::close() { reset(SocketState::Closed); }

void MessageSocket::listen() {
    close();
    SocketHandle socket = newSocket();
    bindTo(socket, localPort);
    require(::listen(socket.get(), SOMAXCONN));
    watch(std::move(socket), SocketState::Listening, FD_ACCEPT);
    if (localPort == 0) localPort = boundPort();
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
    close();
    watch(std::exchange(requested_, SocketHandle()), SocketState::Connected, kConnectionEvents);
    peer_ = requester_;
    accepted_ = true;
    startTimer(limits_.silence);
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
    if (message != WM_TIMER && message != message_) return message > WM_APP;
    const ComPtr<IUnknown> alive = &owner_;
    if (message == WM_TIMER) {
        if (timing_ && first == message_) timedOut();
    } else if (state_ == SocketState::ResolvingHost) {
        resolved(static_cast<ULONG>(first), static_cast<int>(second));
    } else {
        happened(WSAGETSELECTEVENT(second), WSAGETSELECTERROR(second));
    }
    return true;
}

void MessageSocket::happened(int event, int error) {
    if (error) return fail(error);
    switch (event) {
        case FD_ACCEPT: return request();
        case FD_READ: return receive();
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

void MessageSocket::request() {
    int size = sizeof requester_;
    requested_ =
        SocketHandle(::accept(socket_.get(), reinterpret_cast<sockaddr*>(&requester_), &size));
    if (!requested_) return;  // who asked has gone again
    events_.requested(++request_);
    requested_.reset();
}

void MessageSocket::receive() {
    if (state_ != SocketState::Connected) return;
    if (received_.empty()) begun_ = GetTickCount();
    std::array<char, kPiece> piece;
    int count = 0;
    while ((count = recv(socket_.get(), piece.data(), static_cast<int>(piece.size()), 0)) > 0) {
        received_.append(piece.data(), static_cast<std::size_t>(count));
        if (received_.size() > limits_.largest) return fail(WSAEMSGSIZE);
    }
    if (count == 0) return;  // how it ended, in good order or not, FD_CLOSE is going to tell
    if (const int code = WSAGetLastError(); code != WSAEWOULDBLOCK) return fail(code);
    if (received_.empty()) return;
    if (GetTickCount() - begun_ > limits_.longest) return fail(WSAETIMEDOUT);
    startTimer(limits_.pause);
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
    receive();
    if (message_ != current) return;
    // Not every platform tells a reset from an end in good order, after which a peer can still be
    // sent to.
    if (!ended_ && ::send(socket_.get(), "", 0, 0) == SOCKET_ERROR) return fail(WSAECONNRESET);
    state_ = SocketState::PeerClosing;
    deliver();
    if (message_ == current) events_.peerClosed();
}

void MessageSocket::timedOut() {
    if (received_.empty()) fail(WSAETIMEDOUT);
    else deliver();
}

void MessageSocket::deliver() {
    stopTimer();
    if (!received_.empty()) events_.arrived(received_.size());
}

void MessageSocket::fail(int code) {
    reset(SocketState::Error);
    events_.failed(socketError(code));
}

// ---- sockets -----------------------------------------------------------------------------------

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
    stopTimer();
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

void MessageSocket::nextMessage() { message_ = WM_APP + 1 + (message_ - WM_APP) % 0x3000; }

void MessageSocket::startTimer(UINT milliseconds) {
    timing_ = SetTimer(window_.get(), message_, milliseconds, nullptr) != 0;
}

void MessageSocket::stopTimer() {
    if (timing_) KillTimer(window_.get(), message_);
    timing_ = false;
}

}  // namespace vela
