#include "preferences/Preferences.h"

#include "frame/shared_instances.h"
#include "preferences/UPUtil.h"

namespace vela {

HRESULT Preferences::get_MyPreferences(_UPUtil** result) {
    return answer(result, [] { return sharedInstance<_UPUtil>([] { return make<UPUtil>(); }); });
}

}  // namespace vela
