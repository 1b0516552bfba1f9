#include "frame/MyUtil.h"

#include "frame/class_table.h"

namespace vela {

HRESULT MyUtil::get_MyMath(_MathUtil** result) { return answer(result, sharedUtility<_MathUtil>); }

HRESULT MyUtil::get_MyText(_TextUtil** result) { return answer(result, sharedUtility<_TextUtil>); }

HRESULT MyUtil::get_MyFile(_FileUtil** result) { return answer(result, sharedUtility<_FileUtil>); }

HRESULT MyUtil::get_MyDatetime(_DatetimeUtil** result) {
    return answer(result, sharedUtility<_DatetimeUtil>);
}

HRESULT MyUtil::get_MySys(_SysUtil** result) { return answer(result, sharedUtility<_SysUtil>); }

HRESULT MyUtil::get_MyRegistry(_RegistryUtil** result) {
    return answer(result, sharedUtility<_RegistryUtil>);
}

HRESULT MyUtil::get_MySecurity(_SecurityUtil** result) {
    return answer(result, sharedUtility<_SecurityUtil>);
}

HRESULT ClassOf<_MyUtil>::create(REFIID id, void** result) {
    return createObject<MyUtil>(id, result);
}

}  // namespace vela
