#include "system/network.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <windows.h>

#include <iphlpapi.h>
#include <wininet.h>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "system/system_function.h"

namespace vela {

namespace {

constexpr ULONG kFirstGuess = 16 << 10;  // bytes
constexpr int kAttempts = 4;             // adapters may be added between two calls
constexpr long kPatience = 3;            // seconds
constexpr const wchar_t* kManagementPorts[] = {L"445", L"135"};

// Winsock for as long as it lives.
class Winsock {
  public:
    Winsock() {
        WSADATA data;
        started_ = WSAStartup(MAKEWORD(2, 2), &data) == 0;
    }
    ~Winsock() {
        if (started_) WSACleanup();
    }
    Winsock(const Winsock&) = delete;
    Winsock& operator=(const Winsock&) = delete;

  private:
    bool started_ = false;
};

class Socket {
  public:
    explicit Socket(const ADDRINFOW& address)
        : socket_(socket(address.ai_family, address.ai_socktype, address.ai_protocol)) {
        u_long nonBlocking = 1;
        ioctlsocket(socket_, FIONBIO, &nonBlocking);
        connect(socket_, address.ai_addr, static_cast<int>(address.ai_addrlen));
    }
    Socket(Socket&& other) noexcept : socket_(std::exchange(other.socket_, INVALID_SOCKET)) {}
    ~Socket() {
        if (socket_ != INVALID_SOCKET) closesocket(socket_);
    }
    SOCKET get() const { return socket_; }

  private:
    SOCKET socket_;
};

struct FreeAddresses {
    void operator()(ADDRINFOW* addresses) const { FreeAddrInfoW(addresses); }
};

// Begins to connect to every address of a computer.
std::vector<Socket> attempts(const std::wstring& computer) {
    std::vector<Socket> sockets;
    for (const wchar_t* port : kManagementPorts) {
        ADDRINFOW hints{};
        hints.ai_socktype = SOCK_STREAM;
        ADDRINFOW* found = nullptr;
        if (GetAddrInfoW(computer.c_str(), port, &hints, &found) != 0) break;
        const std::unique_ptr<ADDRINFOW, FreeAddresses> owner(found);
        for (; found && sockets.size() < FD_SETSIZE; found = found->ai_next) {
            Socket socket(*found);
            if (socket.get() != INVALID_SOCKET) sockets.push_back(std::move(socket));
        }
    }
    return sockets;
}

std::wstring dotted(const sockaddr& address) {
    const auto& v4 = reinterpret_cast<const sockaddr_in&>(address).sin_addr.S_un.S_un_b;
    return std::to_wstring(v4.s_b1) + L"." + std::to_wstring(v4.s_b2) + L"." +
           std::to_wstring(v4.s_b3) + L"." + std::to_wstring(v4.s_b4);
}

std::wstring firstAddress(const IP_ADAPTER_ADDRESSES* adapter) {
    for (; adapter; adapter = adapter->Next) {
        if (adapter->OperStatus != IfOperStatusUp || adapter->IfType == IF_TYPE_SOFTWARE_LOOPBACK ||
            !adapter->FirstUnicastAddress) {
            continue;
        }
        return dotted(*adapter->FirstUnicastAddress->Address.lpSockaddr);
    }
    return {};
}

}  // namespace

std::wstring networkAddress() {
    decltype(&GetAdaptersAddresses) list = nullptr;
    if (!findFunction(list, L"iphlpapi.dll", "GetAdaptersAddresses")) return {};
    constexpr ULONG kOnlyAddresses =
        GAA_FLAG_SKIP_ANYCAST | GAA_FLAG_SKIP_MULTICAST | GAA_FLAG_SKIP_DNS_SERVER;
    ULONG size = kFirstGuess;
    for (int i = 0; i < kAttempts; ++i) {
        std::vector<std::byte> buffer(size);
        auto* adapters = reinterpret_cast<IP_ADAPTER_ADDRESSES*>(buffer.data());
        const ULONG outcome = list(AF_INET, kOnlyAddresses, nullptr, adapters, &size);
        if (outcome == ERROR_SUCCESS) return firstAddress(adapters);
        if (outcome != ERROR_BUFFER_OVERFLOW) break;
    }
    return {};
}

bool isInternetConnected() {
    decltype(&InternetGetConnectedState) ask = nullptr;
    DWORD flags = 0;
    return findFunction(ask, L"wininet.dll", "InternetGetConnectedState") && ask(&flags, 0);
}

bool isReachable(const std::wstring& computer) {
    const Winsock winsock;
    const std::vector<Socket> sockets = attempts(computer);
    if (sockets.empty()) return false;
    fd_set answered;
    FD_ZERO(&answered);
    for (const Socket& each : sockets) FD_SET(each.get(), &answered);
    timeval patience{kPatience, 0};
    return select(0, nullptr, &answered, nullptr, &patience) > 0;
}

}  // namespace vela
