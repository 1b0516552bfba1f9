#include "text/core/text_search.h"

#include <algorithm>

#include "text/core/character_set.h"

namespace vela {

namespace {

// The index that a search onwards begins at; never beyond the end.
std::size_t startIndex(std::wstring_view text, long from) {
    return std::min(static_cast<std::size_t>(std::max(from, 1L)) - 1, text.size());
}

// As a position; std::wstring_view::npos is 0.
constexpr std::size_t position(std::size_t index) { return index + 1; }

}  // namespace

std::size_t findBackwards(std::wstring_view text, std::wstring_view what, long from) {
    if (what.empty() || from < 1) return 0;
    return position(text.rfind(what, static_cast<std::size_t>(from) - 1));
}

std::size_t findFirstOf(std::wstring_view text, std::wstring_view characters, long from) {
    const CharacterSet set(characters);
    const auto found = std::find_if(text.begin() + startIndex(text, from), text.end(),
                                    [&set](wchar_t unit) { return set.contains(unit); });
    return found == text.end() ? 0 : position(found - text.begin());
}

std::size_t occurrences(std::wstring_view text, std::wstring_view what) {
    if (what.empty()) return 0;
    std::size_t count = 0;
    for (std::size_t at = text.find(what); at != text.npos;
         at = text.find(what, at + what.size())) {
        ++count;
    }
    return count;
}

FoundText findFirstText(std::wstring_view text, std::span<const std::wstring_view> texts,
                        long from) {
    const std::size_t start = startIndex(text, from);
    const std::wstring_view rest = text.substr(start);
    FoundText found;
    std::size_t best = rest.size();
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (texts[i].empty()) continue;
        const std::wstring_view before = rest.substr(0, best + texts[i].size() - 1);
        if (const std::size_t at = before.find(texts[i]); at != before.npos) {
            best = at;
            found = {i + 1, position(start + at)};
        }
    }
    return found;
}

MarkPair findPair(std::wstring_view text, std::wstring_view marks, long from) {
    if (marks.size() < 2) return {};
    const std::size_t opened = text.find(marks[0], startIndex(text, from));
    if (opened == text.npos) return {};
    std::size_t depth = 1;
    for (std::size_t at = opened + 1; at < text.size(); ++at) {
        if (text[at] == marks[1]) {
            if (--depth == 0) return {position(opened), position(at)};
        } else if (text[at] == marks[0]) {
            ++depth;
        }
    }
    return {};
}

}  // namespace vela
