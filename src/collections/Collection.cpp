#include "collections/Collection.h"

#include "automation/enumerator.h"

namespace vela {

namespace {

// The text of an optional key; nothing when it was left out. Throws Error 13 for anything but text.
std::optional<std::wstring> keyIn(const VARIANT& key) {
    if (isMissing(dereferenced(key))) return std::nullopt;
    if (!isText(key)) raise(RuntimeError::TypeMismatch);
    return textOf(key);
}

}  // namespace

std::size_t Collection::position(const VARIANT& index) {
    if (isText(index)) {
        const auto found = entries_.positionOf(textOf(index));
        if (!found) raise(RuntimeError::InvalidProcedureCall);
        return *found;
    }
    const LONG number = converted(index, VT_I4).lVal;
    if (number < 1 || static_cast<std::size_t>(number) > entries_.size()) {
        raise(RuntimeError::SubscriptOutOfRange);
    }
    return static_cast<std::size_t>(number);
}

HRESULT Collection::get_Item(VARIANT index, VARIANT* result) {
    return answer(result, [&] {
        if (index.vt == VT_BSTR) {
            const Variant* found = entries_.find(text(index.bstrVal));
            if (!found) raise(RuntimeError::InvalidProcedureCall);
            return *found;
        }
        return *entries_.at(position(index));
    });
}

HRESULT Collection::Add(VARIANT item, VARIANT key, VARIANT before, VARIANT after) {
    return guard([&] {
        const bool hasBefore = !isMissing(before);
        const bool hasAfter = !isMissing(after);
        if (hasBefore && hasAfter) raise(RuntimeError::InvalidProcedureCall);
        std::size_t place = entries_.size() + 1;
        if (hasBefore) place = position(before);
        if (hasAfter) place = position(after) + 1;
        if (!entries_.insert(place, Variant(item), keyIn(key))) {
            raise(RuntimeError::KeyAlreadyPresent);
        }
    });
}

HRESULT Collection::get_Count(LONG* result) {
    return answer(result, [&] { return static_cast<LONG>(entries_.size()); });
}

HRESULT Collection::Remove(VARIANT index) {
    return guard([&] { entries_.removeAt(position(index)); });
}

HRESULT Collection::get_NewEnum(IUnknown** result) {
    return answer(result, [&] {
        return enumerate(static_cast<_Collection*>(this),
                         KeyedCollection<Variant>::Cursor(entries_),
                         [](const Variant& value) { return value; });
    });
}

HRESULT ClassOf<_Collection>::create(REFIID id, void** result) {
    return createObject<Collection>(id, result);
}

}  // namespace vela
