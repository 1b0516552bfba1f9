#include "text/core/text_split.h"

#include "text/core/text_normalisation.h"

namespace vela {

namespace {

// Adds the lines of a text without line breaks.
void wrapParagraph(std::wstring_view paragraph, std::size_t width,
                   std::vector<std::wstring_view>& lines) {
    std::wstring_view rest = trimmed(paragraph);
    while (rest.size() > width) {
        // A space right behind the line ends it as well. There is none at the beginning of `rest`.
        const std::size_t space = rest.rfind(L' ', width);
        const std::size_t end = space == rest.npos ? width : space;
        lines.push_back(trimmed(rest.substr(0, end)));
        rest = trimmed(rest.substr(end));
    }
    lines.push_back(rest);
}

}  // namespace

std::vector<std::wstring_view> splitAt(std::wstring_view text, std::wstring_view separator) {
    if (text.empty()) return {};
    std::vector<std::wstring_view> parts;
    std::size_t from = 0;
    if (!separator.empty()) {
        for (std::size_t at; (at = text.find(separator, from)) != text.npos;
             from = at + separator.size()) {
            parts.push_back(text.substr(from, at - from));
        }
    }
    parts.push_back(text.substr(from));
    return parts;
}

std::vector<std::wstring_view> wrapped(std::wstring_view text, std::size_t width) {
    if (text.empty()) return {};
    std::vector<std::wstring_view> lines;
    for (std::size_t end; (end = text.find_first_of(L"\r\n")) != text.npos;) {
        wrapParagraph(text.substr(0, end), width, lines);
        text.remove_prefix(end + (text.substr(end, 2) == L"\r\n" ? 2 : 1));
    }
    wrapParagraph(text, width, lines);
    return lines;
}

}  // namespace vela
