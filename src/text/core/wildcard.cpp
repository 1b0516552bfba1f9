#include "text/core/wildcard.h"

#include <algorithm>

namespace vela {

std::optional<Wildcard> Wildcard::compile(std::wstring_view pattern) {
    Wildcard compiled;
    while (!pattern.empty()) {
        const wchar_t unit = pattern.front();
        std::size_t length = 1;
        if (unit == L'*') {
            compiled.addPlace(Place::kRun, compiled.ranges_.size());
        } else if (unit == L'?') {
            compiled.addPlace(Place::kNotIn, compiled.ranges_.size());
        } else if (unit == L'#') {
            compiled.addUnit({L'0', L'9'});
        } else if (unit == L'[') {
            const std::size_t end = pattern.find(L']');
            if (end == pattern.npos) return std::nullopt;
            if (!compiled.addList(pattern.substr(1, end - 1))) return std::nullopt;
            length = end + 1;
        } else {
            compiled.addUnit({unit, unit});
        }
        pattern.remove_prefix(length);
    }
    return compiled;
}

void Wildcard::addUnit(Range range) {
    ranges_.push_back(range);
    addPlace(Place::kIn, ranges_.size() - 1);
}

bool Wildcard::addList(std::wstring_view content) {
    if (content.empty()) return true;
    const bool negated = content.front() == L'!' && content.size() > 1;
    if (negated) content.remove_prefix(1);
    const std::size_t from = ranges_.size();
    while (!content.empty()) {
        const std::size_t length = content.size() > 2 && content[1] == L'-' ? 3 : 1;
        const Range range{content.front(), content[length - 1]};
        if (range.first > range.last) return false;
        ranges_.push_back(range);
        content.remove_prefix(length);
    }
    addPlace(negated ? Place::kNotIn : Place::kIn, from);
    return true;
}

void Wildcard::addPlace(Place::Kind kind, std::size_t from) {
    places_.push_back({kind, from, ranges_.size()});
}

bool Wildcard::isRun(std::size_t place) const {
    return place < places_.size() && places_[place].kind == Place::kRun;
}

bool Wildcard::fits(std::size_t place, wchar_t unit) const {
    if (place == places_.size()) return false;
    const auto [kind, from, to] = places_[place];
    const bool found = std::any_of(
        ranges_.data() + from, ranges_.data() + to,
        [unit](const Range& range) { return range.first <= unit && unit <= range.last; });
    return found == (kind == Place::kIn);
}

// Every place but a run takes one unit. So the first way to match what stands between two runs
// leaves the most for the rest, and only the last run passed ever needs to grow.
bool Wildcard::matches(std::wstring_view text) const {
    std::size_t place = 0;
    std::size_t at = 0;
    std::optional<std::size_t> afterRun;  // the place behind the last run passed
    std::size_t runEnd = 0;               // where that run ends in the text
    while (at < text.size()) {
        if (isRun(place)) {
            afterRun = ++place;
            runEnd = at;
        } else if (fits(place, text[at])) {
            ++place;
            ++at;
        } else if (afterRun) {
            place = *afterRun;
            at = ++runEnd;
        } else {
            return false;
        }
    }
    while (isRun(place)) ++place;
    return place == places_.size();
}

}  // namespace vela
