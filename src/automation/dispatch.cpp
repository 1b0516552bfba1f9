#include "automation/dispatch.h"

#include <algorithm>
#include <bit>

#include "automation/adapter.h"
#include "automation/error.h"

namespace vela {

namespace {

// Member and parameter names are ASCII.
constexpr wchar_t folded(wchar_t c) { return c >= L'a' && c <= L'z' ? wchar_t(c - 32) : c; }

bool sameName(std::wstring_view left, std::wstring_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](wchar_t a, wchar_t b) { return folded(a) == folded(b); });
}

unsigned hashOf(std::wstring_view name) {
    unsigned hash = 2166136261u;
    for (const wchar_t c : name) hash = (hash ^ folded(c)) * 16777619u;
    return hash ^ (hash >> 15);
}

// What engines pass for no object: JScript's null and undefined are among it.
bool isNoObject(const VARIANT& value) {
    return value.vt == VT_EMPTY || value.vt == VT_NULL || isMissing(value);
}

}  // namespace

// ---- arguments ---------------------------------------------------------------------------------

HRESULT Arguments::bind(const DISPPARAMS& call, std::span<const Parameter> parameters) {
    parameters_ = parameters;
    if (call.cArgs > parameters.size() || call.cArgs < call.cNamedArgs) return DISP_E_BADPARAMCOUNT;
    std::fill_n(slots_, parameters.size(), nullptr);
    const UINT positional = call.cArgs - call.cNamedArgs;
    for (UINT i = 0; i < positional; ++i) slots_[i] = &call.rgvarg[call.cArgs - 1 - i];
    for (UINT i = 0; i < call.cNamedArgs; ++i) {
        const DISPID id = call.rgdispidNamedArgs[i];
        const std::size_t index =
            id == DISPID_PROPERTYPUT ? parameters.size() - 1 : static_cast<std::size_t>(id);
        if (index >= parameters.size() || slots_[index]) return DISP_E_PARAMNOTFOUND;
        slots_[index] = &call.rgvarg[i];
    }
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (slots_[i] && isMissing(dereferenced(*slots_[i]))) slots_[i] = nullptr;
        if (!slots_[i] && !parameters[i].optional) {
            failed = i;
            return DISP_E_PARAMNOTOPTIONAL;
        }
    }
    return S_OK;
}

UINT Arguments::failedArgument(const DISPPARAMS& call) const {
    if (failed >= parameters_.size() || !slots_[failed]) return 0;
    return static_cast<UINT>(slots_[failed] - call.rgvarg);
}

// ---- members -----------------------------------------------------------------------------------

MemberTable::MemberTable(std::span<const Member> members) : members_(members) {
    names_.resize(std::bit_ceil(members.size() * 2 + 1), NameSlot{0, nullptr});
    for (const Member& member : members) {
        const std::size_t index = familyIndex(member.id);
        if (families_.size() <= index) families_.resize(index + 1);
        Family& family = families_[index];
        if (member.kind == DISPATCH_PROPERTYPUT) family.write = &member;
        else if (member.kind == DISPATCH_PROPERTYPUTREF) family.writeReference = &member;
        else family.read = &member;
        if (member.kind == DISPATCH_PROPERTYGET && member.parameters.empty() && member.id >= 0) {
            const auto id = static_cast<std::size_t>(member.id);
            if (plainGetters_.size() <= id) plainGetters_.resize(id + 1);
            plainGetters_[id] = member.call;
        }

        const unsigned hash = hashOf(member.name);
        std::size_t slot = hash & (names_.size() - 1);
        while (names_[slot].member && names_[slot].member->id != member.id) {
            slot = (slot + 1) & (names_.size() - 1);
        }
        names_[slot] = {hash, &member};
    }
}

DISPID MemberTable::find(std::wstring_view name) const {
    const unsigned hash = hashOf(name);
    for (std::size_t slot = hash & (names_.size() - 1); names_[slot].member;
         slot = (slot + 1) & (names_.size() - 1)) {
        if (names_[slot].hash == hash && sameName(names_[slot].member->name, name)) {
            return names_[slot].member->id;
        }
    }
    return DISPID_UNKNOWN;
}

