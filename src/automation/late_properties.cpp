#include "automation/late_properties.h"

#include "automation/type_info.h"

namespace vela {

namespace {

std::wstring nameOf(ITypeInfo* info, MEMBERID id) {
    Bstr name;
    info->GetDocumentation(id, name.put(), nullptr, nullptr, nullptr);
    return name.str();
}

// Calls `visit(info, function)` and `visit(info, variable)` for each member, those of the bases
// first.
template <class Visit>
void eachMember(const ComPtr<ITypeInfo>& info, const Visit& visit) {
    if (!info) return;
    const auto attributes = attributesOf(info.Get());
    if (!attributes || attributes->guid == IID_IUnknown || attributes->guid == IID_IDispatch)
        return;
    // Only the side of virtual functions tells members and bases apart.
    if (attributes->typekind == TKIND_DISPATCH && (attributes->wTypeFlags & TYPEFLAG_FDUAL)) {
        if (const auto virtualSide = related(info.Get(), static_cast<UINT>(-1))) {
            return eachMember(virtualSide, visit);
        }
    }
    if (attributes->typekind == TKIND_INTERFACE) eachMember(related(info.Get(), 0), visit);
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        const auto function = functionOf(info.Get(), i);
        const bool offered = function && !(function->wFuncFlags & FUNCFLAG_FRESTRICTED);
        if (offered) visit(info.Get(), *function);
    }
    for (UINT i = 0; i < attributes->cVars; ++i) {
        const auto variable = variableOf(info.Get(), i);
        if (variable && variable->varkind == VAR_DISPATCH) visit(info.Get(), *variable);
    }
}

// Behind aliases.
VARTYPE simpleType(ITypeInfo* info, const TYPEDESC& type) {
    ComPtr<ITypeInfo> named;
    if (type.vt != VT_USERDEFINED) return type.vt;
    if (FAILED(info->GetRefTypeInfo(type.hreftype, &named))) return VT_USERDEFINED;
    const auto attributes = attributesOf(named.Get());
    if (!attributes || attributes->typekind != TKIND_ALIAS) return VT_USERDEFINED;
    return simpleType(named.Get(), attributes->tdescAlias);
}

// What a getter gives: its result, or what it stores through its last parameter.
VARTYPE valueType(ITypeInfo* info, const FUNCDESC& getter) {
    if (getter.cParams > 0) {
        const ELEMDESC& last = getter.lprgelemdescParam[getter.cParams - 1];
        const bool result = last.paramdesc.wParamFlags & PARAMFLAG_FRETVAL;
        if (result && last.tdesc.vt == VT_PTR) return simpleType(info, *last.tdesc.lptdesc);
    }
    return simpleType(info, getter.elemdescFunc.tdesc);
}

using Properties = std::vector<DeclaredProperty>;

void add(Properties& properties, ITypeInfo* info, MEMBERID id, VARTYPE type) {
    properties.push_back({nameOf(info, id), id, type});
}

struct Settable {
    Properties& properties;

    void operator()(ITypeInfo* info, const FUNCDESC& function) const {
        if (function.invkind != INVOKE_PROPERTYPUT || function.cParams != 1) return;
        add(properties, info, function.memid,
            simpleType(info, function.lprgelemdescParam[0].tdesc));
    }
    void operator()(ITypeInfo* info, const VARDESC& variable) const {
        add(properties, info, variable.memid, simpleType(info, variable.elemdescVar.tdesc));
    }
};

struct Readable {
    Properties& properties;

    void operator()(ITypeInfo* info, const FUNCDESC& function) const {
        if (function.invkind == INVOKE_PROPERTYGET) {
            add(properties, info, function.memid, valueType(info, function));
        }
    }
    void operator()(ITypeInfo* info, const VARDESC& variable) const {
        add(properties, info, variable.memid, simpleType(info, variable.elemdescVar.tdesc));
    }
};

template <class Kind>
Properties propertiesOf(ITypeInfo* info) {
    Properties properties;
    eachMember(ComPtr<ITypeInfo>(info), Kind{properties});
    return properties;
}

}  // namespace

ComPtr<ITypeInfo> typeInformationOf(IDispatch* object) {
    ComPtr<ITypeInfo> info;
    if (FAILED(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info))) return nullptr;
    return info;
}

InterfaceIdentity identityOf(ITypeInfo* info) {
    const auto attributes = attributesOf(info);
    if (!attributes) return {};
    return {attributes->guid, attributes->wMajorVerNum, attributes->wMinorVerNum,
            attributes->cFuncs, attributes->cVars};
}

std::vector<DeclaredProperty> readableProperties(ITypeInfo* info) {
    return propertiesOf<Readable>(info);
}

std::vector<DeclaredProperty> settableProperties(ITypeInfo* info) {
    return propertiesOf<Settable>(info);
}

}  // namespace vela
