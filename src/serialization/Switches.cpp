#include "serialization/Switches.h"

#include "automation/enumerator.h"
#include "serialization/KeyValue.h"
#include "text/core/text_normalisation.h"
#include "text/core/wildcard.h"

namespace vela {

namespace {

std::wstring keyOf(_KeyValue* record) { return textProperty(record, &_KeyValue::get_Key); }

// The record that a variant holds, by value or by reference; null when it holds none.
ComPtr<_KeyValue> recordIn(VARIANT* value) {
    ComPtr<IUnknown> object;
    ComPtr<_KeyValue> record;
    if (SUCCEEDED(objectOf(value, &object)) && object) object.As(&record);
    return record;
}

}  // namespace

void Switches::add(ComPtr<_KeyValue> record, std::wstring_view key) {
    if (!entries_.add(std::move(record), key)) raise(RuntimeError::KeyAlreadyPresent);
}

std::size_t Switches::position(VARIANT* indexOrInstance) {
    if (!indexOrInstance) return 0;
    if (holdsObject(*indexOrInstance)) {
        const ComPtr<_KeyValue> record = recordIn(indexOrInstance);
        return record ? entries_.positionOf(keyOf(record.Get())).value_or(0) : 0;
    }
    if (isText(*indexOrInstance)) return entries_.positionOf(textOf(*indexOrInstance)).value_or(0);
    return static_cast<std::size_t>(converted(*indexOrInstance, VT_I4).lVal);
}

ComPtr<Switches> Switches::matching(BSTR pattern, TextGetter get) {
    const auto wildcard = Wildcard::compile(normalisedIdentity(text(pattern)));
    if (!wildcard) raise(RuntimeError::InvalidPattern);
    const auto found = make<Switches>();
    Entries::Cursor cursor(entries_);
    while (const auto* entry = cursor.next()) {
        const ComPtr<_KeyValue> record = *entry;  // a caller's own may take itself out when asked
        if (wildcard->matches(normalisedIdentity(textProperty(record.Get(), get)))) {
            found->add(record, keyOf(record.Get()));
        }
    }
    return found;
}

HRESULT Switches::get_NewEnum(IUnknown** result) {
    return answer(result, [&] {
        return enumerate(static_cast<_Switches*>(this), Entries::Cursor(entries_),
                         [](const ComPtr<_KeyValue>& record) { return Variant(record.Get()); });
    });
}

HRESULT Switches::get_Count(SHORT* result) {
    return answer(result, [&] { return count16(entries_.size()); });
}

HRESULT Switches::Add(_KeyValue** itemInstance) {
    if (!itemInstance) return E_POINTER;
    return guard([&] {
        const ComPtr<_KeyValue> record = *itemInstance;
        if (!record) raise(RuntimeError::TypeMismatch);
        add(record, keyOf(record.Get()));
    });
}

HRESULT Switches::Remove(VARIANT* indexOrInstance) {
    quietly([&] { entries_.removeAt(position(indexOrInstance)); });
    return S_OK;
}

HRESULT Switches::get_Item(VARIANT* indexOrInstance, _KeyValue** result) {
    return answerQuietly(result, [&] {
        const auto* found = entries_.at(position(indexOrInstance));
        return found ? *found : nullptr;
    });
}

// One at a time: a record that dies may let go of objects which look at the collection.
HRESULT Switches::Clear() {
    return guard([&] {
        for (std::size_t left = entries_.size(); left > 0; --left) entries_.removeAt(1);
    });
}

HRESULT Switches::FromString(BSTR switchString) {
    return guard([&] {
        SwitchReader reader(text(switchString));
        while (const auto parsed = reader.next()) add(make<KeyValue>(*parsed), parsed->text);
    });
}

HRESULT Switches::FindByRef(BSTR ref, _Switches** result) {
    return answer(result, [&] { return matching(ref, &_KeyValue::get_Ref); });
}

HRESULT Switches::FindByGroup(BSTR group, _Switches** result) {
    return answer(result, [&] { return matching(group, &_KeyValue::get_Group); });
}

HRESULT ClassOf<_Switches>::create(REFIID id, void** result) {
    return createObject<Switches>(id, result);
}

}  // namespace vela
