// Reading a switch string against a plain program that splits it into structs.
#include <string_view>
#include <vector>

#include "bench/client.h"
#include "bench/tables.h"

namespace bench {

namespace {

constexpr int kSwitches = 1'000;
constexpr std::size_t kCopies = 20;  // so that one round takes long enough to be measured

struct PlainSwitch {
    long position;
    std::wstring text;
    std::wstring name;
    std::wstring value;
};

std::wstring_view trimmed(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(L' ');
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

void plainRead(std::wstring_view text, std::vector<PlainSwitch>& switches) {
    std::size_t slash = text.find(L'/');
    for (long position = 1; slash != text.npos; ++position) {
        const std::size_t next = text.find(L'/', slash + 1);
        const std::wstring_view part = trimmed(text.substr(slash + 1, next - slash - 1));
        const std::size_t equals = part.find(L'=');
        const std::wstring_view name = part.substr(0, equals);
        const std::wstring_view value =
            equals == part.npos ? std::wstring_view() : part.substr(equals + 1);
        switches.push_back({position, std::wstring(part), std::wstring(name), std::wstring(value)});
        slash = next;
    }
}

// Every third switch has no value.
std::wstring switchString() {
    std::wstring text = L"program";
    for (int i = 0; i < kSwitches; ++i) {
        text += L" /option" + std::to_wstring(i);
        if (i % 3 != 0) text += L"=a value " + std::to_wstring(i);
    }
    return text;
}

Row fromString() {
    const Text text(switchString());
    std::vector<ComPtr<_Switches>> ours;
    std::vector<std::vector<PlainSwitch>> theirs;
    for (std::size_t i = 0; i < kCopies; ++i)
        ours.push_back(create<_Switches>(L"VelaUtil10.Switches"));
    const auto readOurs = [&] {
        for (const auto& switches : ours) require(switches->FromString(text), "FromString");
    };
    const auto readTheirs = [&] {
        const std::wstring_view view(text, SysStringLen(text));
        for (auto& switches : theirs) plainRead(view, switches);
    };
    const auto prepare = [&] {
        for (const auto& switches : ours) require(switches->Clear(), "Clear");
        theirs = std::vector<std::vector<PlainSwitch>>(kCopies);
    };
    const auto [oursTook, theirsTook] = alternately(readOurs, readTheirs, prepare);
    short count = 0;
    require(ours.front()->get_Count(&count), "Count");
    require(count == kSwitches && theirs.front().size() == kSwitches ? S_OK : E_FAIL, "reading");
    return {"FromString of 1,000 switches", oursTook / kCopies, theirsTook / kCopies, 3};
}

}  // namespace

bool switches() {
    return report("Switches (ours) to a vector of structs (theirs)", {fromString()});
}

}  // namespace bench
