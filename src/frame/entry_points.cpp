// What COM and the registration tools call.
#include <cwchar>

#include "frame/class_table.h"
#include "frame/registration.h"
#include "runtime/apartment.h"

using namespace vela;

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, void** result) {
    if (!result) return E_POINTER;
    *result = nullptr;
    const CreateFunction create = creatorOf(classId);
    return create ? makeClassFactory(create, id, result) : CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
    bool unused = false;
    quietly([&] { unused = serverLocks == 0 && releaseIfUnused(); });
    return unused ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() { return registerLibrary(RegistrationScope::Machine); }

STDAPI DllUnregisterServer() { return unregisterLibrary(RegistrationScope::Machine); }

// `regsvr32 /n /i:user` registers for the current user, without administrator rights.
STDAPI DllInstall(BOOL install, PCWSTR commandLine) {
    const bool user = commandLine && _wcsicmp(commandLine, L"user") == 0;
    const RegistrationScope scope = user ? RegistrationScope::User : RegistrationScope::Machine;
    return install ? registerLibrary(scope) : unregisterLibrary(scope);
}
