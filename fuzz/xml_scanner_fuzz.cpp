// Input: an XML text, each byte one unit. Starts and ends of elements go up and down by one, names
// lie in the text in order, values are no longer than what they were written as; the text before
// any place tells the same up to there.
#include "xml/core/xml_scanner.h"

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>

namespace {

using vela::XmlScanner;

void require(bool condition) {
    if (!condition) std::abort();
}

// All attribute names of one element lie behind `from`, which moves behind them.
void checkAttributes(const XmlScanner& scanner, const std::wstring& text, const wchar_t*& from) {
    for (const auto& [name, value] : scanner.attributes()) {
        require(!name.empty() && std::less_equal<>()(from, name.data()));
        from = name.data() + name.size();
        require(std::less_equal<>()(from, text.data() + text.size()));
        require(value.size() <= static_cast<std::size_t>(text.data() + text.size() - from));
    }
}

bool sameAttributes(const XmlScanner& one, const XmlScanner& other) {
    const auto left = one.attributes(), right = other.attributes();
    bool same = left.size() == right.size();
    for (std::size_t i = 0; same && i < left.size(); ++i) {
        same = left[i].name == right[i].name && left[i].value == right[i].value;
    }
    return same;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring text(data, data + size);
    const std::wstring start = text.substr(0, size / 2);
    XmlScanner whole(text), part(start);
    const wchar_t* from = text.data();
    std::size_t depth = 0;
    bool both = true;
    for (;;) {
        const auto event = whole.next();
        const auto early = both ? part.next() : XmlScanner::Event::Done;
        both = early != XmlScanner::Event::Done;
        require(!both || (early == event && sameAttributes(whole, part)));
        if (event == XmlScanner::Event::Done) break;
        const bool isStart = event == XmlScanner::Event::Start;
        require(isStart || depth > 0);
        depth = isStart ? depth + 1 : depth - 1;
        require(whole.depth() == depth && (isStart || whole.attributes().empty()));
        checkAttributes(whole, text, from);
    }
    require(part.next() == XmlScanner::Event::Done);
    require(whole.next() == XmlScanner::Event::Done && whole.depth() == depth);
    require(whole.attributes().empty());
    return 0;
}
