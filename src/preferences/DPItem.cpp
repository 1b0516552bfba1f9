#include "preferences/DPItem.h"

namespace vela {

HRESULT ClassOf<_DPItem>::create(REFIID id, void** result) {
    return createObject<DPItem>(id, result);
}

}  // namespace vela
