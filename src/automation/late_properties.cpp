#include "automation/late_properties.h"

#include "automation/convert.h"

namespace vela {

namespace {

std::wstring nameOf(ITypeInfo* info, MEMBERID id) {
    Bstr name;
    info->GetDocumentation(id, name.put(), nullptr, nullptr, nullptr);
    return name.str();
}

}  // namespace

std::vector<std::wstring> settableProperties(IDispatch* object) {
    std::vector<std::wstring> names;
    ComPtr<ITypeInfo> info;
    TYPEATTR* attributes = nullptr;
    if (FAILED(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info))) return names;
    if (FAILED(info->GetTypeAttr(&attributes))) return names;
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        FUNCDESC* function = nullptr;
        if (FAILED(info->GetFuncDesc(i, &function))) continue;
        const bool settable = function->invkind == INVOKE_PROPERTYPUT && function->cParams == 1;
        const MEMBERID id = function->memid;
        info->ReleaseFuncDesc(function);
        if (settable) names.push_back(nameOf(info.Get(), id));
    }
    for (UINT i = 0; i < attributes->cVars; ++i) {
        VARDESC* variable = nullptr;
        if (FAILED(info->GetVarDesc(i, &variable))) continue;
        const bool settable = variable->varkind == VAR_DISPATCH;
        const MEMBERID id = variable->memid;
        info->ReleaseVarDesc(variable);
        if (settable) names.push_back(nameOf(info.Get(), id));
    }
    info->ReleaseTypeAttr(attributes);
    return names;
}

}  // namespace vela
