#include "frame/SysUtil.h"

#include <algorithm>

#include "collections/foreign_collection.h"
#include "frame/class_table.h"
#include "frame/core/last_error.h"
#include "notifications/shared_hub.h"
#include "system/core/identifier.h"
#include "system/machine.h"
#include "system/network.h"
#include "system/registry.h"
#include "system/services.h"
#include "system/style_sheet.h"
#include "system/user_account.h"
#include "system/waiting.h"

namespace vela {

namespace {

// The text of a value; empty when it cannot be read.
HRESULT answerRegistryText(BSTR* result, HKEY root, BSTR key, BSTR value) {
    return answerQuietly(result, [&] {
        std::wstring content;
        readRegistryText(root, text(key), text(value), content);
        return content;
    });
}

// What `ask` says of a service.
template <class Result, class Ask>
HRESULT answerOfService(Result* result, BSTR service, BSTR computer, Ask ask) {
    return answerQuietly(
        result, [&] { return ask(std::wstring(text(service)), std::wstring(text(computer))); });
}

HRESULT answerWhetherState(VARIANT_BOOL* result, BSTR service, BSTR computer, DWORD state) {
    return answerOfService(result, service, computer,
                           [&](const std::wstring& name, const std::wstring& machine) {
                               return serviceState(name, machine) == state;
                           });
}

}  // namespace

HRESULT SysUtil::get_Directories(_DirUtil** result) {
    return answer(result, sharedUtility<_DirUtil>);
}

HRESULT SysUtil::get_Geo(_GeoUtil** result) { return answer(result, sharedUtility<_GeoUtil>); }

HRESULT SysUtil::get_Play(_PlayUtil** result) { return answer(result, sharedUtility<_PlayUtil>); }

HRESULT SysUtil::get_Notifications(_Notifications** result) {
    return answer(result, sharedNotifications);
}

HRESULT SysUtil::get_EventHistory(_EventHistory** result) {
    return answer(result, sharedUtility<_EventHistory>);
}

HRESULT SysUtil::get_Pulsar(_Pulsar** result) { return answer(result, sharedPulsar); }

HRESULT SysUtil::SaveMyError(SHORT type, LONG number, BSTR description, BSTR source) {
    return guard([&] {
        apartmentLocal<ErrorRecord>() = {type, static_cast<std::int32_t>(number),
                                         std::wstring(text(description)),
                                         std::wstring(text(source))};
    });
}

HRESULT SysUtil::MyError(MyErrorSettings part, BSTR* result) {
    return answer(result, [&] { return partOf(apartmentLocal<ErrorRecord>(), part); });
}

HRESULT SysUtil::ErroDeRede(SHORT number, VARIANT_BOOL* result) {
    return answer(result, [&] { return isNetworkError(number); });
}

HRESULT SysUtil::Apitar() {
    MessageBeep(0xFFFFFFFF);
    return S_OK;
}

HRESULT SysUtil::Esperar(LONG milliseconds) {
    return guard([&] { waitServingMessages(static_cast<DWORD>((std::max)(milliseconds, 0L))); });
}

HRESULT SysUtil::get_AppYear(SHORT* result) {
    return answer(result, [] {
        SYSTEMTIME now;
        GetLocalTime(&now);
        return static_cast<SHORT>(now.wYear);
    });
}

HRESULT SysUtil::PoeFoco(IDispatch** control, SHORT* result) {
    return answerQuietly(result, [&]() -> SHORT {
        if (!control || !*control) return 0;
        LateBound(*control).run(L"SetFocus");
        return VARIANT_TRUE;
    });
}

HRESULT SysUtil::ClearCollection(IDispatch** collection, VARIANT_BOOL* setNothing) {
    if (!collection || !*collection) return S_OK;
    const ComPtr<IDispatch> held = *collection;  // entries that go may change the variable
    quietly([&] { emptyCollection(held.Get()); });
    if (setNothing && isTrue(*setNothing)) {
        adopted(std::exchange(*collection, nullptr));
    }
    return S_OK;
}

HRESULT SysUtil::ExisteNaCollection(IDispatch** collection, BSTR key, VARIANT_BOOL* result) {
    return answerQuietly(
        result, [&] { return collection && *collection && containsKey(*collection, text(key)); });
}

HRESULT SysUtil::XsltTransform(BSTR xml, BSTR xslt, BSTR* htmlFile, VARIANT_BOOL* result) {
    return answerQuietly(result, [&] {
        if (!htmlFile) return false;
        std::wstring target(text(*htmlFile));
        if (target.empty()) target = temporaryHtmlName();
        if (!transformToFile(text(xml), text(xslt), target)) return false;
        rewrite(htmlFile, target);
        return true;
    });
}

HRESULT SysUtil::CurrentMachineName(BSTR* result) { return answerQuietly(result, computerName); }

HRESULT SysUtil::RegistryLerValorLocalMachine(BSTR key, BSTR value, BSTR* result) {
    return answerRegistryText(result, HKEY_LOCAL_MACHINE, key, value);
}

HRESULT SysUtil::RegistryLerValorLocalUser(BSTR key, BSTR value, BSTR* result) {
    return answerRegistryText(result, HKEY_CURRENT_USER, key, value);
}

HRESULT SysUtil::CriarIdentificador(LONG* result) {
    return answer(result, [] { return LONG{nextIdentifier()}; });
}

HRESULT SysUtil::get_TPPixelX(SHORT* result) {
    return answer(result, [] { return twipsPerPixel(Axis::Horizontal); });
}

HRESULT SysUtil::get_TPPixelY(SHORT* result) {
    return answer(result, [] { return twipsPerPixel(Axis::Vertical); });
}

HRESULT SysUtil::get_LoginDoUtilizador(BSTR* result) { return answerQuietly(result, loginName); }

HRESULT SysUtil::get_NomeDoUtilizador(BSTR* result) { return answerQuietly(result, fullName); }

HRESULT SysUtil::get_DominioDoUtilizador(BSTR* result) {
    return answerQuietly(result, accountDomain);
}

HRESULT SysUtil::get_IdentificadorDoUtilizador(BSTR* result) {
    return answerQuietly(result, accountIdentifier);
}

HRESULT SysUtil::StartService(BSTR service, BSTR computer, VARIANT_BOOL* result) {
    return answerOfService(result, service, computer, startService);
}

HRESULT SysUtil::StopService(BSTR service, BSTR computer, VARIANT_BOOL* result) {
    return answerOfService(result, service, computer, stopService);
}

HRESULT SysUtil::ServiceStatus(BSTR service, BSTR computer, LONG* result) {
    return answerOfService(result, service, computer,
                           [](const std::wstring& name, const std::wstring& machine) {
                               return static_cast<LONG>(serviceState(name, machine));
                           });
}

HRESULT SysUtil::ServiceIsRunning(BSTR service, BSTR computer, VARIANT_BOOL* result) {
    return answerWhetherState(result, service, computer, SERVICE_RUNNING);
}

HRESULT SysUtil::ServiceIsStopped(BSTR service, BSTR computer, VARIANT_BOOL* result) {
    return answerWhetherState(result, service, computer, SERVICE_STOPPED);
}

HRESULT SysUtil::IsConnectedToInternet(VARIANT_BOOL* result) {
    return answerQuietly(result, isInternetConnected);
}

HRESULT SysUtil::GetOSVersion(BSTR* result) { return answerQuietly(result, systemVersion); }

HRESULT SysUtil::Is64Bit(VARIANT_BOOL* result) { return answer(result, isSystem64Bit); }

HRESULT SysUtil::GetNetworkIP(BSTR* result) { return answerQuietly(result, networkAddress); }

HRESULT ClassOf<_SysUtil>::create(REFIID id, void** result) {
    return createObject<SysUtil>(id, result);
}

}  // namespace vela
