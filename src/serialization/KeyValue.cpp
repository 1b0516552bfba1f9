#include "serialization/KeyValue.h"

namespace vela {

HRESULT ClassOf<_KeyValue>::create(REFIID id, void** result) {
    return createObject<KeyValue>(id, result);
}

}  // namespace vela
