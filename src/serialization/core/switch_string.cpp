#include "serialization/core/switch_string.h"

#include <algorithm>

#include "text/core/text_normalisation.h"

namespace vela {

namespace {

// What `text` holds from the first slash at or after `from` on.
std::wstring_view fromSlash(std::wstring_view text, std::size_t from) {
    return text.substr(std::min(text.find(L'/', from), text.size()));
}

}  // namespace

SwitchReader::SwitchReader(std::wstring_view text) : rest_(fromSlash(text, 0)) {}

std::optional<Switch> SwitchReader::next() {
    if (rest_.empty()) return std::nullopt;
    const std::wstring_view behind = fromSlash(rest_, 1);
    const std::wstring_view text = trimmed(rest_.substr(1, rest_.size() - behind.size() - 1));
    rest_ = behind;
    const std::size_t equals = std::min(text.find(L'='), text.size());
    const std::size_t value = std::min(equals + 1, text.size());
    return Switch{++position_, text, text.substr(0, equals), text.substr(value)};
}

}  // namespace vela
