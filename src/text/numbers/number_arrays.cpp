#include "text/numbers/number_arrays.h"

#include <algorithm>
#include <span>

#include "automation/dispatch.h"
#include "automation/error.h"

namespace vela {

namespace {

// The elements of a one-dimensional array, which cannot be changed in size as long as this lives.
template <class Number>
class Elements {
  public:
    explicit Elements(SAFEARRAY* array) : array_(array) {
        check(SafeArrayAccessData(array, reinterpret_cast<void**>(&first_)));
    }
    ~Elements() { SafeArrayUnaccessData(array_); }
    Elements(const Elements&) = delete;
    Elements& operator=(const Elements&) = delete;

    std::span<Number> all() const { return {first_, array_->rgsabound[0].cElements}; }

  private:
    SAFEARRAY* array_;
    Number* first_ = nullptr;
};

VARTYPE elementType(SAFEARRAY* array) {
    VARTYPE type = VT_EMPTY;
    SafeArrayGetVartype(array, &type);
    return type;
}

SAFEARRAY* arrayIn(const VARIANT& source) {
    const VARIANT& value = dereferenced(source);
    if (!(value.vt & VT_ARRAY)) return nullptr;
    return value.vt & VT_BYREF ? *value.pparray : value.parray;
}

template <class Number>
std::vector<std::uint8_t> lowestBytes(SAFEARRAY* array) {
    const Elements<Number> elements(array);
    const auto all = elements.all();
    std::vector<std::uint8_t> bytes(all.size());
    std::transform(all.begin(), all.end(), bytes.begin(),
                   [](Number number) { return static_cast<std::uint8_t>(number); });
    return bytes;
}

}  // namespace

std::vector<std::uint8_t> bytesIn(const VARIANT& value) {
    SAFEARRAY* array = arrayIn(value);
    if (!array) return {};
    if (SafeArrayGetDim(array) != 1) raise(RuntimeError::SubscriptOutOfRange);
    if (elementType(array) == VT_UI1) return lowestBytes<std::uint8_t>(array);
    Variant numbers;
    const HRESULT outcome = convertArray(array, VT_I4, &numbers.parray);
    if (outcome == DISP_E_OVERFLOW) raise(RuntimeError::Overflow);
    if (outcome == E_OUTOFMEMORY) throw std::bad_alloc();
    if (FAILED(outcome)) raise(RuntimeError::TypeMismatch);
    numbers.vt = VT_ARRAY | VT_I4;
    return lowestBytes<LONG>(numbers.parray);
}

Variant byteArray(const std::vector<std::uint8_t>& bytes) {
    Variant result;
    result.parray = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    if (!result.parray) throw std::bad_alloc();
    result.vt = VT_ARRAY | VT_UI1;
    std::ranges::copy(bytes, Elements<std::uint8_t>(result.parray).all().begin());
    return result;
}

void sortFromOne(SAFEARRAY* array) {
    if (!array) return;
    if (elementType(array) != VT_I2) raise(RuntimeError::TypeMismatch);
    LONG lower = 0;
    if (SafeArrayGetDim(array) != 1 || FAILED(SafeArrayGetLBound(array, 1, &lower)) || lower > 1) {
        raise(RuntimeError::SubscriptOutOfRange);
    }
    const Elements<SHORT> elements(array);
    const std::span<SHORT> all = elements.all();
    const std::size_t before = std::min(static_cast<std::size_t>(1LL - lower), all.size());
    std::sort(all.begin() + static_cast<std::ptrdiff_t>(before), all.end());
}

}  // namespace vela
