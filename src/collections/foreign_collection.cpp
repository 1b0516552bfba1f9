#include "collections/foreign_collection.h"

namespace vela {

bool containsKey(IDispatch* collection, std::wstring_view key) {
    Variant argument(key);
    Variant found;
    LateBound object(collection);
    const bool canTell = object.has(L"Exists");
    const HRESULT outcome = canTell
                                ? object.call(L"Exists", DISPATCH_METHOD, single(argument), &found)
                                : object.call(L"Item", DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                                              single(argument), &found);
    if (FAILED(outcome)) {
        SetErrorInfo(0, nullptr);
        return false;
    }
    return !canTell || isTrue(converted(found, VT_BOOL).boolVal);
}

void emptyCollection(IDispatch* collection) {
    LateBound object(collection);
    if (object.has(L"RemoveAll")) return object.run(L"RemoveAll");
    for (long left = converted(object.get(L"Count"), VT_I4).lVal; left > 0; --left) {
        Variant first(1L);
        object.run(L"Remove", single(first));
    }
}

}  // namespace vela
