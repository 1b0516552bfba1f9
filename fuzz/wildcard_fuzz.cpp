// Input: a pattern, a line end, a text; each byte is one unit. On short input, the matcher agrees
// with one that reads the pattern as it goes and tries every length of a run.
#include "text/core/wildcard.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using View = std::wstring_view;

// Beyond this the reference takes too long.
constexpr std::size_t kShort = 18;

bool listHas(View list, wchar_t unit) {
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (i + 2 < list.size() && list[i + 1] == L'-') {
            if (list[i] <= unit && unit <= list[i + 2]) return true;
            i += 2;
        } else if (list[i] == unit) {
            return true;
        }
    }
    return false;
}

bool listAccepts(View list, wchar_t unit) {
    const bool negated = list.size() > 1 && list[0] == L'!';
    return listHas(list.substr(negated ? 1 : 0), unit) != negated;
}

bool listIsBroken(View list) {
    if (list.size() > 1 && list[0] == L'!') list.remove_prefix(1);
    for (std::size_t i = 0; i + 2 < list.size(); ++i) {
        if (list[i + 1] != L'-') continue;
        if (list[i] > list[i + 2]) return true;
        i += 2;
    }
    return false;
}

bool isBroken(View pattern) {
    for (std::size_t open; (open = pattern.find(L'[')) != View::npos;) {
        const std::size_t close = pattern.find(L']', open);
        if (close == View::npos || listIsBroken(pattern.substr(open + 1, close - open - 1))) {
            return true;
        }
        pattern.remove_prefix(close + 1);
    }
    return false;
}

// Requires a pattern that is not broken.
bool like(View text, View pattern) {
    if (pattern.empty()) return text.empty();
    const wchar_t unit = pattern[0];
    const View rest = pattern.substr(1);
    if (unit == L'*') return like(text, rest) || (!text.empty() && like(text.substr(1), pattern));
    if (unit == L'[') {
        const std::size_t close = rest.find(L']');
        const View list = rest.substr(0, close);
        const View behind = rest.substr(close + 1);
        if (list.empty()) return like(text, behind);
        return !text.empty() && listAccepts(list, text[0]) && like(text.substr(1), behind);
    }
    if (text.empty()) return false;
    const bool accepts =
        unit == L'?' || (unit == L'#' ? text[0] >= L'0' && text[0] <= L'9' : text[0] == unit);
    return accepts && like(text.substr(1), rest);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring input(data, data + size);
    const std::size_t end = std::min(input.find(L'\n'), input.size());
    const View pattern = View(input).substr(0, end);
    const View text = View(input).substr(std::min(end + 1, input.size()));
    const auto compiled = vela::Wildcard::compile(pattern);
    if (compiled.has_value() == isBroken(pattern)) std::abort();
    if (!compiled) return 0;
    const bool matched = compiled->matches(text);
    if (pattern.size() + text.size() <= kShort && matched != like(text, pattern)) std::abort();
    return 0;
}