const Member* MemberTable::find(DISPID id, WORD flags, const DISPPARAMS& call) const {
    const Family* found = family(id);
    if (!found) return nullptr;
    if (flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET)) {
        // A property is read by a call too; a method is never run by a mere reading.
        const Member* read = found->read;
        const bool runs = read && read->kind == DISPATCH_METHOD && !(flags & DISPATCH_METHOD);
        return runs ? nullptr : read;
    }
    // Languages without a separate assignment of objects put them by value.
    const bool object = call.cArgs > 0 && (holdsObject(call.rgvarg[0]) ||
                                           (!found->write && isNoObject(call.rgvarg[0])));
    const bool reference = !(flags & DISPATCH_PROPERTYPUT) ||
                           (object && ((flags & DISPATCH_PROPERTYPUTREF) || !found->write));
    return reference ? found->writeReference : found->write;
}

DISPID MemberTable::findParameter(DISPID id, std::wstring_view name) const {
    for (const Member& member : members_) {
        if (member.id != id) continue;
        for (std::size_t i = 0; i < member.parameters.size(); ++i) {
            if (sameName(member.parameters[i].name, name)) return static_cast<DISPID>(i);
        }
    }
    return DISPID_UNKNOWN;
}

// ---- the late-bound face of an object ----------------------------------------------------------

