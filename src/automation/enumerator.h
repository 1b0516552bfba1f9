// For-each over anything that can hand out variants one after the other.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <functional>
#include <memory>

#include "automation/convert.h"

namespace vela {

// What an enumerator walks.
class VariantSource {
  public:
    virtual ~VariantSource() = default;
    // Puts the next value into the empty `value`; false at the end. May throw.
    virtual bool next(VARIANT* value) = 0;
    virtual void reset() = 0;
    // A source of its own at the same place.
    virtual std::unique_ptr<VariantSource> clone() const = 0;
};

// An IEnumVARIANT over `source`.
ComPtr<IUnknown> makeEnumerator(std::unique_ptr<VariantSource> source);

// Enumerates a collection through its cursor, each value turned into a variant by `convert`.
// `owner` keeps the collection alive; null where the cursor does not need it.
template <class Cursor, class Convert>
class CursorSource : public VariantSource {
  public:
    CursorSource(ComPtr<IUnknown> owner, Cursor cursor, Convert convert)
        : owner_(std::move(owner)), cursor_(std::move(cursor)), convert_(convert) {}
    bool next(VARIANT* value) override {
        auto* found = cursor_.next();
        if (found) store(value, convert_(*found));
        return found != nullptr;
    }
    void reset() override { cursor_.reset(); }
    std::unique_ptr<VariantSource> clone() const override {
        return std::make_unique<CursorSource>(owner_, cursor_, convert_);
    }

  private:
    ComPtr<IUnknown> owner_;
    Cursor cursor_;
    Convert convert_;
};

template <class Cursor, class Convert>
ComPtr<IUnknown> enumerate(IUnknown* owner, Cursor cursor, Convert convert) {
    return makeEnumerator(std::make_unique<CursorSource<Cursor, Convert>>(
        ComPtr<IUnknown>(owner), std::move(cursor), convert));
}

// Calls `visit(variant)` for each element until it returns false. Throws Error when the enumerator
// fails or is none.
void eachVariant(IUnknown* enumerator, const std::function<bool(const Variant&)>& visit);

}  // namespace vela
