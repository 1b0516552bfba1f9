#include "preferences/Preferences.h"

#include "preferences/UPUtil.h"
#include "runtime/shared_instances.h"

namespace vela {

HRESULT Preferences::get_MyPreferences(_UPUtil** result) {
    return answer(result, [] { return sharedInstance<_UPUtil>([] { return make<UPUtil>(); }); });
}

HRESULT ClassOf<_Preferences>::create(REFIID id, void** result) {
    return createObject<Preferences>(id, result);
}

}  // namespace vela
