#include "preferences/item_properties.h"

#include <algorithm>
#include <cwchar>

#include "automation/late_bound.h"
#include "text/core/upper_case.h"
#include "text/dates/core/date_text.h"
#include "xml/core/xml_text.h"

namespace vela {

namespace {

constexpr std::size_t kMostClasses = 8;
constexpr Day kDayZero{std::chrono::year{1899} / 12 / 30};

// The identity is kept elsewhere.
bool isIdentity(const std::wstring& name) { return name == L"GROUP" || name == L"ID"; }

// XML allows an attribute once.
void add(std::vector<ItemProperty>& properties, ItemProperty added) {
    const bool known = std::any_of(properties.begin(), properties.end(), [&](const auto& property) {
        return property.name == added.name;
    });
    if (!known && isXmlName(added.name)) properties.push_back(std::move(added));
}

std::wstring storedDate(DATE date) {
    SYSTEMTIME time;
    if (date <= 0 || !VariantTimeToSystemTime(date, &time)) return {};
    return dateText(std::chrono::year{time.wYear} / time.wMonth / time.wDay);
}

std::wstring storedText(const Variant& value) {
    switch (value.vt) {
        case VT_BSTR: return std::wstring(text(value.bstrVal));
        case VT_DATE: return storedDate(value.date);
        // As the platform writes them, and sooner.
        case VT_I2: return std::to_wstring(value.iVal);
        case VT_I4: return std::to_wstring(value.lVal);
        default: return std::wstring(text(converted(value, VT_BSTR).bstrVal));
    }
}

bool isWhole(VARTYPE type) {
    return type == VT_I2 || type == VT_I4 || type == VT_INT || type == VT_USERDEFINED;
}

// The number that a text in plain digits is; saves the platform the question of the locale.
std::optional<Variant> plainNumber(std::wstring_view text) {
    const std::wstring_view digits = text.starts_with(L'-') ? text.substr(1) : text;
    const bool plain =
        !digits.empty() && digits.size() < 10 &&
        std::all_of(digits.begin(), digits.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; });
    if (!plain) return std::nullopt;
    return Variant(std::wcstol(std::wstring(text).c_str(), nullptr, 10));
}

// The date that the text names exactly, whatever the order of day and month in the user's locale.
std::optional<Variant> dateIn(std::wstring_view text) {
    const auto day = readDate(text);
    if (!day || dateText(*day) != text) return std::nullopt;
    Variant date;
    date.vt = VT_DATE;
    date.date = static_cast<DATE>((*day - kDayZero).count());
    return date;
}

}  // namespace

ItemProperties::ItemProperties(_IUPSection* section)
    : list_(upperCase(textProperty(section, &_IUPSection::get_Properties))) {}

bool ItemProperties::isListed(const std::wstring& name) const {
    if (isIdentity(name)) return false;
    return list_.empty() || list_.find(L"[" + name + L"]") != list_.npos;
}

std::vector<ItemProperty> ItemProperties::described(ITypeInfo* info) const {
    std::vector<ItemProperty> properties;
    for (const DeclaredProperty& declared : settableProperties(info)) {
        const std::wstring name = upperCase(declared.name);
        add(properties,
            {name, lowerCase(declared.name), declared.id, declared.type, isListed(name)});
    }
    return properties;
}

std::vector<ItemProperty> ItemProperties::listed(IDispatch* item) const {
    std::vector<ItemProperty> properties;
    for (std::size_t at = 0; (at = list_.find(L'[', at)) != list_.npos;) {
        const std::size_t end = list_.find(L']', ++at);
        if (end == list_.npos) break;
        const std::wstring name = list_.substr(at, end - at);
        const DISPID member = findMember(item, name.c_str());
        if (member == DISPID_UNKNOWN) continue;
        add(properties, {name, lowerCase(name), member, VT_VARIANT, !isIdentity(name)});
    }
    return properties;
}

const std::vector<ItemProperty>& ItemProperties::of(IDispatch* item) {
    const ComPtr<ITypeInfo> info = typeInformationOf(item);
    if (!info) return undescribed_ = listed(item);
    const auto known = std::find_if(classes_.begin(), classes_.end(), [&](const Class& each) {
        return each.info.Get() == info.Get();
    });
    if (known != classes_.end()) return known->properties;
    // Some give new type information every time.
    if (classes_.size() == kMostClasses) classes_.clear();
    classes_.push_back({info, described(info.Get())});
    return classes_.back().properties;
}

std::optional<std::wstring> storedValue(IDispatch* item, const ItemProperty& property) {
    std::optional<std::wstring> stored;
    quietly([&] {
        Variant value;
        checkRecorded(callLateBound(item, property.member, DISPATCH_PROPERTYGET, {}, &value));
        stored = storedText(value);
    });
    return stored;
}

bool assignStored(IDispatch* item, DISPID member, VARTYPE type, std::wstring_view value) {
    return quietly([&] {
        std::optional<Variant> meant;
        if (type == VT_DATE) meant = dateIn(value);
        if (isWhole(type)) meant = plainNumber(value);
        Variant argument = meant ? *std::move(meant) : Variant(value);
        check(callLateBound(item, member, DISPATCH_PROPERTYPUT, single(argument), nullptr));
    });
}

}  // namespace vela
