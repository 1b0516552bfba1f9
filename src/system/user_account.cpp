#define SECURITY_WIN32
#include "system/user_account.h"

#include <windows.h>

#include <lm.h>
#include <sddl.h>
#include <security.h>

#include <cstddef>
#include <memory>
#include <vector>

#include "runtime/handles.h"
#include "runtime/system_function.h"
#include "system/machine.h"

namespace vela {

namespace {

// The process's user, as the platform describes it; empty on failure.
std::vector<std::byte> tokenUser() {
    KernelHandle token;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, token.put())) return {};
    DWORD size = 0;
    GetTokenInformation(token.get(), TokenUser, nullptr, 0, &size);
    std::vector<std::byte> user(size);
    const BOOL known = GetTokenInformation(token.get(), TokenUser, user.data(), size, &size);
    return known ? user : std::vector<std::byte>();
}

PSID identifierIn(std::vector<std::byte>& user) {
    return reinterpret_cast<TOKEN_USER*>(user.data())->User.Sid;
}

// The full name that this computer's own list of users has; empty when there is none.
std::wstring localFullName(const std::wstring& login) {
    decltype(&NetUserGetInfo) get = nullptr;
    decltype(&NetApiBufferFree) release = nullptr;
    if (!findFunction(get, L"netapi32.dll", "NetUserGetInfo") ||
        !findFunction(release, L"netapi32.dll", "NetApiBufferFree")) {
        return {};
    }
    BYTE* buffer = nullptr;
    if (get(nullptr, login.c_str(), 2, &buffer) != NERR_Success || !buffer) return {};
    auto letGo = [release](BYTE* memory) { release(memory); };
    const std::unique_ptr<BYTE, decltype(letGo)> owner(buffer, letGo);
    const wchar_t* found = reinterpret_cast<USER_INFO_2*>(buffer)->usri2_full_name;
    return found ? found : L"";
}

std::wstring domainFullName() {
    decltype(&GetUserNameExW) get = nullptr;
    wchar_t name[512];
    ULONG size = ARRAYSIZE(name);
    const bool known =
        findFunction(get, L"secur32.dll", "GetUserNameExW") && get(NameDisplay, name, &size);
    return known ? std::wstring(name, size) : std::wstring();
}

}  // namespace

std::wstring loginName() {
    wchar_t name[257];
    DWORD size = ARRAYSIZE(name);
    return GetUserNameW(name, &size) ? std::wstring(name, size - 1) : std::wstring();
}

std::wstring fullName() {
    const std::wstring login = loginName();
    const bool local = lstrcmpiW(accountDomain().c_str(), computerName().c_str()) == 0;
    const std::wstring name = local ? localFullName(login) : domainFullName();
    return name.empty() ? login : name;
}

std::wstring accountDomain() {
    std::vector<std::byte> user = tokenUser();
    if (user.empty()) return {};
    wchar_t name[257];
    wchar_t domain[257];
    DWORD nameSize = ARRAYSIZE(name);
    DWORD domainSize = ARRAYSIZE(domain);
    SID_NAME_USE kind;
    const BOOL known =
        LookupAccountSidW(nullptr, identifierIn(user), name, &nameSize, domain, &domainSize, &kind);
    return known ? std::wstring(domain, domainSize) : std::wstring();
}

std::wstring accountIdentifier() {
    std::vector<std::byte> user = tokenUser();
    LocalMemory<wchar_t> found;
    if (user.empty() || !ConvertSidToStringSidW(identifierIn(user), found.put())) return {};
    return found.get();
}

}  // namespace vela
