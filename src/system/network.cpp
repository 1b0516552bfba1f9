#include "system/network.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <iphlpapi.h>
#include <wininet.h>

#include <cstddef>
#include <memory>
#include <vector>

#include "runtime/system_function.h"
#include "runtime/winsock.h"

namespace vela {

namespace {

constexpr ULONG kFirstGuess = 16 << 10;  // bytes
constexpr int kAttempts = 4;             // adapters may be added between two calls
constexpr long kPatience = 3;            // seconds
constexpr const wchar_t* kManagementPorts[] = {L"445", L"135"};

// A socket that has begun to connect; none where the platform has none to give.
SocketHandle connecting(const ADDRINFOW& address) {
    SocketHandle handle(socket(address.ai_family, address.ai_socktype, address.ai_protocol));
    u_long nonBlocking = 1;
    ioctlsocket(handle.get(), FIONBIO, &nonBlocking);
    connect(handle.get(), address.ai_addr, static_cast<int>(address.ai_addrlen));
    return handle;
}

struct FreeAddresses {
    void operator()(ADDRINFOW* addresses) const { FreeAddrInfoW(addresses); }
};

// Begins to connect to every address of a computer.
std::vector<SocketHandle> attempts(const std::wstring& computer) {
    std::vector<SocketHandle> sockets;
    for (const wchar_t* port : kManagementPorts) {
        ADDRINFOW hints{};
        hints.ai_socktype = SOCK_STREAM;
        ADDRINFOW* found = nullptr;
        if (GetAddrInfoW(computer.c_str(), port, &hints, &found) != 0) break;
        const std::unique_ptr<ADDRINFOW, FreeAddresses> owner(found);
        for (; found && sockets.size() < FD_SETSIZE; found = found->ai_next) {
            if (SocketHandle socket = connecting(*found)) sockets.push_back(std::move(socket));
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
    const std::vector<SocketHandle> sockets = attempts(computer);
    if (sockets.empty()) return false;
    fd_set answered;
    FD_ZERO(&answered);
    for (const SocketHandle& each : sockets) FD_SET(each.get(), &answered);
    timeval patience{kPatience, 0};
    return select(0, nullptr, &answered, nullptr, &patience) > 0;
}

}  // namespace vela
