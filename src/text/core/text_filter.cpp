#include "text/core/text_filter.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>

#include "text/core/character_kinds.h"
#include "text/core/character_set.h"
#include "text/core/digits.h"

namespace vela {

namespace {

template <class Predicate>
std::wstring without(std::wstring_view text, Predicate leftOut) {
    std::wstring result;
    std::ranges::remove_copy_if(text, std::back_inserter(result), leftOut);
    return result;
}

template <class Predicate>
std::wstring replaced(std::wstring_view text, std::wstring_view replacement, Predicate isReplaced) {
    std::wstring result;
    for (const wchar_t& unit : text) {
        result.append(isReplaced(unit) ? replacement : std::wstring_view(&unit, 1));
    }
    return result;
}

}  // namespace

std::wstring withoutSpaces(std::wstring_view text) {
    return without(text, [](wchar_t unit) { return unit == L' '; });
}

std::wstring withoutDigits(std::wstring_view text) { return without(text, isDigit); }

std::wstring withoutLetters(std::wstring_view text) { return without(text, isLetter); }

std::wstring onlyCharacters(std::wstring_view text, std::wstring_view allowed,
                            std::wstring_view replacement) {
    const CharacterSet set(allowed);
    return replaced(text, replacement, [&set](wchar_t unit) { return !set.contains(unit); });
}

std::wstring withMatchesReplaced(std::wstring_view text, const Wildcard& mask,
                                 std::wstring_view replacement) {
    return replaced(text, replacement, [&mask](wchar_t unit) { return mask.matches({&unit, 1}); });
}

std::wstring translated(std::wstring_view text, std::wstring_view from, std::wstring_view to) {
    std::unordered_map<wchar_t, std::wstring_view> changes;
    for (std::size_t i = 0; i < from.size(); ++i) {
        changes.emplace(from[i], to.substr(std::min(i, to.size()), 1));
    }
    std::wstring result;
    for (const wchar_t& unit : text) {
        const auto change = changes.find(unit);
        result.append(change == changes.end() ? std::wstring_view(&unit, 1) : change->second);
    }
    return result;
}

bool isNumber(std::wstring_view text, const NumberForm& form) {
    if (form.negative && text.starts_with(L'-')) text.remove_prefix(1);
    const auto first = std::ranges::find_if_not(text, isDigit);
    const std::wstring_view rest = text.substr(first - text.begin());
    if (rest.empty()) return !text.empty();
    const std::wstring_view separator = form.decimalSeparator;
    return !separator.empty() && rest.starts_with(separator) && text.size() > separator.size() &&
           std::ranges::all_of(rest.substr(separator.size()), isDigit);
}

}  // namespace vela
