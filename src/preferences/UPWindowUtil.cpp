#include "preferences/UPWindowUtil.h"

namespace vela {

HRESULT UPWindowUtil::LoadWindowPos(IDispatch** form, BSTR id, BSTR group, VARIANT_BOOL* result) {
    return answer(result, [&] {
        return context_->loadWindowPos(form ? *form : nullptr, text(id), text(group));
    });
}

HRESULT UPWindowUtil::SaveWindowPos(IDispatch** form, BSTR id, BSTR group) {
    return guard([&] { context_->saveWindowPos(form ? *form : nullptr, text(id), text(group)); });
}

}  // namespace vela
