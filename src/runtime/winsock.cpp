#include "runtime/winsock.h"

namespace vela {

namespace {

const wchar_t* describe(int code) {
    switch (code) {
        case WSAEACCES: return L"Permission denied";
        case WSAEMSGSIZE: return L"The message is too long";
        case WSAENOBUFS: return L"Not enough memory";
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

}  // namespace

Error socketError(int code) {
    return {static_cast<HRESULT>(0x800A0000u | static_cast<unsigned>(code)), kLibraryName,
            describe(code)};
}

void raiseSocketError(int code) { throw socketError(code); }

Winsock::Winsock() {
    WSADATA data;
    if (const int code = WSAStartup(MAKEWORD(2, 2), &data)) raiseSocketError(code);
}

}  // namespace vela
