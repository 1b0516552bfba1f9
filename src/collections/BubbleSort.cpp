#include "collections/BubbleSort.h"

#include "collections/core/list_order.h"

namespace vela {

HRESULT BubbleSort::Sort(_IBubbleSort** list) {
    if (!list || !*list) return S_OK;
    return guard([&] {
        // The list may let go of itself while it is asked.
        const ComPtr<_IBubbleSort> entries = *list;
        LONG count = 0;
        checkRecorded(entries->get_Count(&count));
        const auto isGreater = [&](long first, long second) {
            VARIANT_BOOL greater = VARIANT_FALSE;
            checkRecorded(entries->IsGreater(first, second, &greater));
            return isTrue(greater);
        };
        const auto swap = [&](long first, long second) {
            checkRecorded(entries->Swap(first, second));
        };
        sortList(count, {isGreater, swap});
    });
}

HRESULT ClassOf<_BubbleSort>::create(REFIID id, void** result) {
    return createObject<BubbleSort>(id, result);
}

}  // namespace vela
