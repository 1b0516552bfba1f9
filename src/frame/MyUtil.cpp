#include "frame/MyUtil.h"

#include "frame/shared_instances.h"

namespace vela {

HRESULT MyUtil::get_MyMath(_MathUtil** result) { return answer(result, sharedInstance<_MathUtil>); }

HRESULT MyUtil::get_MyText(_TextUtil** result) { return answer(result, sharedInstance<_TextUtil>); }

HRESULT MyUtil::get_MyFile(_FileUtil** result) { return answer(result, sharedInstance<_FileUtil>); }

HRESULT MyUtil::get_MyDatetime(_DatetimeUtil** result) {
    return answer(result, sharedInstance<_DatetimeUtil>);
}

HRESULT MyUtil::get_MySys(_SysUtil** result) { return answer(result, sharedInstance<_SysUtil>); }

HRESULT MyUtil::get_MyRegistry(_RegistryUtil** result) {
    return answer(result, sharedInstance<_RegistryUtil>);
}

HRESULT MyUtil::get_MySecurity(_SecurityUtil** result) {
    return answer(result, sharedInstance<_SecurityUtil>);
}

}  // namespace vela
