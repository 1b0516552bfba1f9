#include "xml/core/xml_scanner.h"

#include <algorithm>
#include <cstdint>

namespace vela {

namespace {

struct Bracket {
    std::wstring_view opening, closing;
};
constexpr Bracket kNoElements[] = {{L"<?", L"?>"}, {L"<!--", L"-->"}, {L"<![CDATA[", L"]]>"}};

struct Entity {
    std::wstring_view name;
    wchar_t character;
};
constexpr Entity kEntities[] = {
    {L"amp", L'&'}, {L"lt", L'<'}, {L"gt", L'>'}, {L"quot", L'"'}, {L"apos", L'\''}};

constexpr std::uint32_t kLastCharacter = 0x10FFFF;

bool isBlank(wchar_t c) { return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n'; }

bool endsName(wchar_t c) {
    return isBlank(c) || c == L'=' || c == L'>' || c == L'/' || c == L'<' || c == L'&' ||
           c == L'"' || c == L'\'';
}

// The value of a digit; 16 or more when it is none.
std::uint32_t digit(wchar_t c) {
    const auto from = [c](wchar_t first) { return static_cast<std::uint32_t>(c - first); };
    if (c <= L'9') return c < L'0' ? 16 : from(L'0');
    return c >= L'a' ? from(L'a') + 10 : c >= L'A' && c <= L'F' ? from(L'A') + 10 : 16;
}

// The number in the digits; 0 when they are no number, or one above that of the last character.
std::uint32_t number(std::wstring_view digits, std::uint32_t base) {
    std::uint32_t result = 0;
    for (const wchar_t c : digits) {
        const std::uint32_t next = digit(c);
        if (next >= base) return 0;
        result = result * base + next;
        if (result > kLastCharacter) return 0;
    }
    return result;
}

bool isXmlCharacter(std::uint32_t c) {
    if (c < 0x20) return c == L'\t' || c == L'\n' || c == L'\r';
    return (c < 0xD800 || c >= 0xE000) && c != 0xFFFE && c != 0xFFFF;
}

void append(std::wstring& text, std::uint32_t c) {
    if (c >= 0x10000) {
        text += static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
        c = 0xDC00 + (c & 0x3FF);
    }
    text += static_cast<wchar_t>(c);
}

}  // namespace

XmlScanner::Event XmlScanner::next() {
    count_ = 0;
    if (isEmpty_) {
        isEmpty_ = false;
        --depth_;
        return Event::End;
    }
    while ((at_ = text_.find(L'<', at_)) < text_.size()) {
        if (takeNoElement()) continue;
        const bool isEnd = take(L"</");
        if (!(isEnd ? takeEnd() : takeStart())) break;
        return isEnd ? Event::End : Event::Start;
    }
    at_ = text_.size();
    count_ = 0;
    return Event::Done;
}

bool XmlScanner::take(std::wstring_view expected) {
    if (!text_.substr(at_).starts_with(expected)) return false;
    at_ += expected.size();
    return true;
}

bool XmlScanner::takeBlanks() {
    const std::size_t start = at_;
    while (at_ < text_.size() && isBlank(text_[at_])) ++at_;
    return at_ > start;
}

std::wstring_view XmlScanner::takeName() {
    const std::size_t start = at_;
    while (at_ < text_.size() && !endsName(text_[at_])) ++at_;
    return text_.substr(start, at_ - start);
}

bool XmlScanner::takeNoElement() {
    for (const auto& [opening, closing] : kNoElements) {
        if (!take(opening)) continue;
        const std::size_t end = text_.find(closing, at_);
        at_ = end == text_.npos ? text_.size() : end + closing.size();
        return true;
    }
    return false;
}

bool XmlScanner::takeEnd() {
    if (depth_ == 0 || takeName().empty()) return false;
    takeBlanks();
    if (!take(L">")) return false;
    --depth_;
    return true;
}

bool XmlScanner::takeStart() {
    if (!take(L"<") || takeName().empty()) return false;
    for (;;) {
        const bool apart = takeBlanks();
        isEmpty_ = take(L"/>");
        if (isEmpty_ || take(L">")) break;
        if (!apart || !takeAttribute()) return false;
    }
    ++depth_;
    return true;
}

bool XmlScanner::takeAttribute() {
    const std::wstring_view name = takeName();
    takeBlanks();
    if (name.empty() || !take(L"=")) return false;
    takeBlanks();
    if (count_ == attributes_.size()) attributes_.emplace_back();
    Attribute& attribute = attributes_[count_++];
    attribute.name = name;
    return takeValue(attribute.value);
}

bool XmlScanner::takeValue(std::wstring& value) {
    const std::wstring_view quote = text_.substr(at_, 1);
    if (!take(L"\"") && !take(L"'")) return false;
    value.clear();
    for (;;) {
        const std::size_t start = at_;
        const auto isPlain = [&](wchar_t c) { return c != quote[0] && c != L'&' && c != L'<'; };
        while (at_ < text_.size() && isPlain(text_[at_])) ++at_;
        value.append(text_, start, at_ - start);
        if (take(quote)) return true;
        if (!take(L"&") || !takeReference(value)) return false;
    }
}

bool XmlScanner::takeReference(std::wstring& value) {
    const std::size_t end = text_.find(L';', at_);
    if (end == text_.npos) return false;
    const std::wstring_view name = text_.substr(at_, end - at_);
    at_ = end + 1;
    if (name.starts_with(L'#')) {
        const bool isHex = name.starts_with(L"#x");
        const std::uint32_t c = isHex ? number(name.substr(2), 16) : number(name.substr(1), 10);
        if (isXmlCharacter(c)) append(value, c);
        return isXmlCharacter(c);
    }
    const auto* entity = std::find_if(std::begin(kEntities), std::end(kEntities),
                                      [&](const Entity& known) { return known.name == name; });
    if (entity != std::end(kEntities)) value += entity->character;
    return entity != std::end(kEntities);
}

}  // namespace vela
