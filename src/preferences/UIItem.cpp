#include "preferences/UIItem.h"

namespace vela {

HRESULT ClassOf<_UIItem>::create(REFIID id, void** result) {
    return createObject<UIItem>(id, result);
}

}  // namespace vela
