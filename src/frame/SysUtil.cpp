#include "frame/SysUtil.h"

#include "frame/foreign_collection.h"
#include "frame/last_error.h"
#include "frame/shared_instances.h"
#include "notifications/shared.h"
#include "system/registry.h"

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

}  // namespace

HRESULT SysUtil::get_Directories(_DirUtil** result) {
    return answer(result, sharedInstance<_DirUtil>);
}

HRESULT SysUtil::get_Geo(_GeoUtil** result) { return answer(result, sharedInstance<_GeoUtil>); }

HRESULT SysUtil::get_Play(_PlayUtil** result) { return answer(result, sharedInstance<_PlayUtil>); }

HRESULT SysUtil::get_Notifications(_Notifications** result) {
    return answer(result, sharedNotifications);
}

HRESULT SysUtil::get_EventHistory(_EventHistory** result) {
    return answer(result, sharedInstance<_EventHistory>);
}

HRESULT SysUtil::get_Pulsar(_Pulsar** result) { return answer(result, sharedPulsar); }

HRESULT SysUtil::SaveMyError(SHORT type, LONG number, BSTR description, BSTR source) {
    return guard([&] {
        lastError() = {type, static_cast<std::int32_t>(number), std::wstring(text(description)),
                       std::wstring(text(source))};
    });
}

HRESULT SysUtil::MyError(MyErrorSettings part, BSTR* result) {
    return answer(result, [&] { return partOf(lastError(), part); });
}

HRESULT SysUtil::ErroDeRede(SHORT number, VARIANT_BOOL* result) {
    return answer(result, [&] { return isNetworkError(number); });
}

HRESULT SysUtil::ClearCollection(IDispatch** collection, VARIANT_BOOL* setNothing) {
    if (!collection || !*collection) return S_OK;
    quietly([&] { emptyCollection(*collection); });
    if (setNothing && isTrue(*setNothing)) {
        adopted(std::exchange(*collection, nullptr));
    }
    return S_OK;
}

HRESULT SysUtil::ExisteNaCollection(IDispatch** collection, BSTR key, VARIANT_BOOL* result) {
    return answerQuietly(
        result, [&] { return collection && *collection && containsKey(*collection, text(key)); });
}

HRESULT SysUtil::RegistryLerValorLocalMachine(BSTR key, BSTR value, BSTR* result) {
    return answerRegistryText(result, HKEY_LOCAL_MACHINE, key, value);
}

HRESULT SysUtil::RegistryLerValorLocalUser(BSTR key, BSTR value, BSTR* result) {
    return answerRegistryText(result, HKEY_CURRENT_USER, key, value);
}

}  // namespace vela
