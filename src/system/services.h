// The services of this computer or of another one.
#pragma once

#include <windows.h>

#include <string>

namespace vela {

// `computer` empty, this computer's own name or "." means this one. Two backslashes may stand in
// front of a name. A computer that does not answer within seconds has no services.

// SERVICE_STOPPED (1) to SERVICE_PAUSED (7); 0 when the state cannot be read.
DWORD serviceState(const std::wstring& service, const std::wstring& computer);
// Whether the service has been told to start, or to stop, or was doing so already. Neither waits
// for the service to get there.
bool startService(const std::wstring& service, const std::wstring& computer);
bool stopService(const std::wstring& service, const std::wstring& computer);

}  // namespace vela
