#include "security/Security.h"

namespace vela {

HRESULT Security::put_Read(VARIANT_BOOL newValue) { return take(read_, newValue); }

HRESULT Security::get_Read(VARIANT_BOOL* result) { return give(result, read_); }

HRESULT Security::put_Modify(VARIANT_BOOL newValue) { return take(modify_, newValue); }

HRESULT Security::get_Modify(VARIANT_BOOL* result) { return give(result, modify_); }

HRESULT Security::put_Execute(VARIANT_BOOL newValue) { return take(execute_, newValue); }

HRESULT Security::get_Execute(VARIANT_BOOL* result) { return give(result, execute_); }

HRESULT Security::put_FullControl(VARIANT_BOOL newValue) { return take(fullControl_, newValue); }

HRESULT Security::get_FullControl(VARIANT_BOOL* result) { return give(result, fullControl_); }

HRESULT Security::put_Delete(VARIANT_BOOL newValue) { return take(delete_, newValue); }

HRESULT Security::get_Delete(VARIANT_BOOL* result) { return give(result, delete_); }

HRESULT Security::put_Create(VARIANT_BOOL newValue) { return take(create_, newValue); }

HRESULT Security::get_Create(VARIANT_BOOL* result) { return give(result, create_); }

HRESULT ClassOf<_Security>::create(REFIID id, void** result) {
    return createObject<Security>(id, result);
}

}  // namespace vela
