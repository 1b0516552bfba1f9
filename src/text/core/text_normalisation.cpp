#include "text/core/text_normalisation.h"

#include <algorithm>

#include "text/core/upper_case.h"

namespace vela {

std::wstring replaceAll(std::wstring_view text, std::wstring_view search,
                        std::wstring_view replacement) {
    std::wstring result;
    std::size_t from = 0;
    if (!search.empty()) {
        for (std::size_t at; (at = text.find(search, from)) != text.npos;
             from = at + search.size()) {
            result.append(text, from, at - from).append(replacement);
        }
    }
    return result.append(text, from);
}

std::wstring_view trimmed(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(L' ');
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

std::wstring normalisedIdentity(std::wstring_view text) { return upperCase(trimmed(text)); }

std::wstring sqlLiteral(std::wstring_view text) {
    return L"'" + replaceAll(text, L"'", L"''") + L"'";
}

std::wstring filledTemplate(std::wstring_view text, const std::vector<std::wstring>& values,
                            long lowerBound) {
    std::wstring result(text);
    for (std::size_t i = values.size(); i-- > 0;) {
        const long long number = static_cast<long long>(lowerBound) + static_cast<long long>(i) + 1;
        result = replaceAll(result, L"@X" + std::to_wstring(number), values[i]);
    }
    return result;
}

namespace {

wchar_t withoutAccent(wchar_t c) {
    static constexpr std::wstring_view kAccented = L"ÁÀÃÂáàãâÉÈÊËéèêëÍÌÎíìîÓÒÕÔóòõôÚÙÛúùûÇç";
    static constexpr std::wstring_view kPlain = L"AAAAaaaaEEEEeeeeIIIiiiOOOOooooUUUuuuCc";
    static constexpr std::wstring_view kKept = L"ABCDEFGHIJLMNOPQRSTUVWYXZK. ";
    static_assert(kAccented.size() == kPlain.size());
    if (const std::size_t at = kAccented.find(c); at != kAccented.npos) return kPlain[at];
    return kKept.find(upperCase(c)) != kKept.npos ? c : L' ';
}

}  // namespace

std::wstring withoutAccents(std::wstring_view text) {
    std::wstring result(text);
    std::transform(result.begin(), result.end(), result.begin(), withoutAccent);
    return result;
}

}  // namespace vela
