// The platform's sockets: the connection to them, their handles and their errors.
#pragma once

#include <winsock2.h>

#include <utility>

#include "automation/error.h"

namespace vela {

// The error of a Winsock error code: run-time error `code`, with an English text.
Error socketError(int code);
[[noreturn]] void raiseSocketError(int code);

// Owns a connection of the platform's to its sockets.
class Winsock {
  public:
    Winsock();  // throws Error
    Winsock(const Winsock&) = delete;
    Winsock& operator=(const Winsock&) = delete;
    ~Winsock() { WSACleanup(); }
};

// Owns a socket.
class SocketHandle {
  public:
    explicit SocketHandle(SOCKET socket = INVALID_SOCKET) : socket_(socket) {}
    SocketHandle(SocketHandle&& other) noexcept : socket_(other.release()) {}
    SocketHandle& operator=(SocketHandle&& other) noexcept {
        std::swap(socket_, other.socket_);
        return *this;
    }
    ~SocketHandle() { reset(); }

    explicit operator bool() const { return socket_ != INVALID_SOCKET; }
    SOCKET get() const { return socket_; }
    SOCKET release() { return std::exchange(socket_, INVALID_SOCKET); }
    void reset() {
        if (*this) closesocket(release());
    }

  private:
    SOCKET socket_;
};

}  // namespace vela
