#include "automation/adapter.h"

namespace vela {

bool sameObject(IUnknown* left, IUnknown* right) {
    if (left == right || !left || !right) return left == right;
    ComPtr<IUnknown> leftIdentity;
    ComPtr<IUnknown> rightIdentity;
    left->QueryInterface(IID_PPV_ARGS(&leftIdentity));
    right->QueryInterface(IID_PPV_ARGS(&rightIdentity));
    return leftIdentity.Get() == rightIdentity.Get();
}

}  // namespace vela
