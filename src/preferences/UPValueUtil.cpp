#include "preferences/UPValueUtil.h"

namespace vela {

namespace {

std::wstring textAt(const BSTR* value) { return value ? std::wstring(text(*value)) : L""; }

}  // namespace

HRESULT UPValueUtil::LoadDefaultPath(BSTR reference, BSTR group, BSTR* path, BSTR* file, BSTR* ext,
                                     VARIANT_BOOL* result) {
    return answer(result, [&] {
        return context_->loadDefaultPath(text(reference), text(group), path, file, ext);
    });
}

HRESULT UPValueUtil::SaveDefaultPath(BSTR reference, BSTR group, BSTR* path, BSTR* file,
                                     BSTR* ext) {
    return guard([&] {
        context_->saveDefaultPath(text(reference), text(group),
                                  {textAt(path), textAt(file), textAt(ext)});
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
