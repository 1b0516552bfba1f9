#include "serialization/object_properties.h"

#include <dispex.h>

#include <algorithm>
#include <vector>

#include "automation/adapter.h"
#include "automation/object.h"
#include "runtime/apartment.h"
#include "serialization/serializable.h"

namespace vela {

namespace {

using ClassProperties = KeyedCollection<DeclaredProperty>;
using SharedProperties = std::shared_ptr<const ClassProperties>;

constexpr DISPID kDefaultProperty = DISPID_VALUE;
constexpr int kDefaultsFollowed = 16;  // default properties may lead in circles

struct KnownClass {
    InterfaceIdentity identity;
    SharedProperties properties;
};

// Plain data, so that no class's module is kept loaded.
struct KnownClasses : ApartmentCache {
    std::vector<KnownClass> classes;
};

SharedProperties readClass(ITypeInfo* info) {
    auto properties = std::make_shared<ClassProperties>();
    std::vector<DeclaredProperty> declared = readableProperties(info);
    // What an interface declares itself hides what it derives.
    for (auto property = declared.rbegin(); property != declared.rend(); ++property) {
        const std::wstring name = property->name;
        properties->add(std::move(*property), std::wstring_view(name));
    }
    return properties;
}

// Script engines describe each object for itself, all of them under one id.
bool isOfTypeLibrary(ITypeInfo* info) {
    ComPtr<ITypeLib> library;
    UINT index = 0;
    return SUCCEEDED(info->GetContainingTypeLib(&library, &index)) && library;
}

// Null for an object that has no type information.
SharedProperties classOf(IDispatch* object) {
    const auto info = typeInformationOf(object);
    if (!info) return nullptr;
    if (!isOfTypeLibrary(info.Get())) return readClass(info.Get());
    const InterfaceIdentity identity = identityOf(info.Get());
    auto& known = apartmentLocal<KnownClasses>().classes;
    for (const KnownClass& one : known) {
        if (one.identity == identity) return one.properties;
    }
    SharedProperties properties = readClass(info.Get());
    known.push_back({identity, properties});
    return properties;
}

// The object's own spelling of a member's name, where it has a table of names.
std::wstring ownSpelling(IDispatch* object, DISPID id, const std::wstring& asked) {
    ComPtr<IDispatchEx> extended;
    Bstr name;
    if (FAILED(object->QueryInterface(IID_PPV_ARGS(&extended)))) return asked;
    if (FAILED(extended->GetMemberName(id, name.put())) || name.view().empty()) return asked;
    return name.str();
}

// The object that a variant holds; throws Error 91 when it is nothing.
ComPtr<IDispatch> heldObject(Variant& value) {
    ComPtr<IUnknown> held;
    ComPtr<IDispatch> object;
    check(objectOf(&value, &held));
    if (!held) raise(RuntimeError::ObjectNotSet);
    check(held.As(&object));
    return object;
}

Variant withoutObjects(Variant value) {
    for (int i = 0; i < kDefaultsFollowed && holdsObject(value); ++i) {
        Variant inner;
        checkRecorded(callLateBound(heldObject(value).Get(), kDefaultProperty, DISPATCH_PROPERTYGET,
                                    {}, &inner));
        value = std::move(inner);
    }
    if (holdsObject(value)) raise(RuntimeError::TypeMismatch);
    return value;
}

Variant nestedText(Variant value) {
    LateBound object(heldObject(value));
    if (!object.has(L"FromString") || !object.has(L"ToString")) return value;
    Variant text;
    checkRecorded(object.call(L"ToString", DISPATCH_METHOD, {}, &text));
    return text;
}

}  // namespace

ObjectProperties::ObjectProperties(ComPtr<IDispatch> object)
    : object_(std::move(object)), declared_(object_ ? classOf(object_.Get()) : nullptr) {}

DeclaredProperty ObjectProperties::find(const std::wstring& name) const {
    if (!object_) raise(RuntimeError::ObjectNotSet);
    if (declared_) {
        if (const DeclaredProperty* property = declared_->find(name)) return *property;
    }
    const DISPID id = name.empty() ? DISPID_UNKNOWN : findMember(object_.Get(), name.c_str());
    if (id == DISPID_UNKNOWN) raise(RuntimeError::MemberNotSupported);
    return {ownSpelling(object_.Get(), id, name), id, VT_EMPTY};
}

ReadValue ObjectProperties::read(const DeclaredProperty& property) const {
    Variant value;
    checkRecorded(callLateBound(object_.Get(), property.id, DISPATCH_PROPERTYGET, {}, &value));
    const VARTYPE own = dereferenced(value).vt & ~VT_BYREF;
    if (holdsObject(value)) value = nestedText(std::move(value));
    value = withoutObjects(std::move(value));
    std::wstring text = textOf(value);
    return {std::move(value), std::move(text), property.type == VT_EMPTY ? own : property.type};
}

std::wstring ownPropertyList(IDispatch* object) {
    std::wstring list;
    quietly([&] {
        ComPtr<ISerializable> own;
        if (!object) return;
        auto** place = reinterpret_cast<void**>(own.GetAddressOf());
        if (SUCCEEDED(object->QueryInterface(IID_ISerializable, place))) {
            list = textProperty(own.Get(), &ISerializable::get_SerializableProperties);
        } else if (hasMember(object, L"SerializableProperties")) {
            list = textOf(getProperty(object, L"SerializableProperties"));
        }
    });
    return list;
}

}  // namespace vela