HRESULT namesToNumbers(std::span<const Facet> facets, LPOLESTR* names, UINT count, DISPID* ids) {
    if (!names || !ids) return E_POINTER;
    std::fill_n(ids, count, DISPID_UNKNOWN);
    if (count == 0) return S_OK;
    for (std::size_t k = 0; k < facets.size(); ++k) {
        const DISPID id = facets[k].members->find(names[0]);
        if (id == DISPID_UNKNOWN) continue;
        ids[0] = k == 0 ? id : static_cast<DISPID>(id | (k << 16));
        for (UINT i = 1; i < count; ++i) ids[i] = facets[k].members->findParameter(id, names[i]);
        break;
    }
    const bool all = std::find(ids, ids + count, DISPID_UNKNOWN) == ids + count;
    return all ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT raised(HRESULT failure, EXCEPINFO* exception) {
    if (exception) fillException(failure, exception);
    return DISP_E_EXCEPTION;
}

namespace {

// `object.Property(x)` where Property takes no arguments means the default member of what it holds.
HRESULT callDefaultOfResult(const Facet& facet, const Member& property, LCID locale, WORD flags,
                            DISPPARAMS* call, VARIANT* result, EXCEPINFO* exception,
                            UINT* failedArgument) {
    Arguments none;
    Variant holder;
    const HRESULT outcome = property.call(facet.self, none, &holder);
    if (FAILED(outcome)) return raised(outcome, exception);
    if (holder.vt != VT_DISPATCH || !holder.pdispVal) return DISP_E_BADPARAMCOUNT;
    return holder.pdispVal->Invoke(DISPID_VALUE, IID_NULL, locale, flags, call, result, exception,
                                   failedArgument);
}

}  // namespace

HRESULT invokeMember(std::span<const Facet> facets, DISPID id, LCID locale, WORD flags,
                     DISPPARAMS* call, VARIANT* result, EXCEPINFO* exception,
                     UINT* failedArgument) {
    if (!call) return E_POINTER;
    const std::size_t index = id > 0 ? static_cast<std::size_t>(id) >> 16 : 0;
    if (index >= facets.size()) return DISP_E_MEMBERNOTFOUND;
    const Facet& facet = facets[index];
    if (index > 0) id &= 0xFFFF;
    const Member* member = facet.members->find(id, flags, *call);
    if (!member) return DISP_E_MEMBERNOTFOUND;
    if (member->kind == DISPATCH_PROPERTYGET && member->parameters.empty() && call->cArgs > 0) {
        return callDefaultOfResult(facet, *member, locale, flags, call, result, exception,
                                   failedArgument);
    }
    if (result) result->vt = VT_EMPTY;
    Arguments arguments;
    if (locale != 0) arguments.locale = locale;
    const HRESULT unfit = arguments.bind(*call, member->parameters);
    if (FAILED(unfit)) return unfit;
    const HRESULT outcome = member->call(facet.self, arguments, result);
    if (SUCCEEDED(outcome)) return S_OK;
    if (arguments.failed != Arguments::kMost) {
        if (failedArgument) *failedArgument = arguments.failedArgument(*call);
        return outcome;
    }
    return raised(outcome, exception);
}

// ---- slots -------------------------------------------------------------------------------------

HRESULT coerce(VARIANT* target, VARIANT* source, VARTYPE type, LCID locale) {
    if (source->vt == (VT_BYREF | VT_VARIANT)) source = source->pvarVal;
    // Booleans become words, as in the languages that call us.
    const HRESULT outcome = VariantChangeTypeEx(target, source, locale, VARIANT_ALPHABOOL, type);
    return outcome == DISP_E_BADVARTYPE || outcome == E_INVALIDARG ? DISP_E_TYPEMISMATCH : outcome;
}

bool sameValue(const VARIANT& left, const VARIANT& right) {
    if (left.vt != right.vt) return false;
    switch (left.vt) {
        case VT_BSTR: return text(left.bstrVal) == text(right.bstrVal);
        case VT_I2:
        case VT_BOOL: return left.iVal == right.iVal;
        case VT_R4: return left.fltVal == right.fltVal;
        case VT_R8:
        case VT_DATE: return left.dblVal == right.dblVal;
        case VT_CY: return left.cyVal.int64 == right.cyVal.int64;
        default: return left.lVal == right.lVal;
    }
}

void initialise(VARIANT* target, VARTYPE type, long initial) {
    target->llVal = 0;
    target->vt = type;
    if (type == VT_I2) target->iVal = static_cast<SHORT>(initial);
    if (type == VT_I4) target->lVal = initial;
    if (type == VT_BOOL) target->boolVal = initial ? VARIANT_TRUE : VARIANT_FALSE;
}

void storeThroughReference(VARIANT* target, VARIANT* value) {
    const VARTYPE type = target->vt & ~VT_BYREF;
    Variant converted;
    if (FAILED(
            VariantChangeTypeEx(&converted, value, LOCALE_USER_DEFAULT, VARIANT_ALPHABOOL, type))) {
        return;
    }
    switch (type) {
        case VT_BSTR: std::swap(*target->pbstrVal, converted.bstrVal); break;
        case VT_I1:
        case VT_UI1: *target->pbVal = converted.bVal; break;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL: *target->piVal = converted.iVal; break;
        case VT_R8:
        case VT_DATE: *target->pdblVal = converted.dblVal; break;
        case VT_CY: *target->pcyVal = converted.cyVal; break;
        case VT_R4: *target->pfltVal = converted.fltVal; break;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_ERROR: *target->plVal = converted.lVal; break;
        case VT_I8:
        case VT_UI8: *target->pllVal = converted.llVal; break;
        default: break;
    }
}

HRESULT Value<VT_VARIANT, VARIANT>::load(Arguments& arguments, std::size_t index) {
    value_ = arguments[index] ? dereferenced(*arguments[index]) : Variant::missing().release();
    return S_OK;
}

HRESULT ValueRef<VT_VARIANT, VARIANT>::load(Arguments& arguments, std::size_t index) {
    VARIANT* argument = arguments[index];
    if (argument && argument->vt == (VT_BYREF | VT_VARIANT)) {
        target_ = argument->pvarVal;
        return S_OK;
    }
    target_ = &own_;
    if (argument) return VariantCopyInd(&own_, argument);
    own_ = Variant::missing();
    return S_OK;
}

void ValueRef<VT_VARIANT, VARIANT>::store(Arguments& arguments, std::size_t index) {
    VARIANT* argument = arguments[index];
    if (target_ != &own_ || !argument || !(argument->vt & VT_BYREF)) return;
    if (holdsObject(*argument)) {
        storeObject(argument, holdsObject(own_) ? own_.punkVal : nullptr);
    } else {
        storeThroughReference(argument, &own_);
    }
}

HRESULT objectOf(VARIANT* source, IUnknown** object) {
    *object = nullptr;
    if (source->vt == (VT_BYREF | VT_VARIANT)) source = source->pvarVal;
    if (isNoObject(*source)) return S_OK;
    if (!holdsObject(*source)) return DISP_E_TYPEMISMATCH;
    *object = source->vt & VT_BYREF ? *source->ppunkVal : source->punkVal;
    if (*object) (*object)->AddRef();
    return S_OK;
}

void storeObject(VARIANT* target, IUnknown* object) {
    IUnknown* stored = nullptr;
    VARTYPE type = VT_DISPATCH;
    if (target->vt == (VT_BYREF | VT_UNKNOWN)) type = VT_UNKNOWN;
    if (object) {
        const IID& id = type == VT_UNKNOWN ? IID_IUnknown : IID_IDispatch;
        if (FAILED(object->QueryInterface(id, reinterpret_cast<void**>(&stored)))) return;
    }
    if (target->vt == (VT_BYREF | VT_VARIANT)) target = target->pvarVal;
    else if (!(target->vt & VT_BYREF)) {
        if (stored) stored->Release();
        return;
    }
    if (target->vt & VT_BYREF) {
        if (IUnknown* old = std::exchange(*target->ppunkVal, stored)) old->Release();
    } else {
        Variant old;
        std::swap(static_cast<VARIANT&>(old), *target);
        target->punkVal = stored;
        target->vt = type;
    }
}

IDispatch* unwrapped(IDispatch* object) {
    ComPtr<ScriptAdapter> adapter;
    if (!object || FAILED(object->QueryInterface(
                       kScriptAdapterId, reinterpret_cast<void**>(adapter.GetAddressOf())))) {
        return object;
    }
    IDispatch* original = adapter->original();
    original->AddRef();
    object->Release();
    return original;
}

// ---- arrays ------------------------------------------------------------------------------------

namespace {

HRESULT readElement(SAFEARRAY* array, LONG index, VARTYPE type, Variant& element) {
    if (type == VT_VARIANT) return SafeArrayGetElement(array, &index, &element);
    if (type != VT_DECIMAL && SafeArrayGetElemsize(array) > sizeof element.llVal) {
        return DISP_E_TYPEMISMATCH;
    }
    DECIMAL value{};  // as large as any simple element, and laid out at its start
    void* place = type == VT_DECIMAL ? static_cast<void*>(&value) : &element.llVal;
    const HRESULT outcome = SafeArrayGetElement(array, &index, place);
    if (FAILED(outcome)) return outcome;
    if (type == VT_DECIMAL) element.decVal = value;
    element.vt = type;
    return S_OK;
}

HRESULT writeElement(SAFEARRAY* array, LONG index, VARTYPE type, Variant& element) {
    if (type == VT_VARIANT) return SafeArrayPutElement(array, &index, &element);
    Variant changed;
    const HRESULT outcome = coerce(&changed, &element, type, LOCALE_USER_DEFAULT);
    if (FAILED(outcome)) return outcome;
    const bool indirect = type == VT_BSTR || type == VT_DISPATCH || type == VT_UNKNOWN;
    void* place = indirect ? static_cast<void*>(changed.bstrVal) : &changed.llVal;
    return SafeArrayPutElement(array, &index, place);
}

}  // namespace

HRESULT convertArray(SAFEARRAY* source, VARTYPE type, SAFEARRAY** result) {
    if (SafeArrayGetDim(source) != 1) return DISP_E_TYPEMISMATCH;
    LONG lower = 0;
    LONG upper = -1;
    VARTYPE sourceType = VT_EMPTY;
    SafeArrayGetLBound(source, 1, &lower);
    SafeArrayGetUBound(source, 1, &upper);
    SafeArrayGetVartype(source, &sourceType);
    SAFEARRAY* target = SafeArrayCreateVector(type, lower, static_cast<ULONG>(upper - lower + 1));
    if (!target) return E_OUTOFMEMORY;
    HRESULT outcome = S_OK;
    for (LONG i = lower; i <= upper && SUCCEEDED(outcome); ++i) {
        Variant element;
        outcome = readElement(source, i, sourceType, element);
        if (SUCCEEDED(outcome)) outcome = writeElement(target, i, type, element);
    }
    if (FAILED(outcome)) {
        SafeArrayDestroy(target);
        return outcome;
    }
    *result = target;
    return S_OK;
}

namespace {

// The array behind a variant, and where a new one is to go; null when there is none.
SAFEARRAY** arrayPlace(VARIANT* argument) {
    if (argument->vt == (VT_BYREF | VT_VARIANT)) argument = argument->pvarVal;
    if (!(argument->vt & VT_ARRAY)) return nullptr;
    return argument->vt & VT_BYREF ? argument->pparray : &argument->parray;
}

// Whether two one-dimensional arrays of one simple element type hold the same.
bool sameElements(SAFEARRAY* left, SAFEARRAY* right, VARTYPE type) {
    const SAFEARRAYBOUND& bound = left->rgsabound[0];
    const SAFEARRAYBOUND& other = right->rgsabound[0];
    if (bound.lLbound != other.lLbound || bound.cElements != other.cElements) return false;
    for (ULONG i = 0; i < bound.cElements; ++i) {
        const LONG index = bound.lLbound + static_cast<LONG>(i);
        Variant mine;
        Variant others;
        if (FAILED(readElement(left, index, type, mine)) ||
            FAILED(readElement(right, index, type, others)) || !sameValue(mine, others)) {
            return false;
        }
    }
    return true;
}

// Whether the caller's array still converts to `converted`.
bool stillConvertsTo(SAFEARRAY* converted, SAFEARRAY* original, VARTYPE type) {
    Variant again;
    if (type == VT_VARIANT || !original || FAILED(convertArray(original, type, &again.parray))) {
        return false;
    }
    again.vt = VT_ARRAY | type;
    return sameElements(converted, again.parray, type);
}

}  // namespace

ArrayStorage::~ArrayStorage() {
    if (own_) SafeArrayDestroy(own_);
}

HRESULT ArrayStorage::load(Arguments& arguments, std::size_t index, VARTYPE element) {
    VARIANT* argument = arguments[index];
    if (!argument) return S_OK;
    element_ = element;
    SAFEARRAY** place = arrayPlace(argument);
    if (!place) return dereferenced(*argument).vt == VT_EMPTY ? S_OK : DISP_E_TYPEMISMATCH;
    if (!*place) return S_OK;
    VARTYPE actual = VT_EMPTY;
    SafeArrayGetVartype(*place, &actual);
    if (actual == element && (argument->vt & VT_BYREF)) {
        target_ = place;
        return S_OK;
    }
    return actual == element ? SafeArrayCopy(*place, &own_) : convertArray(*place, element, &own_);
}

void ArrayStorage::store(Arguments& arguments, std::size_t index) {
    VARIANT* argument = arguments[index];
    if (!argument || target_ != &own_ || !(argument->vt & VT_BYREF) || !own_) return;
    // The caller's array keeps its element type; a variable without one gets an array of variants.
    SAFEARRAY** place = arrayPlace(argument);
    if (place && stillConvertsTo(own_, *place, element_)) return;
    const VARTYPE type = place ? dereferenced(*argument).vt & VT_TYPEMASK : VT_VARIANT;
    SAFEARRAY* changed = nullptr;
    if (FAILED(convertArray(own_, type, &changed))) return;
    if (place) {
        std::swap(*place, changed);
    } else {
        argument->pvarVal->parray = std::exchange(changed, nullptr);
        argument->pvarVal->vt = VT_ARRAY | VT_VARIANT;
    }
    if (changed) SafeArrayDestroy(changed);
}

}  // namespace vela
