#include "text/text_arrays.h"

#include <algorithm>

#include "automation/error.h"

namespace vela {

namespace {

bool isReplaceable(const SAFEARRAY& array) {
    constexpr USHORT kNotOnTheHeap = FADF_AUTO | FADF_STATIC | FADF_EMBEDDED;
    return array.cLocks == 0 && !(array.fFeatures & (kNotOnTheHeap | FADF_FIXEDSIZE));
}

}  // namespace

TextElements::TextElements(SAFEARRAY* array) : array_(array) {
    if (!array) return;
    VARTYPE type = VT_EMPTY;
    BSTR* first = nullptr;
    SafeArrayGetVartype(array, &type);
    if (type != VT_BSTR || SafeArrayGetDim(array) != 1) raise(RuntimeError::TypeMismatch);
    check(SafeArrayAccessData(array, reinterpret_cast<void**>(&first)));
    elements_ = {first, array->rgsabound[0].cElements};
}

TextElements::~TextElements() {
    if (array_) SafeArrayUnaccessData(array_);
}

void TextElements::sort() { std::ranges::sort(elements_, {}, text); }

std::vector<std::wstring_view> TextElements::texts() const {
    std::vector<std::wstring_view> texts(elements_.size());
    std::ranges::transform(elements_, texts.begin(), text);
    return texts;
}

VariantTexts variantTexts(SAFEARRAY* array) {
    VariantTexts result;
    VARTYPE type = VT_EMPTY;
    if (!array || SafeArrayGetDim(array) != 1) return result;
    if (FAILED(SafeArrayGetVartype(array, &type)) || type != VT_VARIANT) return result;
    LONG upper = -1;
    check(SafeArrayGetLBound(array, 1, &result.lowerBound));
    check(SafeArrayGetUBound(array, 1, &upper));
    for (LONG i = result.lowerBound; i <= upper; ++i) {
        Variant element;
        check(SafeArrayGetElement(array, &i, &element));
        std::wstring value;
        quietly([&] { value = textOf(element); });
        result.texts.push_back(std::move(value));
    }
    return result;
}

void rewrite(SAFEARRAY** target, const std::vector<std::wstring_view>& texts) {
    if (!target) return;
    if (*target && !isReplaceable(**target)) check(DISP_E_ARRAYISLOCKED);
    Variant owner;
    owner.parray = SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(texts.size()));
    if (!owner.parray) throw std::bad_alloc();
    owner.vt = VT_ARRAY | VT_BSTR;
    auto* const elements = static_cast<BSTR*>(owner.parray->pvData);
    std::ranges::transform(texts, elements, allocate);
    std::swap(*target, owner.parray);
    if (!owner.parray) owner.vt = VT_EMPTY;
}

}  // namespace vela
