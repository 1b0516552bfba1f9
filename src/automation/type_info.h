// What a type description lends out, given back at the end of its owner.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <memory>

#include "automation/convert.h"

namespace vela {

struct GiveBack {
    ITypeInfo* info;

    void operator()(TYPEATTR* lent) const { info->ReleaseTypeAttr(lent); }
    void operator()(FUNCDESC* lent) const { info->ReleaseFuncDesc(lent); }
    void operator()(VARDESC* lent) const { info->ReleaseVarDesc(lent); }
};
// Good as long as the description. Null when that has none.
template <class Description>
using Lent = std::unique_ptr<Description, GiveBack>;

Lent<TYPEATTR> attributesOf(ITypeInfo* info);
Lent<FUNCDESC> functionOf(ITypeInfo* info, UINT index);
Lent<VARDESC> variableOf(ITypeInfo* info, UINT index);

// The interface that one derives from, or that a class implements; of a dual one -1 is its side of
// virtual functions. Null when there is none.
ComPtr<ITypeInfo> related(ITypeInfo* info, UINT index);

// Whether it describes a type of that kind.
bool isKind(ITypeInfo* info, TYPEKIND kind);

}  // namespace vela
