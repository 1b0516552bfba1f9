#include "preferences/KVItem.h"

namespace vela {

HRESULT ClassOf<_KVItem>::create(REFIID id, void** result) {
    return createObject<KVItem>(id, result);
}

}  // namespace vela
