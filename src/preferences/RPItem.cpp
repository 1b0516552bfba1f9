#include "preferences/RPItem.h"

namespace vela {

HRESULT ClassOf<_RPItem>::create(REFIID id, void** result) {
    return createObject<RPItem>(id, result);
}

}  // namespace vela
