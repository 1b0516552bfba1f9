// This computer in its network.
#pragma once

#include <string>

namespace vela {

// The first IPv4 address of an adapter that is up, the loopback one aside; empty when there is
// none.
std::wstring networkAddress();
// What the system itself believes; nothing is sent.
bool isInternetConnected();
// Whether a computer answers at the ports through which its services are managed, within seconds.
bool isReachable(const std::wstring& computer);

}  // namespace vela
