// The upper-case table and where it comes from on each platform.
#include "text/core/upper_case.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>

#ifdef _WIN32
#include <windows.h>

#include <vector>
#else
#include <locale.h>
#include <wctype.h>

#include <memory>
#include <type_traits>
#endif

namespace vela {
namespace {

constexpr std::size_t kFirstSurrogate = 0xD800;
constexpr std::size_t kAfterSurrogates = 0xE000;

constexpr bool isSurrogate(std::size_t unit) {
    return unit >= kFirstSurrogate && unit < kAfterSurrogates;
}

[[noreturn]] void failMapping() {
    throw std::runtime_error("the platform offers no upper-case mapping");
}

#ifdef _WIN32

// Surrogates are left out of the call: side by side they would be taken for pairs.
void mapFromPlatform(UpperCaseTable& table) {
    std::vector<wchar_t> units;
    units.reserve(table.size());
    for (std::size_t unit = 1; unit < table.size(); ++unit) {
        if (!isSurrogate(unit)) units.push_back(static_cast<wchar_t>(unit));
    }
    std::vector<wchar_t> mapped(units.size());
    const int length = static_cast<int>(units.size());
    if (LCMapStringW(LOCALE_INVARIANT, LCMAP_UPPERCASE, units.data(), length, mapped.data(),
                     length) != length) {
        failMapping();
    }
    for (std::size_t i = 0; i < units.size(); ++i) {
        table[units[i]] = static_cast<char16_t>(mapped[i]);
    }
}

wchar_t lowerFromPlatform(wchar_t unit) {
    wchar_t lower = unit;
    const int length = LCMapStringW(LOCALE_INVARIANT, LCMAP_LOWERCASE, &unit, 1, &lower, 1);
    return length == 1 ? lower : unit;
}

#else

struct FreeLocale {
    void operator()(locale_t locale) const { freelocale(locale); }
};

using Locale = std::unique_ptr<std::remove_pointer_t<locale_t>, FreeLocale>;

Locale neutralLocale() { return Locale(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)); }

void mapFromPlatform(UpperCaseTable& table) {
    const Locale locale = neutralLocale();
    if (!locale) failMapping();
    for (std::size_t unit = 1; unit < table.size(); ++unit) {
        if (isSurrogate(unit)) continue;
        const wint_t upper = towupper_l(static_cast<wint_t>(unit), locale.get());
        if (upper < table.size()) table[unit] = static_cast<char16_t>(upper);
    }
}

wchar_t lowerFromPlatform(wchar_t unit) {
    constexpr std::size_t kUnits = std::tuple_size_v<UpperCaseTable>;
    const auto index = static_cast<std::size_t>(unit);
    const Locale locale = neutralLocale();
    if (!locale || index >= kUnits || isSurrogate(index)) return unit;
    const wint_t lower = towlower_l(static_cast<wint_t>(unit), locale.get());
    return lower < kUnits ? static_cast<wchar_t>(lower) : unit;
}

#endif

UpperCaseTable makeTable() {
    UpperCaseTable table;
    std::iota(table.begin(), table.end(), u'\0');
    mapFromPlatform(table);
    return table;
}

}  // namespace

const UpperCaseTable& upperCaseTable() {
    static const UpperCaseTable table = makeTable();
    return table;
}

wchar_t upperCase(wchar_t unit) { return upperCase(upperCaseTable(), unit); }

wchar_t lowerCase(wchar_t unit) { return lowerFromPlatform(unit); }

std::wstring lowerCase(std::wstring_view text) {
    std::wstring result(text);
    for (wchar_t& unit : result) unit = lowerCase(unit);
    return result;
}

std::wstring upperCase(std::wstring_view text) {
    std::wstring result(text);
    upperCaseInPlace(result.data(), result.size());
    return result;
}

void upperCaseInPlace(wchar_t* units, std::size_t length) {
    const UpperCaseTable& table = upperCaseTable();
    std::transform(units, units + length, units,
                   [&table](wchar_t unit) { return upperCase(table, unit); });
}

}  // namespace vela
