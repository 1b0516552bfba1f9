// The platform's sockets: the connection to them, their handles and their errors.
#pragma once

#include <winsock2.h>

#include "automation/error.h"
#include "runtime/handles.h"

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

struct SocketTraits {
    using Handle = SOCKET;
    static SOCKET none() { return INVALID_SOCKET; }
    static bool isOpen(SOCKET socket) { return socket != INVALID_SOCKET; }
    static void close(SOCKET socket) { closesocket(socket); }
};
using SocketHandle = Owner<SocketTraits>;

}  // namespace vela
