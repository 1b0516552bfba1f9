#include "automation/type_info.h"

namespace vela {

Lent<TYPEATTR> attributesOf(ITypeInfo* info) {
    TYPEATTR* lent = nullptr;
    return {SUCCEEDED(info->GetTypeAttr(&lent)) ? lent : nullptr, {info}};
}

Lent<FUNCDESC> functionOf(ITypeInfo* info, UINT index) {
    FUNCDESC* lent = nullptr;
    return {SUCCEEDED(info->GetFuncDesc(index, &lent)) ? lent : nullptr, {info}};
}

Lent<VARDESC> variableOf(ITypeInfo* info, UINT index) {
    VARDESC* lent = nullptr;
    return {SUCCEEDED(info->GetVarDesc(index, &lent)) ? lent : nullptr, {info}};
}

ComPtr<ITypeInfo> related(ITypeInfo* info, UINT index) {
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> found;
    if (FAILED(info->GetRefTypeOfImplType(index, &reference))) return nullptr;
    if (FAILED(info->GetRefTypeInfo(reference, &found))) return nullptr;
    return found;
}

bool isKind(ITypeInfo* info, TYPEKIND kind) {
    const auto attributes = attributesOf(info);
    return attributes && attributes->typekind == kind;
}

}  // namespace vela
