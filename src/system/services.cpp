#include "system/services.h"

#include "runtime/handles.h"
#include "system/machine.h"
#include "system/network.h"

namespace vela {

namespace {

bool isThisComputer(const std::wstring& name) {
    return name.empty() || name == L"." || lstrcmpiW(name.c_str(), computerName().c_str()) == 0;
}

ServiceHandle openManager(std::wstring computer) {
    if (computer.starts_with(L"\\\\")) computer.erase(0, 2);
    const bool here = isThisComputer(computer);
    // The manager itself waits for minutes where nobody answers.
    if (!here && !isReachable(computer)) return {};
    return ServiceHandle(
        OpenSCManagerW(here ? nullptr : computer.c_str(), nullptr, SC_MANAGER_CONNECT));
}

// 0 when it cannot be told.
DWORD stateOf(SC_HANDLE service) {
    SERVICE_STATUS status{};
    return QueryServiceStatus(service, &status) ? status.dwCurrentState : DWORD{0};
}

// What `use` gives for the open service; `use` is not called when it cannot be opened.
template <class Use>
auto withService(const std::wstring& service, const std::wstring& computer, DWORD access, Use use)
    -> decltype(use(SC_HANDLE{})) {
    const ServiceHandle manager = openManager(computer);
    if (!manager) return {};
    const ServiceHandle open(OpenServiceW(manager.get(), service.c_str(), access));
    return open ? use(open.get()) : decltype(use(SC_HANDLE{})){};
}

}  // namespace

DWORD serviceState(const std::wstring& service, const std::wstring& computer) {
    return withService(service, computer, SERVICE_QUERY_STATUS, stateOf);
}

bool startService(const std::wstring& service, const std::wstring& computer) {
    return withService(service, computer, SERVICE_START | SERVICE_QUERY_STATUS, [](SC_HANDLE open) {
        if (StartServiceW(open, 0, nullptr)) return true;
        // One that is stopping counts as running, too.
        return GetLastError() == ERROR_SERVICE_ALREADY_RUNNING &&
               stateOf(open) != SERVICE_STOP_PENDING;
    });
}

bool stopService(const std::wstring& service, const std::wstring& computer) {
    return withService(service, computer, SERVICE_STOP | SERVICE_QUERY_STATUS, [](SC_HANDLE open) {
        SERVICE_STATUS status{};
        return ControlService(open, SERVICE_CONTROL_STOP, &status) ||
               GetLastError() == ERROR_SERVICE_NOT_ACTIVE || stateOf(open) == SERVICE_STOP_PENDING;
    });
}

}  // namespace vela
