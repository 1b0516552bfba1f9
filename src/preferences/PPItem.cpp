#include "preferences/PPItem.h"

namespace vela {

HRESULT ClassOf<_PPItem>::create(REFIID id, void** result) {
    return createObject<PPItem>(id, result);
}

}  // namespace vela
