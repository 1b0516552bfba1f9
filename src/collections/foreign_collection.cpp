#include "collections/foreign_collection.h"

namespace vela {

bool containsKey(IDispatch* collection, std::wstring_view key) {
    Variant argument(key);
    Variant found;
    const bool canTell = hasMember(collection, L"Exists");
    const HRESULT outcome =
        canTell ? callLateBound(collection, L"Exists", DISPATCH_METHOD, single(argument), &found)
                : callLateBound(collection, L"Item", DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                                single(argument), &found);
    if (FAILED(outcome)) {
        SetErrorInfo(0, nullptr);
        return false;
    }
    return !canTell || isTrue(converted(found, VT_BOOL).boolVal);
}

void emptyCollection(IDispatch* collection) {
    if (hasMember(collection, L"RemoveAll")) {
        check(callLateBound(collection, L"RemoveAll", DISPATCH_METHOD, {}, nullptr));
        return;
    }
    for (long left = converted(getProperty(collection, L"Count"), VT_I4).lVal; left > 0; --left) {
        Variant first(1L);
        check(callLateBound(collection, L"Remove", DISPATCH_METHOD, single(first), nullptr));
    }
}

}  // namespace vela
