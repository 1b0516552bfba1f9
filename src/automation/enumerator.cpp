#include "automation/enumerator.h"

#include "automation/counted.h"
#include "automation/error.h"

namespace vela {

namespace {

class Enumerator final : public Counted<IEnumVARIANT> {
  public:
    explicit Enumerator(std::unique_ptr<VariantSource> source) : source_(std::move(source)) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* values, ULONG* fetched) override {
        if (!values && count > 0) return E_POINTER;
        ULONG done = 0;
        const HRESULT outcome = guard([&] {
            while (done < count) {
                VariantInit(&values[done]);
                if (!source_->next(&values[done])) return;
                ++done;
            }
        });
        if (FAILED(outcome)) {
            // Nobody looks at what a failed call gave.
            while (done > 0) VariantClear(&values[--done]);
        }
        if (fetched) *fetched = done;
        if (FAILED(outcome)) return outcome;
        return done == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        bool reached = true;
        const HRESULT outcome = guard([&] {
            for (ULONG i = 0; i < count && reached; ++i) {
                Variant skipped;
                reached = source_->next(&skipped);
            }
        });
        if (FAILED(outcome)) return outcome;
        return reached ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        source_->reset();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override {
        return answer(copy, [&] { return adopted(new Enumerator(source_->clone())); });
    }

  private:
    std::unique_ptr<VariantSource> source_;
};

}  // namespace

ComPtr<IUnknown> makeEnumerator(std::unique_ptr<VariantSource> source) {
    return adopted(new Enumerator(std::move(source)));
}

void eachVariant(IUnknown* enumerator, const std::function<bool(const Variant&)>& visit) {
    ComPtr<IEnumVARIANT> elements;
    check(enumerator ? enumerator->QueryInterface(IID_PPV_ARGS(&elements)) : E_NOINTERFACE);
    for (;;) {
        Variant next;
        if (check(elements->Next(1, &next, nullptr)) != S_OK || !visit(next)) return;
    }
}

}  // namespace vela
