#include "preferences/UPValueUtil.h"

namespace vela {

HRESULT UPValueUtil::LoadDefaultPath(BSTR reference, BSTR group, BSTR* path, BSTR* file, BSTR* ext,
                                     VARIANT_BOOL* result) {
    return answer(result, [&] {
        return context_->loadDefaultPath(text(reference), text(group), path, file, ext);
    });
}

HRESULT UPValueUtil::SaveDefaultPath(BSTR reference, BSTR group, BSTR* path, BSTR* file,
                                     BSTR* ext) {
    return guard([&] {
        const auto copy = [](const BSTR* value) { return std::wstring(optionalText(value)); };
        context_->saveDefaultPath(text(reference), text(group),
                                  {copy(path), copy(file), copy(ext)});
    });
}

HRESULT UPValueUtil::GetValue(BSTR reference, BSTR group, BSTR defaultValue, BSTR* result) {
    return answer(result, [&] {
        return context_->getValue(text(reference), text(group), text(defaultValue));
    });
}

HRESULT UPValueUtil::SaveValue(BSTR reference, BSTR group, BSTR value) {
    return guard([&] { context_->saveValue(text(reference), text(group), text(value)); });
}

}  // namespace vela
